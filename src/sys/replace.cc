#include "sys/replace.h"

#include <dirent.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/random.h>
#include <sys/syscall.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>

#include "sys/handles.h"
#include "sys/source.h"
#include "sys/sysroot.h"

namespace {

// The named temporary file that the handler of TERM, INT and HUP removes
// before the signal ends the process. The handler only reads it, and only
// while `armed` is set, which is set last.
const int kEndSignals[] = {SIGTERM, SIGINT, SIGHUP};
struct ArmedTemp {
  volatile sig_atomic_t armed;
  int dir_fd;
  char name[320];
  struct sigaction saved[3];
  bool installed[3];
} g_temp;

extern "C" void remove_temp_and_end(int signal_number) {
  if (g_temp.armed) unlinkat(g_temp.dir_fd, g_temp.name, 0);
  // Back to what the signal did before (its default: the end of the
  // process), which happens once this handler returns.
  for (int i = 0; i < 3; i++)
    if (kEndSignals[i] == signal_number) sigaction(signal_number, &g_temp.saved[i], nullptr);
  raise(signal_number);
}

void disarm() {
  g_temp.armed = 0;
  for (int i = 0; i < 3; i++) {
    if (g_temp.installed[i]) sigaction(kEndSignals[i], &g_temp.saved[i], nullptr);
    g_temp.installed[i] = false;
  }
}

// Has the end signals remove `name` in `dir_fd`; a signal that the process
// ignores stays ignored. False when another file holds the handler already.
bool arm(int dir_fd, const char *name) {
  if (g_temp.armed) return false;
  g_temp.dir_fd = dir_fd;
  snprintf(g_temp.name, sizeof g_temp.name, "%s", name);
  struct sigaction action;
  memset(&action, 0, sizeof action);
  action.sa_handler = remove_temp_and_end;
  sigemptyset(&action.sa_mask);
  for (int signal_number : kEndSignals) sigaddset(&action.sa_mask, signal_number);
  for (int i = 0; i < 3; i++) {
    if (sigaction(kEndSignals[i], nullptr, &g_temp.saved[i]) != 0 ||
        g_temp.saved[i].sa_handler == SIG_IGN)
      continue;
    g_temp.installed[i] = sigaction(kEndSignals[i], &action, nullptr) == 0;
  }
  g_temp.armed = 1;
  return true;
}

// ".<name>.vektool-": what every named temporary file of `name` begins with.
void temp_prefix(char *out, size_t size, const char *name) { snprintf(out, size, ".%s.vektool-", name); }

// A fresh name ".<name>.vektool-<pid>-XXXXXX".
void temp_name(char *out, size_t size, const char *name) {
  static const char kLetters[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
  unsigned char noise[6];
  // The system call itself, not the C library's getrandom: the wrapper would
  // add a C library version for the dynamic loader to check at every start.
  if (syscall(SYS_getrandom, noise, sizeof noise, GRND_NONBLOCK) != static_cast<long>(sizeof noise)) {
    struct timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    for (size_t i = 0; i < sizeof noise; i++) noise[i] = static_cast<unsigned char>(now.tv_nsec >> (i * 5));
  }
  char suffix[7];
  for (size_t i = 0; i < 6; i++) suffix[i] = kLetters[noise[i] % (sizeof kLetters - 1)];
  suffix[6] = '\0';
  char prefix[300];
  temp_prefix(prefix, sizeof prefix, name);
  snprintf(out, size, "%s%ld-%s", prefix, static_cast<long>(getpid()), suffix);
}

// Directories are read with readdir64: on a 32-bit build readdir gives up
// (EOVERFLOW) on file systems whose entries carry 64-bit offsets or inodes.

// Removes the named temporary files of `name` whose process is gone (killed
// before it could remove them).
void sweep_stale(int dir_fd, const char *name) {
  char prefix[300];
  temp_prefix(prefix, sizeof prefix, name);
  size_t prefix_length = strlen(prefix);
  int fd = openat(dir_fd, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd < 0) return;
  Dir dir(fdopendir(fd));
  if (!dir) {
    close(fd);
    return;
  }
  while (struct dirent64 *entry = readdir64(dir.get())) {
    const char *rest = entry->d_name;
    if (strncmp(rest, prefix, prefix_length) != 0) continue;
    rest += prefix_length;
    long pid = 0;
    int digits = 0;
    for (; *rest >= '0' && *rest <= '9' && digits < 10; rest++, digits++) pid = pid * 10 + (*rest - '0');
    if (digits == 0 || *rest != '-' || strlen(rest + 1) != 6) continue;
    if (pid != getpid() && kill(static_cast<pid_t>(pid), 0) != 0 && errno == ESRCH)
      unlinkat(dir_fd, entry->d_name, 0);
  }
}

// Removes the directory `name` in `dir_fd` and all it holds, never following
// a link (a link inside is removed itself). Deeply nested trees are refused.
bool remove_directory(int dir_fd, const char *name, int depth) {
  if (unlinkat(dir_fd, name, AT_REMOVEDIR) == 0) return true;
  if ((errno != ENOTEMPTY && errno != EEXIST) || depth > 16) return false;
  int fd = openat(dir_fd, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
  if (fd < 0) return false;
  Dir dir(fdopendir(fd));
  if (!dir) {
    close(fd);
    return false;
  }
  while (struct dirent64 *entry = readdir64(dir.get())) {
    if (strcmp(entry->d_name, ".") == 0 || strcmp(entry->d_name, "..") == 0) continue;
    if (unlinkat(fd, entry->d_name, 0) != 0 && errno == EISDIR) remove_directory(fd, entry->d_name, depth + 1);
  }
  dir.reset();
  return unlinkat(dir_fd, name, AT_REMOVEDIR) == 0;
}

}  // namespace

Replacement::Replacement(const char *destination, bool unnamed) {
  if (!destination) return;
  SysPath path(destination);
  const char *slash = strrchr(path.c_str(), '/');
  const char *name = slash ? slash + 1 : path.c_str();
  if (!*name || strcmp(name, ".") == 0 || strcmp(name, "..") == 0 || strlen(name) >= sizeof name_) return;
  snprintf(name_, sizeof name_, "%s", name);
  char dir[SYSROOT_PATH_MAX];
  if (!slash) {
    snprintf(dir, sizeof dir, ".");
  } else {
    snprintf(dir, sizeof dir, "%.*s", static_cast<int>(slash == path.c_str() ? 1 : slash - path.c_str()),
             path.c_str());
  }
  dir_fd_ = open(dir, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (dir_fd_ < 0) return;
  struct sigaction ignore;
  memset(&ignore, 0, sizeof ignore);
  ignore.sa_handler = SIG_IGN;
  sigemptyset(&ignore.sa_mask);
  xfsz_saved_ = sigaction(SIGXFSZ, &ignore, &saved_xfsz_) == 0;
  if (unnamed) fd_ = openat(dir_fd_, ".", O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600);
  if (fd_ < 0) start_named(false);
}

Replacement::~Replacement() {
  drop_temp();
  if (fd_ >= 0) close(fd_);
  if (dir_fd_ >= 0) close(dir_fd_);
  if (xfsz_saved_) sigaction(SIGXFSZ, &saved_xfsz_, nullptr);
}

bool Replacement::write(const char *bytes, size_t count) {
  if (!ok()) return false;
  while (count > 0) {
    ssize_t n = ::write(fd_, bytes, count);
    if (n < 0 && errno == EINTR) continue;
    if (n < 1) {
      failed_ = true;
      return false;
    }
    bytes += n;
    count -= static_cast<size_t>(n);
  }
  return true;
}

// Makes the named temporary file, after sweeping those of dead processes:
// created afresh, or (`by_link`) as a name of the unnamed file, by its
// descriptor (root may) or else through the process's own /proc (the real
// one, whatever the sysroot).
bool Replacement::start_named(bool by_link) {
  sweep_stale(dir_fd_, name_);
  char proc_path[64];
  snprintf(proc_path, sizeof proc_path, "/proc/self/fd/%d", fd_);
  for (int attempt = 0; attempt < 100; attempt++) {
    temp_name(temp_, sizeof temp_, name_);
    armed_ = arm(dir_fd_, temp_);
    if (by_link) {
      named_ = linkat(fd_, "", dir_fd_, temp_, AT_EMPTY_PATH) == 0 ||
               (errno != EEXIST && linkat(AT_FDCWD, proc_path, dir_fd_, temp_, AT_SYMLINK_FOLLOW) == 0);
    } else {
      fd_ = openat(dir_fd_, temp_, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
      named_ = fd_ >= 0;
    }
    if (named_) return true;
    int error = errno;
    drop_temp();
    if (error != EEXIST) return false;
  }
  return false;
}

void Replacement::drop_temp() {
  if (named_) unlinkat(dir_fd_, temp_, 0);
  if (armed_) disarm();
  named_ = armed_ = false;
}

bool Replacement::commit() {
  if (!ok()) return false;
  if (fchmod(fd_, 0644) != 0 || fsync(fd_) != 0) return false;
  if (!named_ && !start_named(true)) return false;
  int closed = close(fd_);
  fd_ = -1;
  if (closed != 0) return false;
  // A rename replaces a link or a FIFO itself; a directory must go first.
  struct stat st;
  if (fstatat(dir_fd_, name_, &st, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(st.st_mode) &&
      !remove_directory(dir_fd_, name_, 0))
    return false;
  if (renameat(dir_fd_, temp_, dir_fd_, name_) != 0) return false;
  named_ = false;
  drop_temp();
  // The rename itself is made durable with the directory.
  fsync(dir_fd_);
  return true;
}

long long replace_file(const char *destination, const char *source) {
  if (!destination || !source) return -1;
  Fd in(open_source(source, nullptr));
  if (!in.ok()) return -1;
  Replacement next(destination);
  if (!next.ok()) return -2;
  long long total = read_blocks(in.get(), -1, [&next](const char *block, size_t count) {
    return next.write(block, count);
  });
  if (total < 0 || !next.ok()) return -1;
  if (total == 0) return 0;
  return next.commit() ? total : -1;
}
