#include "sys/source.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cstdio>
#include <cstring>

#include "sys/sysroot.h"

namespace {

// True when the directory that holds `path` (a system path) is writable by
// everyone: anyone may have put a link there.
bool in_open_directory(const char *path) {
  char dir[SYSROOT_PATH_MAX];
  snprintf(dir, sizeof dir, "%s", path);
  char *slash = strrchr(dir, '/');
  if (slash) {
    slash[1] = '\0';  // "/tmp/", or "/"
  } else {
    snprintf(dir, sizeof dir, ".");
  }
  struct stat st;
  return stat(dir, &st) == 0 && (st.st_mode & S_IWOTH);
}

}  // namespace

int open_source(const char *path, long long *size) {
  if (!path) return -1;
  SysPath system_path(path);
  int flags = O_RDONLY | O_NONBLOCK | O_CLOEXEC;
  if (in_open_directory(system_path)) flags |= O_NOFOLLOW;
  int fd = open(system_path, flags);
  if (fd < 0) return -1;
  struct stat st;
  if (fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) {
    close(fd);
    return -1;
  }
  if (size) *size = static_cast<long long>(st.st_size);
  return fd;
}
