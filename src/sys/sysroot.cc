#include "sys/sysroot.h"

#include <cstdio>
#include <cstdlib>

#include "sys/text.h"

const char *sysroot_prefix() {
  const char *root = getenv("VEKTOOL_SYSROOT");
  return root ? root : "";
}

const char *sysroot_path(const char *path, char *buf, size_t size) {
  const char *root = sysroot_prefix();
  if (!path || path[0] != '/' || root[0] == '\0') return path;
  join_text(buf, size, root, path);
  return buf;
}
