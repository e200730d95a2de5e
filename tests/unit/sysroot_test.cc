#include "sys/sysroot.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

TEST(Sysroot, MapsAbsolutePathsOnly) {
  struct Case {
    const char *root, *path, *expected;  // root null: unset; expected null: `path` itself
  } cases[] = {{nullptr, "/proc/vek/monitor", nullptr},    {"", "/proc/vek/monitor", nullptr},
               {"/sim", "/proc/vek", "/sim/proc/vek"},     {"/sim", "proc/vek", nullptr},
               {"/sim", nullptr, nullptr},                 {"sim", "/proc/self/exe", "sim/proc/self/exe"}};
  for (const Case &c : cases) {
    c.root ? setenv("VEKTOOL_SYSROOT", c.root, 1) : unsetenv("VEKTOOL_SYSROOT");
    EXPECT_STREQ(sysroot_prefix(), c.root ? c.root : "");
    char buf[SYSROOT_PATH_MAX];
    const char *mapped = sysroot_path(c.path, buf, sizeof buf);
    SysPath sys(c.path);
    if (c.expected) {
      EXPECT_EQ(mapped, buf);
      EXPECT_STREQ(mapped, c.expected);
      EXPECT_STREQ(sys.c_str(), c.expected);
    } else {
      EXPECT_EQ(mapped, c.path) << c.root << " " << c.path;  // the very same pointer
      EXPECT_EQ(sys.c_str(), c.path);
    }
  }
  setenv("VEKTOOL_SYSROOT", "/r", 1);
  char small[8];
  EXPECT_STREQ(sysroot_path("/proc/vek", small, sizeof small), "/r/proc");
  unsetenv("VEKTOOL_SYSROOT");
}

}  // namespace
