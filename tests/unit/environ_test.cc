#include "sys/environ.h"

#include <ftw.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

// Keeps PATH as it was around a test: the other tests run shell commands.
class PathEnv : public ::testing::Test {
 protected:
  void SetUp() override {
    const char *path = getenv("PATH");
    had_path_ = path != nullptr;
    if (path) saved_ = path;
  }
  void TearDown() override {
    if (had_path_)
      setenv("PATH", saved_.c_str(), 1);
    else
      unsetenv("PATH");
  }
  bool had_path_ = false;
  std::string saved_;
};

TEST_F(PathEnv, UnsetPathBecomesTheDirectory) {
  unsetenv("PATH");
  prepend_path_env("/usr/sbin");
  EXPECT_STREQ(getenv("PATH"), "/usr/sbin");
}

TEST_F(PathEnv, DirectoryGoesInFront) {
  setenv("PATH", "/bin:/usr/bin", 1);
  prepend_path_env("%s/usr/sbin", "/sim");
  EXPECT_STREQ(getenv("PATH"), "/sim/usr/sbin:/bin:/usr/bin");
  prepend_path_env("%s/usr/sbin", "/sim");
  EXPECT_STREQ(getenv("PATH"), "/sim/usr/sbin:/sim/usr/sbin:/bin:/usr/bin");
}

TEST_F(PathEnv, EmptyPathStillGetsTheColon) {
  setenv("PATH", "", 1);
  prepend_path_env("/usr/sbin");
  EXPECT_STREQ(getenv("PATH"), "/usr/sbin:");
}

TEST_F(PathEnv, NullFormatDoesNothing) {
  setenv("PATH", "/bin", 1);
  prepend_path_env(nullptr);
  EXPECT_STREQ(getenv("PATH"), "/bin");
}

TEST_F(PathEnv, LengthsAreBounded) {
  std::string dir(300, 'd');
  std::string old(400, 'o');
  setenv("PATH", old.c_str(), 1);
  prepend_path_env("/%s", dir.c_str());
  // The directory is cut to 255 characters, the whole value to 511.
  std::string expected = ("/" + dir).substr(0, 255) + ":" + old;
  EXPECT_EQ(std::string(getenv("PATH")), expected.substr(0, 511));
}

int remove_entry(const char *path, const struct stat *, int, struct FTW *) { return remove(path); }

TEST(ExePath, ReadsTheLinkThroughTheSysroot) {
  char templ[] = "/tmp/vektool-environ-XXXXXX";
  ASSERT_NE(mkdtemp(templ), nullptr);
  std::string root = templ;
  ASSERT_EQ(mkdir((root + "/proc").c_str(), 0755), 0);
  ASSERT_EQ(mkdir((root + "/proc/self").c_str(), 0755), 0);
  ASSERT_EQ(symlink("/usr/vek/bin/vektool", (root + "/proc/self/exe").c_str()), 0);

  setenv("VEKTOOL_SYSROOT", root.c_str(), 1);
  char buffer[128] = {0};
  EXPECT_EQ(get_exe_path(buffer, sizeof buffer), 20);
  EXPECT_STREQ(buffer, "/usr/vek/bin/vektool");
  char small[8];
  memset(small, 'Z', sizeof small);
  EXPECT_EQ(get_exe_path(small, 7), 7);  // cut, and not terminated by itself
  EXPECT_EQ(std::string(small, 8), "/usr/veZ");

  ASSERT_EQ(remove((root + "/proc/self/exe").c_str()), 0);
  EXPECT_EQ(get_exe_path(buffer, sizeof buffer), -1);
  unsetenv("VEKTOOL_SYSROOT");
  nftw(root.c_str(), remove_entry, 8, FTW_DEPTH | FTW_PHYS);
}

TEST(ExePath, RealProcess) {
  unsetenv("VEKTOOL_SYSROOT");
  char buffer[4096] = {0};
  char expected[4096] = {0};
  ssize_t n = readlink("/proc/self/exe", expected, sizeof expected - 1);
  ASSERT_GT(n, 0);
  EXPECT_EQ(get_exe_path(buffer, sizeof buffer - 1), n);
  EXPECT_STREQ(buffer, expected);
}

}  // namespace
