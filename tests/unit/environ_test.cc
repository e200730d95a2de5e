#include "sys/environ.h"

#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

namespace {

TEST(PrependPathEnv, DirectoryGoesInFront) {
  const std::string saved = getenv("PATH") ? getenv("PATH") : "/usr/bin:/bin";  // other tests run commands
  unsetenv("PATH");
  prepend_path_env("/usr/sbin");
  EXPECT_STREQ(getenv("PATH"), "/usr/sbin");
  prepend_path_env("%s/usr/sbin", "/sim");
  EXPECT_STREQ(getenv("PATH"), "/sim/usr/sbin:/usr/sbin");
  prepend_path_env(nullptr);
  EXPECT_STREQ(getenv("PATH"), "/sim/usr/sbin:/usr/sbin");

  // The directory is cut to 255 characters, the whole value to 511.
  std::string dir(300, 'd'), old(400, 'o');
  setenv("PATH", old.c_str(), 1);
  prepend_path_env("/%s", dir.c_str());
  EXPECT_EQ(std::string(getenv("PATH")), ("/" + dir.substr(0, 254) + ":" + old).substr(0, 511));
  setenv("PATH", saved.c_str(), 1);
}

TEST(ExePath, ReadsTheLinkThroughTheSysroot) {
  char root[] = "/tmp/vektool-environ-XXXXXX";
  ASSERT_NE(mkdtemp(root), nullptr);
  const std::string self = std::string(root) + "/proc/self", exe = self + "/exe";
  ASSERT_EQ(mkdir((std::string(root) + "/proc").c_str(), 0755), 0);
  ASSERT_EQ(mkdir(self.c_str(), 0755), 0);
  ASSERT_EQ(symlink("/usr/vek/bin/vektool", exe.c_str()), 0);
  setenv("VEKTOOL_SYSROOT", root, 1);
  char buffer[32] = {0};
  EXPECT_EQ(get_exe_path(buffer, sizeof buffer), 20);
  EXPECT_STREQ(buffer, "/usr/vek/bin/vektool");
  memset(buffer, 'Z', sizeof buffer);
  EXPECT_EQ(get_exe_path(buffer, 7), 7);  // cut, and not terminated by itself
  EXPECT_EQ(std::string(buffer, 8), "/usr/veZ");
  remove(exe.c_str());
  EXPECT_EQ(get_exe_path(buffer, sizeof buffer), -1);
  unsetenv("VEKTOOL_SYSROOT");
  rmdir(self.c_str());
  rmdir((std::string(root) + "/proc").c_str());
  rmdir(root);
}

}  // namespace
