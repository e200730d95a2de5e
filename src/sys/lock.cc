#include "sys/lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <ctime>

#include "sys/sysroot.h"

EngineLock::~EngineLock() {
  if (fd_ >= 0) close(fd_);  // which releases the lock
}

bool EngineLock::take(const char *run_dir, int wait_ms) {
  if (fd_ >= 0) return true;
  if (!run_dir || !run_dir[0]) return true;
  char path[SYSROOT_PATH_MAX];
  snprintf(path, sizeof path, "%s/vektool.lock", run_dir);
  int fd = open(SysPath(path), O_RDONLY | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0644);
  if (fd < 0) return true;
  struct stat st;
  if (fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) {
    close(fd);
    return true;
  }
  // 0644 whatever the umask it was created under; a file of another owner
  // or with a second name (a hard link planted to a secret) keeps its mode.
  if ((st.st_mode & 07777) != 0644 && st.st_nlink == 1 && st.st_uid == geteuid()) fchmod(fd, 0644);
  const struct timespec pause = {0, ENGINE_LOCK_POLL_MS * 1000000L};
  for (int waited = 0;; waited += ENGINE_LOCK_POLL_MS) {
    if (flock(fd, LOCK_EX | LOCK_NB) == 0) break;
    if (errno != EWOULDBLOCK && errno != EINTR) {
      // A file system without flock: as without a lock file.
      close(fd);
      return true;
    }
    if (waited >= wait_ms) {
      close(fd);
      return false;
    }
    nanosleep(&pause, nullptr);
  }
  fd_ = fd;
  return true;
}
