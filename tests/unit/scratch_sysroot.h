// A scratch directory that serves as the sysroot for one test: the helpers
// under test are given the gateway's paths and land in it.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

class ScratchSysroot : public ::testing::Test {
 protected:
  void SetUp() override {
    char templ[] = "/tmp/vektool-test-XXXXXX";
    ASSERT_NE(mkdtemp(templ), nullptr);
    setenv("VEKTOOL_SYSROOT", (root_ = templ).c_str(), 1);
  }
  void TearDown() override { unsetenv("VEKTOOL_SYSROOT"), std::filesystem::remove_all(root_); }
  // Writes a file at a gateway path, its parents made first.
  void put(const std::string &path, const std::string &text) const {
    std::filesystem::create_directories(std::filesystem::path(root_ + path).parent_path());
    std::ofstream(root_ + path) << text;
  }
  std::string get(const std::string &path) const {
    std::ifstream in(root_ + path);
    return in ? std::string(std::istreambuf_iterator<char>(in), {}) : "<missing>";
  }
  std::string root_;
};
