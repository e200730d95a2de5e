// Sysroot: with VEKTOOL_SYSROOT set to a directory R, every absolute path the
// tool touches on the gateway is used as R followed by that path, so that the
// tool can run against a simulated engine. Unset or empty: no effect at all.
// This module is the only one that knows about R; paths kept and printed stay
// as the gateway sees them.
#pragma once

#include <cstddef>

enum { SYSROOT_PATH_MAX = 4096 };

// R, or "" when no sysroot applies.
const char *sysroot_prefix();

// The path to use for a gateway path: `path` itself when no sysroot applies or
// the path is relative or null, else R + path in `buf` (cut to `size`).
const char *sysroot_path(const char *path, char *buf, size_t size);

// A gateway path made ready for the system: SysPath p("/proc/self/exe"); open(p, ...).
class SysPath {
 public:
  explicit SysPath(const char *path) : path_(sysroot_path(path, buf_, sizeof buf_)) {}
  SysPath(const SysPath &) = delete;
  SysPath &operator=(const SysPath &) = delete;
  operator const char *() const { return path_; }
  const char *c_str() const { return path_; }

 private:
  char buf_[SYSROOT_PATH_MAX];
  const char *path_;
};
