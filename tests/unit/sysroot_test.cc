#include "sys/sysroot.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

TEST(Sysroot, PutsTheRootBeforeAbsolutePathsOnly) {
  const struct { const char *root, *path, *expected; } cases[] = {  // root null: unset; expected null: `path` itself
      {nullptr, "/proc/vek", nullptr}, {"", "/proc/vek", nullptr}, {"/sim", "/proc/vek", "/sim/proc/vek"},
      {"/sim", "proc/vek", nullptr},   {"/sim", nullptr, nullptr}};
  for (const auto &c : cases) {
    c.root ? setenv("VEKTOOL_SYSROOT", c.root, 1) : unsetenv("VEKTOOL_SYSROOT");
    char buf[SYSROOT_PATH_MAX];
    SysPath sys(c.path);
    EXPECT_EQ(sysroot_path(c.path, buf, sizeof buf), c.expected ? buf : c.path) << c.root << " " << c.path;
    if (c.expected) {
      EXPECT_EQ(std::string(buf) + "|" + sys.c_str(), std::string(c.expected) + "|" + c.expected);
    } else {
      EXPECT_EQ(sys.c_str(), c.path);
    }
  }
  char small[8];
  EXPECT_STREQ(sysroot_path("/proc/vek", small, sizeof small), "/sim/pr");
  unsetenv("VEKTOOL_SYSROOT");
}

}  // namespace
