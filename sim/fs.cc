#define FUSE_USE_VERSION 31
#include "fs.h"

#include <fcntl.h>
#include <fuse.h>
#include <poll.h>
#include <pthread.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <memory>
#include <thread>

#include "engine.h"
#include "service.h"
#include "state.h"

namespace {

const SimRoot &sim_root() { return *static_cast<const SimRoot *>(fuse_get_context()->private_data); }

// FUSE paths are relative to the mount: "/vek/monitor" is /proc/vek/monitor.
std::string gateway_path(const char *path) {
  return strcmp(path, "/") == 0 ? std::string("/proc") : std::string("/proc") + path;
}

std::string backing_path(const char *path) { return sim_root().backing(gateway_path(path)); }

// Temporary files of atomic replacements start with a dot; /proc has none.
bool hidden(const char *path) {
  const char *base = strrchr(path, '/');
  return base && base[1] == '.';
}

// What one open file sees: like procfs, the content is taken at the first
// read and served from there, so a reader in small chunks gets one version.
struct Handle {
  bool loaded = false;
  std::string content;
};

int fs_getattr(const char *path, struct stat *st, struct fuse_file_info *) {
  if (hidden(path)) return -ENOENT;
  if (lstat(backing_path(path).c_str(), st) != 0) return -errno;
  if (S_ISREG(st->st_mode)) {
    // Control files report size 0, as procfs does.
    st->st_size = 0;
    st->st_blocks = 0;
  }
  return 0;
}

int fs_readlink(const char *path, char *buf, size_t size) {
  if (size == 0) return -EINVAL;
  ssize_t n = readlink(backing_path(path).c_str(), buf, size - 1);
  if (n < 0) return -errno;
  buf[n] = '\0';
  return 0;
}

bool all_digits(const std::string &s) {
  return !s.empty() && std::all_of(s.begin(), s.end(), [](char c) { return c >= '0' && c <= '9'; });
}

int fs_readdir(const char *path, void *buf, fuse_fill_dir_t filler, off_t, struct fuse_file_info *,
               enum fuse_readdir_flags) {
  std::string dir = backing_path(path);
  if (!is_dir(dir)) return -ENOTDIR;
  std::vector<std::string> names = list_dir(dir);
  // Like /proc: named entries first, then processes by ascending pid.
  std::sort(names.begin(), names.end(), [](const std::string &a, const std::string &b) {
    bool da = all_digits(a), db = all_digits(b);
    if (da != db) return db;
    if (da) return a.size() != b.size() ? a.size() < b.size() : a < b;
    return a < b;
  });
  filler(buf, ".", nullptr, 0, static_cast<fuse_fill_dir_flags>(0));
  filler(buf, "..", nullptr, 0, static_cast<fuse_fill_dir_flags>(0));
  for (const std::string &name : names) {
    if (name[0] == '.') continue;
    filler(buf, name.c_str(), nullptr, 0, static_cast<fuse_fill_dir_flags>(0));
  }
  return 0;
}

int fs_open(const char *path, struct fuse_file_info *fi) {
  if (hidden(path)) return -ENOENT;
  struct stat st;
  if (lstat(backing_path(path).c_str(), &st) != 0) return -errno;
  if (S_ISDIR(st.st_mode)) return -EISDIR;
  if (!S_ISREG(st.st_mode)) return -EACCES;
  // An unreadable file refuses readers whoever they are, root included.
  if ((fi->flags & O_ACCMODE) != O_WRONLY && !(st.st_mode & S_IRUSR)) return -EACCES;
  fi->direct_io = 1;
  fi->keep_cache = 0;
  fi->fh = reinterpret_cast<uint64_t>(new Handle);
  return 0;
}

int fs_read(const char *path, char *buf, size_t size, off_t off, struct fuse_file_info *fi) {
  Handle *h = reinterpret_cast<Handle *>(fi->fh);
  if (!h->loaded) {
    if (!read_file(backing_path(path), &h->content)) return -EIO;
    h->loaded = true;
  }
  if (off < 0 || static_cast<size_t>(off) >= h->content.size()) return 0;
  size_t n = std::min(size, h->content.size() - static_cast<size_t>(off));
  memcpy(buf, h->content.data() + off, n);
  return static_cast<int>(n);
}

bool is_image_stream(const std::string &gpath) {
  for (const Database &db : kDatabases)
    if (gpath == db.import) return true;
  return false;
}

int fs_write(const char *path, const char *buf, size_t size, off_t, struct fuse_file_info *) {
  const SimRoot &r = sim_root();
  std::string gpath = gateway_path(path);
  // A slow engine: callers that race over an import overlap for certain.
  if (is_image_stream(gpath) || gpath == kPcRuleImport) {
    long ms = import_delay_ms(r);
    struct timespec pause = {ms / 1000, (ms % 1000) * 1000000};
    while (ms > 0 && nanosleep(&pause, &pause) != 0 && errno == EINTR) {
    }
  }
  // Each write() call is one verb: journal it as it came, then let the
  // engine act on it.
  if (is_image_stream(gpath))
    r.journal(strprintf("write %s <%zu bytes>", gpath.c_str(), size));
  else
    r.journal("write " + gpath + " " + escape_bytes(buf, size));
  long n = engine_write(r, gpath, buf, size);
  return static_cast<int>(n);
}

int fs_truncate(const char *path, off_t, struct fuse_file_info *) {
  // Opening with O_TRUNC (a shell's ">") is accepted and changes nothing.
  struct stat st;
  if (lstat(backing_path(path).c_str(), &st) != 0) return -errno;
  return 0;
}

int fs_create(const char *, mode_t, struct fuse_file_info *) { return -EACCES; }

int fs_release(const char *, struct fuse_file_info *fi) {
  delete reinterpret_cast<Handle *>(fi->fh);
  return 0;
}

void *fs_init(struct fuse_conn_info *, struct fuse_config *cfg) {
  // Every lookup and attribute goes to the backing tree afresh, so that a
  // scenario's change is seen by the very next request.
  cfg->entry_timeout = 0;
  cfg->attr_timeout = 0;
  cfg->negative_timeout = 0;
  cfg->direct_io = 1;
  cfg->kernel_cache = 0;
  return fuse_get_context()->private_data;
}

struct FuseDelete {
  void operator()(struct fuse *f) const { fuse_destroy(f); }
};
using FusePtr = std::unique_ptr<struct fuse, FuseDelete>;

bool have_fusermount() {
  const char *path = getenv("PATH");
  std::string dirs = std::string(path ? path : "") + ":/bin:/usr/bin";
  size_t pos = 0;
  while (pos <= dirs.size()) {
    size_t end = dirs.find(':', pos);
    if (end == std::string::npos) end = dirs.size();
    std::string dir = dirs.substr(pos, end - pos);
    if (!dir.empty() && access((dir + "/fusermount3").c_str(), X_OK) == 0) return true;
    pos = end + 1;
  }
  return false;
}

FusePtr new_fuse(const SimRoot *r, bool auto_unmount) {
  static struct fuse_operations ops;
  ops.init = fs_init;
  ops.getattr = fs_getattr;
  ops.readlink = fs_readlink;
  ops.readdir = fs_readdir;
  ops.open = fs_open;
  ops.read = fs_read;
  ops.write = fs_write;
  ops.truncate = fs_truncate;
  ops.create = fs_create;
  ops.release = fs_release;
  std::string opts = "fsname=vek-sim,subtype=vek-sim";
  if (auto_unmount) opts += ",auto_unmount";
  char arg0[] = "vek-sim", arg1[] = "-o";
  char *argv[] = {arg0, arg1, &opts[0], nullptr};
  struct fuse_args args = FUSE_ARGS_INIT(3, argv);
  FusePtr f(fuse_new(&args, &ops, sizeof ops, const_cast<SimRoot *>(r)));
  fuse_opt_free_args(&args);
  return f;
}

void report(int fd, const std::string &line) {
  if (fd < 0) return;
  std::string text = line + "\n";
  ssize_t n = write(fd, text.data(), text.size());
  (void)n;
}

// Ends the daemon once the owning process is gone: a pidfd becomes readable
// when the process ends, zombie or not.
class OwnerWatch {
 public:
  OwnerWatch(long pid, pthread_t main_thread) : pid_(pid), main_(main_thread) {
    int p[2];
    if (pid_ <= 0 || pipe2(p, O_CLOEXEC) != 0) return;
    stop_read_.reset(p[0]);
    stop_write_.reset(p[1]);
    thread_ = std::thread([this] { watch(); });
  }
  OwnerWatch(const OwnerWatch &) = delete;
  OwnerWatch &operator=(const OwnerWatch &) = delete;
  ~OwnerWatch() {
    if (!thread_.joinable()) return;
    char c = 0;
    while (write(stop_write_.get(), &c, 1) < 0 && errno == EINTR) {
    }
    thread_.join();
  }

 private:
  bool owner_gone() const {
    if (kill(static_cast<pid_t>(pid_), 0) != 0 && errno == ESRCH) return true;
    std::string stat;
    if (!read_file("/proc/" + std::to_string(pid_) + "/stat", &stat)) return true;
    size_t paren = stat.rfind(')');
    return paren != std::string::npos && paren + 2 < stat.size() && stat[paren + 2] == 'Z';
  }

  void watch() {
    Fd pidfd(static_cast<int>(syscall(SYS_pidfd_open, static_cast<pid_t>(pid_), 0)));
    for (;;) {
      struct pollfd p[2] = {{stop_read_.get(), POLLIN, 0}, {pidfd.get(), POLLIN, 0}};
      int n = poll(p, pidfd.ok() ? 2 : 1, pidfd.ok() ? -1 : 200);
      if (n < 0 && errno == EINTR) continue;
      if (n > 0 && (p[0].revents & POLLIN)) return;
      if ((pidfd.ok() && n > 0 && (p[1].revents & POLLIN)) || (!pidfd.ok() && owner_gone())) {
        pthread_kill(main_, SIGTERM);
        return;
      }
    }
  }

  long pid_;
  pthread_t main_;
  Fd stop_read_, stop_write_;
  std::thread thread_;
};

// Blocks the signals that end the daemon in the threads started meanwhile,
// so that they reach the FUSE loop of the main thread.
class SignalsBlocked {
 public:
  SignalsBlocked() {
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGTERM);
    sigaddset(&set, SIGINT);
    sigaddset(&set, SIGHUP);
    pthread_sigmask(SIG_BLOCK, &set, &old_);
  }
  SignalsBlocked(const SignalsBlocked &) = delete;
  SignalsBlocked &operator=(const SignalsBlocked &) = delete;
  ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &old_, nullptr); }

 private:
  sigset_t old_;
};

class Mounted {
 public:
  explicit Mounted(struct fuse *f) : f_(f) {}
  Mounted(const Mounted &) = delete;
  Mounted &operator=(const Mounted &) = delete;
  ~Mounted() { fuse_unmount(f_); }

 private:
  struct fuse *f_;
};

class SignalHandlers {
 public:
  explicit SignalHandlers(struct fuse_session *se) : se_(se) { ok_ = fuse_set_signal_handlers(se_) == 0; }
  SignalHandlers(const SignalHandlers &) = delete;
  SignalHandlers &operator=(const SignalHandlers &) = delete;
  ~SignalHandlers() {
    if (ok_) fuse_remove_signal_handlers(se_);
  }
  bool ok() const { return ok_; }

 private:
  struct fuse_session *se_;
  bool ok_ = false;
};

}  // namespace

std::string daemon_lock_path(const SimRoot &r) { return r.sim() + "/daemon.lock"; }
std::string daemon_pid_path(const SimRoot &r) { return r.sim() + "/daemon.pid"; }

std::string service_socket_gateway_path(const SimRoot &r) {
  std::string run = ini_value(r, "vek", "run");
  return (run.empty() ? std::string("/var/run/vek") : run) + "/vek.sock";
}

std::string service_socket_path(const SimRoot &r) { return r.host(service_socket_gateway_path(r)); }

bool is_mount_point(const std::string &path) {
  std::string info;
  if (!read_file("/proc/self/mountinfo", &info)) return false;
  size_t pos = 0;
  while (pos < info.size()) {
    size_t end = info.find('\n', pos);
    if (end == std::string::npos) end = info.size();
    std::vector<std::string> fields = split_words(info.substr(pos, end - pos));
    pos = end + 1;
    if (fields.size() < 5) continue;
    // The mount point is the fifth field, with blanks written in octal.
    std::string mp;
    const std::string &f = fields[4];
    for (size_t i = 0; i < f.size(); i++) {
      if (f[i] == '\\' && i + 3 < f.size()) {
        mp += static_cast<char>(strtol(f.substr(i + 1, 3).c_str(), nullptr, 8));
        i += 3;
      } else {
        mp += f[i];
      }
    }
    if (mp == path) return true;
  }
  return false;
}

int run_daemon(const SimRoot &r, const DaemonOptions &o) {
  prctl(PR_SET_NAME, "vek-sim", 0, 0, 0);
  Fd lock(open(daemon_lock_path(r).c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644));
  if (!lock.ok() || flock(lock.get(), LOCK_EX | LOCK_NB) != 0) {
    report(o.ready_fd, "error a simulator is already running in " + r.root);
    return 1;
  }
  std::string mountpoint = r.host("/proc");
  if (access("/dev/fuse", F_OK) != 0) {
    report(o.ready_fd, "mount /dev/fuse is missing");
    return EXIT_CANNOT_MOUNT;
  }
  if (is_mount_point(mountpoint)) {
    report(o.ready_fd, "error " + mountpoint + " is already a mount point");
    return 1;
  }
  bool auto_unmount = have_fusermount();
  FusePtr f = new_fuse(&r, auto_unmount);
  if (!f) {
    report(o.ready_fd, "error the FUSE options were refused");
    return 1;
  }
  if (fuse_mount(f.get(), mountpoint.c_str()) != 0) {
    report(o.ready_fd, "mount FUSE refused the mount");
    return EXIT_CANNOT_MOUNT;
  }
  Mounted mounted(f.get());
  SignalHandlers handlers(fuse_get_session(f.get()));
  if (!handlers.ok()) {
    report(o.ready_fd, "error cannot set the signal handlers");
    return 1;
  }
  signal(SIGPIPE, SIG_IGN);
  Service service;
  std::unique_ptr<OwnerWatch> owner;
  {
    SignalsBlocked blocked;
    std::string error;
    if (!service.start(r, service_socket_path(r), service_socket_gateway_path(r), &error)) {
      report(o.ready_fd, "error " + error);
      return 1;
    }
    owner.reset(new OwnerWatch(o.owner_pid, pthread_self()));
  }
  write_file(daemon_pid_path(r), strprintf("%ld\n", static_cast<long>(getpid())));
  report(o.ready_fd, "ready");
  if (o.ready_fd >= 0) close(o.ready_fd);
  int status = fuse_loop(f.get());
  service.stop();
  owner.reset();
  unlink(daemon_pid_path(r).c_str());
  return status < 0 ? 1 : 0;
}
