// Where vek.ini is found, and what a loaded record holds.
#include "config/config.h"

#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "scratch_sysroot.h"

namespace {

class ConfigTest : public ScratchSysroot {
 protected:
  // Loads into a fresh record; nothing of any file may reach standard error.
  int load(const char *exe_dir, const char *explicit_path = nullptr) {
    memset(&config_, 0, sizeof config_);
    testing::internal::CaptureStderr();
    int rc = config_load(&config_, exe_dir, explicit_path);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    return rc;
  }
  void clear() {
    for (const auto &entry : std::filesystem::directory_iterator(root_)) std::filesystem::remove_all(entry);
  }
  tool_config config_;
};

TEST_F(ConfigTest, LoadsTheFirstCandidateThatParses) {
  const struct {
    const char *exe_dir, *explicit_path, *expected;  // expected: the path loaded; null: none
    std::vector<const char *> present;               // each file names itself in vek:bin
    const char *broken;                              // a file the parser refuses
  } cases[] = {
      {"/usr/vek/bin", nullptr, "/usr/vek/bin/vek.ini", {"/usr/vek/bin/vek.ini", "/usr/vek/vek.ini"}, nullptr},
      {"/x", nullptr, "/usr/vek/vek.ini", {"/usr/vek/vek.ini", "/etc/vek/vek.ini"}, nullptr},
      {"/x", nullptr, "/usr/vek/vek/vek.ini", {"/usr/vek/vek/vek.ini", "/usr/vek/etc/vek.ini"}, nullptr},
      {"/x", nullptr, "/usr/vek/etc/vek.ini", {"/usr/vek/etc/vek.ini", "/usr/vek/etc/vek/vek.ini"}, nullptr},
      {"/x", nullptr, "/usr/vek/etc/vek/vek.ini", {"/usr/vek/etc/vek/vek.ini", "/etc/vek/vek.ini"}, nullptr},
      {"/x", nullptr, "/usr/vek/vek/vek.ini", {"/usr/vek/vek/vek.ini"}, "/usr/vek/vek.ini"},
      {"/usr/vek/bin", nullptr, nullptr, {}, nullptr},
      {nullptr, nullptr, nullptr, {"/usr/vek/vek.ini"}, nullptr},
      {"/usr/vek/bin", "/opt/a.ini", "/opt/a.ini", {"/opt/a.ini", "/usr/vek/bin/vek.ini"}, nullptr},
      {nullptr, "/opt/a.ini", "/opt/a.ini", {"/opt/a.ini"}, nullptr},
      {"/x", "/opt/none.ini", "/etc/vek/vek.ini", {"/etc/vek/vek.ini"}, nullptr},
      {"/x", "/opt/bad.ini", "/etc/vek/vek.ini", {"/etc/vek/vek.ini"}, "/opt/bad.ini"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.expected ? c.expected : "(none)");
    clear();
    for (const char *path : c.present) put(path, std::string("[vek]\nbin = /from") + path + "\n");
    if (c.broken) put(c.broken, "[vek]\nthis line is no key\n");
    EXPECT_EQ(load(c.exe_dir, c.explicit_path), c.expected ? 0 : 1);
    EXPECT_STREQ(config_.ini_path, c.expected ? c.expected : "");
    EXPECT_EQ(std::string(config_.bin), c.expected ? std::string("/from") + c.expected : "");
  }
}

// Switches by their first character (anything else: on), the level as strtol
// with base 0 held to int, the socket under `run`; a section named like a key
// holds no value.
TEST_F(ConfigTest, SwitchesLevelAndSocket) {
  const struct { const char *text; int qos, log_level; const char *socket; } cases[] = {
      {"[other]\nqos = 0\n", 1, 3, "/vek.sock"},
      {"[vek]\nqos = no\nrun = /r\n", 0, 3, "/r/vek.sock"},
      {"[vek]\nqos = False\n", 0, 3, "/vek.sock"},
      {"[vek]\nqos = Fine\n", 0, 3, "/vek.sock"},
      {"[vek]\nqos = True\n", 1, 3, "/vek.sock"},
      {"[vek]\nqos = maybe\n", 1, 3, "/vek.sock"},
      {"[vek]\nqos =\n", 1, 3, "/vek.sock"},
      {"[vek]\nlog_level = 0x10\n", 1, 16, "/vek.sock"},
      {"[vek]\nlog_level = 7 apples\n", 1, 7, "/vek.sock"},
      {"[vek]\nlog_level = x\n", 1, 0, "/vek.sock"},
      {"[vek]\nlog_level = 4294967301\n", 1, INT_MAX, "/vek.sock"},
      {"[vek]\nlog_level = -3000000000\n", 1, INT_MIN, "/vek.sock"},
      {"[vek:qos]\n[vek:log_level]\n[vek:run]\n", 1, 3, "/vek.sock"},
      {"[Vek:Log_Level]\n[VEK:QOS]\n[vek]\nqos = no\nlog_level = 5\nrun = /r\n", 0, 5, "/r/vek.sock"},
  };
  for (const auto &c : cases) {
    put("/etc/vek/vek.ini", c.text);
    ASSERT_EQ(load("/x"), 0) << c.text;
    EXPECT_EQ(config_.qos, c.qos) << c.text;
    EXPECT_EQ(config_.log_level, c.log_level) << c.text;
    EXPECT_STREQ(config_.socket_file, c.socket) << c.text;
  }
  put("/etc/vek/vek.ini", "[vek]\nupstream_port=" + std::string(100, 'w') + "\nhost=h\n");
  ASSERT_EQ(load("/x"), 0);
  EXPECT_EQ(std::string(config_.upstream_port) + config_.host, std::string(63, 'w') + "h");  // cut to its field
}

// Only a regular file of at most 64 KiB whose path fits 256 bytes is a
// candidate; anything else is passed over as a missing file is.
TEST_F(ConfigTest, OnlyARegularFileIsACandidate) {
  const std::string good = "[vek]\nbin = /good\n";
  std::string padded = good;  // comment lines up to 64 KiB exactly
  while (padded.size() < 64 * 1024) padded += "; " + std::string(std::min<size_t>(61, 64 * 1024 - padded.size() - 3), 'c') + "\n";
  const std::string dir = "/" + std::string(100, 'a') + "/" + std::string(100, 'b');
  const std::string cut = dir + "/" + std::string(255 - dir.size() - 1, 'c');  // 255 bytes
  const struct { std::string kind, path; bool explicit_path; } cases[] = {
      {"directory", "/usr/vek/bin/vek.ini", false}, {"fifo", "/opt/a.ini", true},
      {"/dev/zero", "/usr/vek/bin/vek.ini", false}, {"/dev/null", "/opt/a.ini", true},
      {"over 64 KiB", "/opt/a.ini", true},          {"not ini", "/usr/vek/bin/vek.ini", false},
      {"cut path", cut + "-and-more", true}};
  for (const auto &c : cases) {
    SCOPED_TRACE(c.kind);
    clear();
    put("/etc/vek/vek.ini", good);
    const std::string real = root_ + c.path;
    std::filesystem::create_directories(std::filesystem::path(real).parent_path());
    if (c.kind == "directory") std::filesystem::create_directories(real);
    if (c.kind == "fifo") { ASSERT_EQ(mkfifo(real.c_str(), 0600), 0); }
    if (c.kind[0] == '/') { ASSERT_EQ(symlink(c.kind.c_str(), real.c_str()), 0); }
    if (c.kind == "over 64 KiB") put(c.path, padded + "\n");
    if (c.kind == "not ini") put(c.path, "root:$6$secret:19000:0:99999:7:::\n");
    if (c.kind == "cut path") put(c.path, "[vek]\nbin = /long\n"), put(cut, "[vek]\nbin = /cut\n");
    EXPECT_EQ(load("/usr/vek/bin", c.explicit_path ? c.path.c_str() : nullptr), 0);
    EXPECT_STREQ(config_.ini_path, "/etc/vek/vek.ini");
    EXPECT_STREQ(config_.bin, "/good");
  }
  put("/etc/vek/vek.ini", padded);  // 64 KiB exactly is still a configuration
  ASSERT_EQ(load("/x"), 0);
  EXPECT_STREQ(config_.bin, "/good");
}

}  // namespace
