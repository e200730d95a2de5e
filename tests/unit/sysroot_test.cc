#include "sys/sysroot.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

namespace {

struct SysrootCase {
  const char *root;  // null: VEKTOOL_SYSROOT unset
  const char *path;
  const char *expected;  // null: the path itself is handed back
};

class Sysroot : public ::testing::TestWithParam<SysrootCase> {
 protected:
  void TearDown() override { unsetenv("VEKTOOL_SYSROOT"); }
};

TEST_P(Sysroot, MapsAbsolutePathsOnly) {
  const SysrootCase &c = GetParam();
  if (c.root)
    setenv("VEKTOOL_SYSROOT", c.root, 1);
  else
    unsetenv("VEKTOOL_SYSROOT");
  char buf[SYSROOT_PATH_MAX];
  const char *mapped = sysroot_path(c.path, buf, sizeof buf);
  if (c.expected) {
    EXPECT_EQ(mapped, buf);
    EXPECT_STREQ(mapped, c.expected);
  } else {
    EXPECT_EQ(mapped, c.path);  // the very same pointer, untouched
  }
  SysPath sys(c.path);
  if (c.expected)
    EXPECT_STREQ(sys.c_str(), c.expected);
  else
    EXPECT_EQ(sys.c_str(), c.path);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, Sysroot,
    ::testing::Values(SysrootCase{nullptr, "/proc/vek/monitor", nullptr}, SysrootCase{"", "/proc/vek/monitor", nullptr},
                      SysrootCase{nullptr, "vek.ini", nullptr}, SysrootCase{"/sim", "/proc/vek/monitor", "/sim/proc/vek/monitor"},
                      SysrootCase{"/sim", "/", "/sim/"}, SysrootCase{"/sim", "proc/vek", nullptr},
                      SysrootCase{"/sim", "./vek.ini", nullptr}, SysrootCase{"/sim", nullptr, nullptr},
                      SysrootCase{"sim", "/proc/self/exe", "sim/proc/self/exe"}));

TEST(SysrootPrefix, EmptyWhenUnset) {
  unsetenv("VEKTOOL_SYSROOT");
  EXPECT_STREQ(sysroot_prefix(), "");
  setenv("VEKTOOL_SYSROOT", "/tmp/gw", 1);
  EXPECT_STREQ(sysroot_prefix(), "/tmp/gw");
  unsetenv("VEKTOOL_SYSROOT");
}

TEST(SysrootPath, CutToTheBuffer) {
  setenv("VEKTOOL_SYSROOT", "/r", 1);
  char buf[8];
  memset(buf, 'Z', sizeof buf);
  EXPECT_STREQ(sysroot_path("/proc/vek", buf, sizeof buf), "/r/proc");
  unsetenv("VEKTOOL_SYSROOT");
}

}  // namespace
