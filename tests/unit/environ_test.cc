#include "sys/environ.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "scratch_sysroot.h"

namespace {

TEST(Environ, PathGetsTheDirectoryInFront) {
  const std::string saved = getenv("PATH") ? getenv("PATH") : "/usr/bin:/bin";  // other tests run commands
  unsetenv("PATH");
  prepend_path_env("/usr/sbin");
  prepend_path_env("%s/usr/sbin", "/sim");
  prepend_path_env(nullptr);
  EXPECT_STREQ(getenv("PATH"), "/sim/usr/sbin:/usr/sbin");
  // The directory is cut to 255 characters, the whole value to 511.
  std::string dir(300, 'd'), old(400, 'o');
  setenv("PATH", old.c_str(), 1);
  prepend_path_env("/%s", dir.c_str());
  EXPECT_EQ(std::string(getenv("PATH")), ("/" + dir.substr(0, 254) + ":" + old).substr(0, 511));
  setenv("PATH", saved.c_str(), 1);
}

class ExePath : public ScratchSysroot {};

TEST_F(ExePath, ReadsTheLinkThroughTheSysroot) {
  put("/proc/self/x", "");
  ASSERT_EQ(symlink("/usr/vek/bin/vektool", (root_ + "/proc/self/exe").c_str()), 0);
  char buffer[32];
  memset(buffer, 'Z', sizeof buffer);
  EXPECT_EQ(get_exe_path(buffer, 7), 7);  // cut, and not terminated by itself
  EXPECT_EQ(std::string(buffer, 8), "/usr/veZ");
  EXPECT_EQ(get_exe_path(buffer, sizeof buffer), 20);
  remove((root_ + "/proc/self/exe").c_str());
  EXPECT_EQ(get_exe_path(buffer, sizeof buffer), -1);
}

}  // namespace
