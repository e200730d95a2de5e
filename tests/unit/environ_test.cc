#include "sys/environ.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

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

}  // namespace
