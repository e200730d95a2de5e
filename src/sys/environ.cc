#include "sys/environ.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "sys/sysroot.h"
#include "sys/text.h"

int get_exe_path(char *buffer, int size) {
  if (!buffer || size < 1) return -1;
  return static_cast<int>(readlink(SysPath("/proc/self/exe"), buffer, static_cast<size_t>(size)));
}

void prepend_path_env(const char *format, ...) {
  if (!format) return;
  char dir[256];
  va_list args;
  va_start(args, format);
  vsnprintf(dir, sizeof dir, format, args);
  va_end(args);
  char path[512];
  const char *old = getenv("PATH");
  // Joined by hand: formatting costs more than the copy, at every start.
  join_text(path, sizeof path, dir, old ? ":" : "");
  if (old) {
    size_t used = strlen(path);
    copy_text(path + used, sizeof path - used, old);
  }
  setenv("PATH", path, 1);
}

void keep_standard_descriptors() {
  // The lowest free number is taken: with 0, 1 and 2 open the first open
  // gives 3, which is closed again (two system calls in all).
  for (;;) {
    int fd = open("/dev/null", O_RDONLY);
    if (fd < 0) return;
    if (fd > 2) {
      close(fd);
      return;
    }
  }
}
