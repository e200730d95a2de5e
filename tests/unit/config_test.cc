// Where vek.ini is found, and what a loaded record holds. What is no
// configuration (a FIFO, a device, a directory, no INI) is passed over as a
// missing file is: hostile-input.t shows it through the tool.
#include "config/config.h"

#include <filesystem>
#include <vector>

#include "scratch_sysroot.h"

namespace {

class ConfigTest : public ScratchSysroot {
 protected:
  // Loads into a fresh record; nothing of any file may reach standard error.
  int load(const char *exe_dir, const char *explicit_path = nullptr) {
    config_ = tool_config{};
    testing::internal::CaptureStderr();
    int rc = config_load(&config_, exe_dir, explicit_path);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    return rc;
  }
  tool_config config_;
};

TEST_F(ConfigTest, LoadsTheFirstCandidateThatParses) {
  std::string kib64 = "[vek]\nbin = /from/64k\n";  // comment lines up to 64 KiB exactly
  while (kib64.size() < 65536) kib64 += std::string(std::min<size_t>(63, 65535 - kib64.size()), ';') + "\n";
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
      {"/x", "/64k", "/64k", {"/etc/vek/vek.ini"}, nullptr},  // 64 KiB is the most
      {"/x", "/64k+1", "/etc/vek/vek.ini", {"/etc/vek/vek.ini"}, nullptr},
  };
  put("/64k", kib64);
  put("/64k+1", kib64 + ";");
  for (const auto &c : cases) {
    SCOPED_TRACE(c.expected ? c.expected : "(none)");
    for (const char *dir : {"/usr", "/etc", "/opt"}) std::filesystem::remove_all(root_ + dir);
    for (const char *path : c.present) put(path, std::string("[vek]\nbin = /from") + path + "\n");
    if (c.broken) put(c.broken, "[vek]\nthis line is no key\n");
    EXPECT_EQ(load(c.exe_dir, c.explicit_path), c.expected ? 0 : 1);
    EXPECT_STREQ(config_.ini_path, c.expected ? c.expected : "");
    EXPECT_EQ(std::string(config_.bin), c.expected ? std::string("/from") + c.expected : "");
  }
}

// The qos switch by its first character (anything else: on; a section named
// like the key holds no value).
TEST_F(ConfigTest, SwitchByItsFirstCharacter) {
  for (auto [text, qos] : {std::pair<const char *, int>{"[other]\nqos = 0\n", 1}, {"[vek]\nqos = no\n", 0},
                           {"[vek]\nqos = Fine\n", 0}, {"[vek]\nqos = True\n", 1}, {"[vek]\nqos = maybe\n", 1},
                           {"[vek]\nqos =\n", 1}, {"[vek:qos]\n[vek]\n", 1}}) {
    put("/etc/vek/vek.ini", text);
    ASSERT_EQ(load("/x"), 0) << text;
    EXPECT_EQ(config_.qos, qos) << text;
  }
}

}  // namespace
