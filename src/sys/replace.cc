#include "sys/replace.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "sys/handles.h"
#include "sys/sysroot.h"

namespace {

// While it lives, a write past the file-size limit fails with EFBIG instead
// of ending the process with SIGXFSZ, so that the copy can clean up.
class IgnoreFileSizeSignal {
 public:
  IgnoreFileSizeSignal() {
    struct sigaction ignore;
    memset(&ignore, 0, sizeof ignore);
    ignore.sa_handler = SIG_IGN;
    sigemptyset(&ignore.sa_mask);
    saved_ok_ = sigaction(SIGXFSZ, &ignore, &saved_) == 0;
  }
  ~IgnoreFileSizeSignal() {
    if (saved_ok_) sigaction(SIGXFSZ, &saved_, nullptr);
  }
  IgnoreFileSizeSignal(const IgnoreFileSizeSignal &) = delete;
  IgnoreFileSizeSignal &operator=(const IgnoreFileSizeSignal &) = delete;

 private:
  struct sigaction saved_;
  bool saved_ok_;
};

// The temporary file: removed again unless it was renamed into place.
class TempFile {
 public:
  explicit TempFile(const char *destination) {
    snprintf(path_, sizeof path_, "%s.XXXXXX", destination);
    fd_ = mkstemp(path_);
    if (fd_ >= 0) fcntl(fd_, F_SETFD, FD_CLOEXEC);
    created_ = fd_ >= 0;
  }
  TempFile(const TempFile &) = delete;
  TempFile &operator=(const TempFile &) = delete;
  ~TempFile() {
    if (fd_ >= 0) close(fd_);
    if (created_) unlink(path_);
  }
  bool ok() const { return fd_ >= 0; }
  int fd() const { return fd_; }
  // Closes the descriptor; false when that fails (data not written out).
  bool close_file() {
    int result = close(fd_);
    fd_ = -1;
    return result == 0;
  }
  // Renames the file over `destination`; it is then no longer removed.
  bool rename_to(const char *destination) {
    if (rename(path_, destination) != 0) return false;
    created_ = false;
    return true;
  }

 private:
  char path_[SYSROOT_PATH_MAX + 8];
  int fd_ = -1;
  bool created_ = false;
};

bool write_all(int fd, const char *bytes, size_t count) {
  while (count > 0) {
    ssize_t n = write(fd, bytes, count);
    if (n < 0 && errno == EINTR) continue;
    if (n < 1) return false;
    bytes += n;
    count -= static_cast<size_t>(n);
  }
  return true;
}

}  // namespace

long replace_file(const char *destination, const char *source) {
  if (!destination || !source) return -1;
  SysPath source_path(source);
  SysPath destination_path(destination);
  Fd in(open(source_path, O_RDONLY | O_CLOEXEC));
  if (!in.ok()) return -1;

  // The new file takes the old one's permissions; a new one gets the usual
  // 0666 less the umask, as a plain create would.
  mode_t mode;
  struct stat old;
  if (stat(destination_path, &old) == 0) {
    mode = old.st_mode & 07777;
  } else {
    mode_t mask = umask(0);
    umask(mask);
    mode = 0666 & ~mask;
  }

  IgnoreFileSizeSignal no_sigxfsz;
  TempFile temp(destination_path);
  if (!temp.ok()) return -2;
  char block[512];
  long total = 0;
  for (;;) {
    ssize_t n = read(in.get(), block, sizeof block);
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) return -1;
    if (n == 0) break;
    if (!write_all(temp.fd(), block, static_cast<size_t>(n))) return -1;
    total += n;
  }
  // Nothing read counts as a failed copy: the old file stays.
  if (total == 0) return 0;
  if (fchmod(temp.fd(), mode) != 0 || fsync(temp.fd()) != 0) return -1;
  if (!temp.close_file() || !temp.rename_to(destination_path)) return -1;
  // The rename itself is made durable with the directory.
  char dir[SYSROOT_PATH_MAX];
  snprintf(dir, sizeof dir, "%s", destination_path.c_str());
  char *slash = strrchr(dir, '/');
  if (slash == dir) {
    slash[1] = '\0';
  } else if (slash) {
    *slash = '\0';
  } else {
    snprintf(dir, sizeof dir, ".");
  }
  Fd dir_fd(open(dir, O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (dir_fd.ok()) fsync(dir_fd.get());
  return total;
}
