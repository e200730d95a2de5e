// Where vek.ini is found, and what a loaded record holds.
#include "config/config.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

// A sysroot in a fresh temporary directory, removed at the end.
class ConfigTest : public ::testing::Test {
 protected:
  void SetUp() override {
    char dir[] = "/tmp/vekcfg.XXXXXX";
    ASSERT_NE(mkdtemp(dir), nullptr);
    root_ = dir;
    setenv("VEKTOOL_SYSROOT", root_.c_str(), 1);
    memset(&config_, 0, sizeof config_);
  }
  void TearDown() override {
    unsetenv("VEKTOOL_SYSROOT");
    std::string cmd = "rm -rf '" + root_ + "'";
    ASSERT_EQ(system(cmd.c_str()), 0);
  }
  // Writes a file at a gateway path inside the sysroot, parents included.
  void put(const std::string &path, const std::string &text) {
    std::string cmd = "mkdir -p \"$(dirname '" + root_ + path + "')\"";
    ASSERT_EQ(system(cmd.c_str()), 0);
    FILE *f = fopen((root_ + path).c_str(), "w");
    ASSERT_NE(f, nullptr);
    fputs(text.c_str(), f);
    fclose(f);
  }
  std::string root_;
  tool_config config_;
};

const char kMarked[] = "[vek]\nbin = /from%s\n";

std::string marked(const std::string &where) {
  char text[256];
  snprintf(text, sizeof text, kMarked, where.c_str());
  return text;
}

struct SearchCase {
  const char *name;
  std::vector<const char *> present;  // gateway paths holding a vek.ini, each marked
  const char *explicit_path;          // -i, or null
  const char *exe_dir;                // or null
  const char *expected;               // the path loaded, or null for failure
};

const SearchCase kSearch[] = {
    {"exe_dir_first", {"/usr/vek/bin/vek.ini", "/usr/vek/vek.ini"}, nullptr, "/usr/vek/bin",
     "/usr/vek/bin/vek.ini"},
    {"usr_vek_before_etc", {"/usr/vek/vek.ini", "/etc/vek/vek.ini"}, nullptr, "/usr/vek/bin",
     "/usr/vek/vek.ini"},
    {"usr_vek_vek", {"/usr/vek/vek/vek.ini", "/usr/vek/etc/vek.ini"}, nullptr, "/x",
     "/usr/vek/vek/vek.ini"},
    {"usr_vek_etc", {"/usr/vek/etc/vek.ini", "/usr/vek/etc/vek/vek.ini"}, nullptr, "/x",
     "/usr/vek/etc/vek.ini"},
    {"usr_vek_etc_vek", {"/usr/vek/etc/vek/vek.ini", "/etc/vek/vek.ini"}, nullptr, "/x",
     "/usr/vek/etc/vek/vek.ini"},
    {"etc_vek_last", {"/etc/vek/vek.ini"}, nullptr, "/x", "/etc/vek/vek.ini"},
    {"nothing", {}, nullptr, "/usr/vek/bin", nullptr},
    {"explicit_wins", {"/opt/a.ini", "/usr/vek/bin/vek.ini"}, "/opt/a.ini", "/usr/vek/bin",
     "/opt/a.ini"},
    {"explicit_missing_falls_back", {"/etc/vek/vek.ini"}, "/opt/none.ini", "/usr/vek/bin",
     "/etc/vek/vek.ini"},
    {"no_exe_dir_no_search", {"/usr/vek/vek.ini"}, nullptr, nullptr, nullptr},
    {"explicit_without_exe_dir", {"/opt/a.ini"}, "/opt/a.ini", nullptr, "/opt/a.ini"},
};

class ConfigSearchTest : public ConfigTest,
                         public ::testing::WithParamInterface<SearchCase> {};

TEST_P(ConfigSearchTest, LoadsTheFirstCandidate) {
  const SearchCase &c = GetParam();
  for (const char *path : c.present) put(path, marked(path));
  int rc = config_load(&config_, c.exe_dir, c.explicit_path);
  if (!c.expected) {
    EXPECT_EQ(rc, 1);
    EXPECT_STREQ(config_.ini_path, "");
    return;
  }
  ASSERT_EQ(rc, 0);
  // The path is kept as the gateway sees it, without the sysroot.
  EXPECT_STREQ(config_.ini_path, c.expected);
  EXPECT_EQ(std::string(config_.bin), std::string("/from") + c.expected);
}

INSTANTIATE_TEST_SUITE_P(Search, ConfigSearchTest, ::testing::ValuesIn(kSearch),
                         [](const auto &p) { return std::string(p.param.name); });

TEST_F(ConfigTest, BrokenFileIsSkipped) {
  put("/usr/vek/vek.ini", "[vek]\nthis line is no key\n");
  put("/usr/vek/vek/vek.ini", marked("/usr/vek/vek/vek.ini"));
  testing::internal::CaptureStderr();
  ASSERT_EQ(config_load(&config_, "/x", nullptr), 0);
  testing::internal::GetCapturedStderr();
  EXPECT_STREQ(config_.ini_path, "/usr/vek/vek/vek.ini");
}

TEST_F(ConfigTest, FileWithoutVekSectionGivesDefaults) {
  put("/etc/vek/vek.ini", "[other]\nkey = 1\n");
  ASSERT_EQ(config_load(&config_, "/x", nullptr), 0);
  EXPECT_EQ(config_.qos, 1);
  EXPECT_EQ(config_.iam, 1);
  EXPECT_EQ(config_.cs, 1);
  EXPECT_EQ(config_.log_level, 3);
  EXPECT_STREQ(config_.bin, "");
  EXPECT_STREQ(config_.var, "");
  EXPECT_STREQ(config_.socket_file, "/vek.sock");
  EXPECT_STREQ(config_.logd_socket_file, "/veklogd.sock");
}

struct BooleanCase {
  const char *value;
  int expected;
};

class ConfigBooleanTest : public ConfigTest, public ::testing::WithParamInterface<BooleanCase> {};

TEST_P(ConfigBooleanTest, FollowsTheFirstCharacter) {
  put("/etc/vek/vek.ini", std::string("[vek]\nqos = ") + GetParam().value + "\n");
  ASSERT_EQ(config_load(&config_, "/x", nullptr), 0);
  EXPECT_EQ(config_.qos, GetParam().expected) << GetParam().value;
}

INSTANTIATE_TEST_SUITE_P(Booleans, ConfigBooleanTest,
                         ::testing::Values(BooleanCase{"maybe", 1}, BooleanCase{"no", 0},
                                           BooleanCase{"No", 0}, BooleanCase{"0", 0},
                                           BooleanCase{"false", 0}, BooleanCase{"yes", 1},
                                           BooleanCase{"1", 1}, BooleanCase{"True", 1}));

TEST_F(ConfigTest, EveryKeyLandsInItsField) {
  put("/usr/vek/bin/vek.ini",
      "[vek]\nbin=/b\nlib=/l\nklib=/k\netc=/e\nrun=/var/run/vek\ntmp=/t\nshare=/s\n"
      "var=/usr/vek/var\nvar_lib=/vl\nvar_log=/vlog\nvar_tmp=/vt\nqos=no\niam=no\ncs=no\n"
      "upstream_port=eth0\ndownstream_port=br0\nhw_up_if=hw0\nhw_dw_if=hw1\n"
      "max_conn_count=4096\nmax_db_entries=2048\nqos_mode=2\nskbmark=0x100\n"
      "max_cache_size=16\nserver=srv\nhost=h\nproduct=p\nauth_id=id\nauth_pwd=pw\n"
      "log_level=5\n[logger]\nmax_db_size=1024\n");
  ASSERT_EQ(config_load(&config_, "/usr/vek/bin", nullptr), 0);
  const struct {
    const char *field;
    const char *expected;
  } strings[] = {
      {config_.bin, "/b"}, {config_.lib, "/l"}, {config_.klib, "/k"}, {config_.etc, "/e"},
      {config_.run, "/var/run/vek"}, {config_.tmp, "/t"}, {config_.share, "/s"},
      {config_.var, "/usr/vek/var"}, {config_.var_lib, "/vl"}, {config_.var_log, "/vlog"},
      {config_.var_tmp, "/vt"}, {config_.upstream_port, "eth0"},
      {config_.downstream_port, "br0"}, {config_.hw_up_if, "hw0"}, {config_.hw_dw_if, "hw1"},
      {config_.max_conn_count, "4096"}, {config_.max_db_entries, "2048"},
      {config_.qos_mode, "2"}, {config_.skbmark, "0x100"}, {config_.max_cache_size, "16"},
      {config_.server, "srv"}, {config_.host, "h"}, {config_.product, "p"},
      {config_.auth_id, "id"}, {config_.auth_pwd, "pw"}, {config_.logger_max_db_size, "1024"},
      {config_.socket_file, "/var/run/vek/vek.sock"},
      {config_.logd_socket_file, "/var/run/vek/veklogd.sock"},
  };
  for (const auto &s : strings) EXPECT_STREQ(s.field, s.expected);
  EXPECT_EQ(config_.qos, 0);
  EXPECT_EQ(config_.iam, 0);
  EXPECT_EQ(config_.cs, 0);
  EXPECT_EQ(config_.log_level, 5);
  EXPECT_STREQ(config_.log_file, "");
}

TEST_F(ConfigTest, OverlongValueIsCutToItsField) {
  put("/etc/vek/vek.ini", "[vek]\nupstream_port=" + std::string(100, 'w') + "\nhost=h\n");
  ASSERT_EQ(config_load(&config_, "/x", nullptr), 0);
  EXPECT_EQ(std::string(config_.upstream_port), std::string(63, 'w'));
  EXPECT_STREQ(config_.host, "h");
}

}  // namespace
