// A scratch directory that serves as the sysroot for one test: the helpers
// under test are given the gateway's paths and land in it.
#pragma once

#include <ftw.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
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
  std::string root_;

 private:
  static int remove_entry(const char *path, const struct stat *, int, struct FTW *) {
    return remove(path);
  }
};
