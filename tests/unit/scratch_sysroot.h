// A scratch directory that serves as the sysroot for one test: the helpers
// under test are given the gateway's paths and land in it.
#pragma once

#include <ftw.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

class ScratchSysroot : public ::testing::Test {
 protected:
  void SetUp() override {
    char templ[] = "/tmp/vektool-test-XXXXXX";
    ASSERT_NE(mkdtemp(templ), nullptr);
    root_ = templ;
    setenv("VEKTOOL_SYSROOT", root_.c_str(), 1);
  }
  void TearDown() override {
    unsetenv("VEKTOOL_SYSROOT");
    nftw(root_.c_str(), remove_entry, 16, FTW_DEPTH | FTW_PHYS);
  }
  // Writes a file at a gateway path, its parents made first.
  void put(const std::string &path, const std::string &text) const {
    for (size_t pos = 1; (pos = path.find('/', pos)) != std::string::npos; ++pos)
      mkdir((root_ + path.substr(0, pos)).c_str(), 0755);
    std::ofstream(root_ + path) << text;
  }
  std::string get(const std::string &path) const {
    std::ifstream in(root_ + path);
    std::ostringstream out;
    out << in.rdbuf();
    return in ? out.str() : "<missing>";
  }
  std::string root_;

 private:
  static int remove_entry(const char *path, const struct stat *, int, struct FTW *) { return remove(path); }
};
