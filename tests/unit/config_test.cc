// Where vek.ini is found, and what a loaded record holds.
#include "config/config.h"

#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

namespace {

namespace fs = std::filesystem;

// A sysroot in a fresh temporary directory, removed at the end.
class ConfigTest : public ::testing::Test {
 protected:
  void SetUp() override {
    char dir[] = "/tmp/vekcfg.XXXXXX";
    ASSERT_NE(mkdtemp(dir), nullptr);
    root_ = dir;
    setenv("VEKTOOL_SYSROOT", dir, 1);
    memset(&config_, 0, sizeof config_);
  }
  void TearDown() override { unsetenv("VEKTOOL_SYSROOT"); fs::remove_all(root_); }
  // Writes a file at a gateway path inside the sysroot, parents included.
  void put(const std::string &path, const std::string &text) {
    fs::create_directories(fs::path(root_ + path).parent_path());
    std::ofstream(root_ + path) << text;
  }
  // Loads, and checks that nothing of any file reached standard error.
  int load(const char *exe_dir, const char *explicit_path = nullptr) {
    testing::internal::CaptureStderr();
    int rc = config_load(&config_, exe_dir, explicit_path);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    return rc;
  }
  std::string root_;
  tool_config config_;
};

TEST_F(ConfigTest, LoadsTheFirstCandidateThatParses) {
  const struct {
    const char *exe_dir, *explicit_path;
    const char *expected;               // the path loaded, as the gateway sees it; null: none
    std::vector<const char *> present;  // each file names itself in vek:bin
    const char *broken = nullptr;       // a file iniparser cannot load
  } cases[] = {
      {"/usr/vek/bin", nullptr, "/usr/vek/bin/vek.ini", {"/usr/vek/bin/vek.ini", "/usr/vek/vek.ini"}},
      {"/x", nullptr, "/usr/vek/vek.ini", {"/usr/vek/vek.ini", "/etc/vek/vek.ini"}},
      {"/x", nullptr, "/usr/vek/vek/vek.ini", {"/usr/vek/vek/vek.ini", "/usr/vek/etc/vek.ini"}},
      {"/x", nullptr, "/usr/vek/etc/vek.ini", {"/usr/vek/etc/vek.ini", "/usr/vek/etc/vek/vek.ini"}},
      {"/x", nullptr, "/usr/vek/etc/vek/vek.ini", {"/usr/vek/etc/vek/vek.ini", "/etc/vek/vek.ini"}},
      {"/x", nullptr, "/etc/vek/vek.ini", {"/etc/vek/vek.ini"}},
      {"/x", nullptr, "/usr/vek/vek/vek.ini", {"/usr/vek/vek/vek.ini"}, "/usr/vek/vek.ini"},
      {"/usr/vek/bin", nullptr, nullptr, {}},
      {nullptr, nullptr, nullptr, {"/usr/vek/vek.ini"}},
      {"/usr/vek/bin", "/opt/a.ini", "/opt/a.ini", {"/opt/a.ini", "/usr/vek/bin/vek.ini"}},
      {nullptr, "/opt/a.ini", "/opt/a.ini", {"/opt/a.ini"}},
      {"/x", "/opt/none.ini", "/etc/vek/vek.ini", {"/etc/vek/vek.ini"}},
      {"/x", "/opt/bad.ini", "/etc/vek/vek.ini", {"/etc/vek/vek.ini"}, "/opt/bad.ini"},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.expected ? c.expected : "(none)");
    for (const auto &entry : fs::directory_iterator(root_)) fs::remove_all(entry);
    memset(&config_, 0, sizeof config_);
    for (const char *path : c.present) put(path, std::string("[vek]\nbin = /from") + path + "\n");
    if (c.broken) put(c.broken, "[vek]\nthis line is no key\n");
    EXPECT_EQ(load(c.exe_dir, c.explicit_path), c.expected ? 0 : 1);
    EXPECT_STREQ(config_.ini_path, c.expected ? c.expected : "");
    EXPECT_EQ(std::string(config_.bin), c.expected ? std::string("/from") + c.expected : "");
  }
}

TEST_F(ConfigTest, FileWithoutVekSectionGivesDefaults) {
  put("/etc/vek/vek.ini", "[other]\nkey = 1\n");
  ASSERT_EQ(load("/x"), 0);
  EXPECT_EQ(std::vector<int>({config_.qos, config_.iam, config_.cs, config_.log_level}),
            std::vector<int>({1, 1, 1, 3}));
  EXPECT_EQ(std::vector<std::string>({config_.bin, config_.var, config_.socket_file,
                                       config_.logd_socket_file}),
            std::vector<std::string>({"", "", "/vek.sock", "/veklogd.sock"}));
}

TEST_F(ConfigTest, BooleanFollowsTheFirstCharacter) {
  const std::pair<const char *, int> cases[] = {{"maybe", 1}, {"no", 0},  {"No", 0}, {"0", 0},
                                                {"false", 0}, {"yes", 1}, {"1", 1},  {"True", 1},
                                                {"", 1},      {"Fine", 0}};
  for (const auto &[value, expected] : cases) {
    put("/etc/vek/vek.ini", std::string("[vek]\nqos = ") + value + "\n");
    ASSERT_EQ(load("/x"), 0);
    EXPECT_EQ(config_.qos, expected) << value;
  }
}

TEST_F(ConfigTest, LogLevelConvertsAsTheLibraryDoes) {
  const std::pair<const char *, int> cases[] = {
      {"5", 5}, {"0x10", 16}, {"010", 8}, {"-2", -2}, {"7 apples", 7}, {"x", 0}, {"", 0}};
  for (const auto &[value, expected] : cases) {
    put("/etc/vek/vek.ini", std::string("[vek]\nlog_level = ") + value + "\n");
    ASSERT_EQ(load("/x"), 0);
    EXPECT_EQ(config_.log_level, expected) << value;
  }
}

// A section named like a key holds no value: the key keeps its default and the file loads as it
// would without that section (iniparser's own getters would read the value through a null pointer).
TEST_F(ConfigTest, SectionNamedLikeAKeyIsNoValue) {
  const std::string file = "[vek]\nbin = /b\nrun = /r\niam = no\n[logger]\nmax_db_size = 9\n";
  put("/etc/vek/vek.ini", file);
  ASSERT_EQ(load("/x"), 0);
  const tool_config plain = config_;
  for (const char *section : {"[vek:qos]", "[VEK:IAM]", "[vek:cs]", "[Vek:Log_Level]", "[vek:run]",
                              "[logger:max_db_size]"}) {
    put("/etc/vek/vek.ini", std::string(section) + "\n" + file);
    memset(&config_, 0, sizeof config_);
    ASSERT_EQ(load("/x"), 0) << section;
    EXPECT_EQ(memcmp(&config_, &plain, sizeof plain), 0) << section;
  }
  put("/etc/vek/vek.ini", "[vek:qos]\n[vek:log_level]\n");
  ASSERT_EQ(load("/x"), 0);
  EXPECT_EQ(std::vector<int>({config_.qos, config_.log_level}), std::vector<int>({1, 3}));
}

// Only a regular file of at most 64 KiB whose path fits 256 bytes is a candidate; anything else
// is passed over as a missing file is, and the search goes on to the next place.
TEST_F(ConfigTest, OnlyARegularFileIsACandidate) {
  const std::string good = "[vek]\nbin = /good\n";
  // `good` padded with comment lines of 64 bytes to exactly `size` bytes.
  auto padded_to = [&good](size_t size) {
    std::string text = good;
    while (text.size() < size) {
      size_t line = std::min<size_t>(64, size - text.size());
      text += line < 2 ? std::string(line, '\n') : "; " + std::string(line - 3, 'c') + "\n";
    }
    return text;
  };
  const std::string dir255 = "/" + std::string(100, 'a') + "/" + std::string(100, 'b');
  const std::string cut = dir255 + "/" + std::string(255 - dir255.size() - 1, 'c');  // 255 bytes
  const struct {
    const char *name;
    std::string path;  // where the odd candidate lies
    bool explicit_path;
  } cases[] = {
      {"directory", "/usr/vek/bin/vek.ini", false}, {"directory", "/opt/a.ini", true},
      {"fifo", "/usr/vek/bin/vek.ini", false},      {"fifo", "/opt/a.ini", true},
      {"/dev/zero", "/usr/vek/bin/vek.ini", false}, {"/dev/zero", "/opt/a.ini", true},
      {"/dev/null", "/usr/vek/bin/vek.ini", false}, {"over 64 KiB", "/opt/a.ini", true},
      {"not ini", "/usr/vek/bin/vek.ini", false},   {"not ini", "/opt/a.ini", true},
      {"cut path", cut + "-and-more", true},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(std::string(c.name) + " at " + c.path.substr(0, 40));
    for (const auto &entry : fs::directory_iterator(root_)) fs::remove_all(entry);
    memset(&config_, 0, sizeof config_);
    put("/etc/vek/vek.ini", good);
    const std::string real = root_ + c.path, name = c.name;
    fs::create_directories(fs::path(real).parent_path());
    if (name == "directory") {
      fs::create_directories(real);
    } else if (name == "fifo") {
      ASSERT_EQ(mkfifo(real.c_str(), 0600), 0);
    } else if (name[0] == '/') {
      ASSERT_EQ(symlink(c.name, real.c_str()), 0);
    } else if (name == "over 64 KiB") {
      put(c.path, padded_to(64 * 1024 + 1));
    } else if (name == "not ini") {
      put(c.path, "root:$6$secret:19000:0:99999:7:::\ndaemon:*:19000:0:99999:7:::\n");
    } else {
      put(c.path, "[vek]\nbin = /long\n");
      put(cut, "[vek]\nbin = /cut\n");
    }
    EXPECT_EQ(load("/usr/vek/bin", c.explicit_path ? c.path.c_str() : nullptr), 0);
    EXPECT_STREQ(config_.ini_path, "/etc/vek/vek.ini");
    EXPECT_STREQ(config_.bin, "/good");
  }
  // 64 KiB exactly is still a configuration.
  put("/etc/vek/vek.ini", padded_to(64 * 1024));
  ASSERT_EQ(load("/x"), 0);
  EXPECT_STREQ(config_.bin, "/good");
}

TEST_F(ConfigTest, EveryKeyLandsInItsField) {
  put("/usr/vek/bin/vek.ini",
      "[vek]\nbin=/b\nlib=/l\nklib=/k\netc=/e\nrun=/var/run/vek\ntmp=/t\nshare=/s\n"
      "var=/usr/vek/var\nvar_lib=/vl\nvar_log=/vlog\nvar_tmp=/vt\nqos=no\niam=no\ncs=no\n"
      "upstream_port=eth0\ndownstream_port=br0\nhw_up_if=hw0\nhw_dw_if=hw1\n"
      "max_conn_count=4096\nmax_db_entries=2048\nqos_mode=2\nskbmark=0x100\n"
      "max_cache_size=16\nserver=srv\nhost=h\nproduct=p\nauth_id=id\nauth_pwd=pw\n"
      "log_level=5\n[logger]\nmax_db_size=1024\n");
  ASSERT_EQ(load("/usr/vek/bin"), 0);
  const char *const got[] = {
      config_.bin, config_.lib, config_.klib, config_.etc, config_.run, config_.tmp,
      config_.share, config_.var, config_.var_lib, config_.var_log, config_.var_tmp,
      config_.upstream_port, config_.downstream_port, config_.hw_up_if, config_.hw_dw_if,
      config_.max_conn_count, config_.max_db_entries, config_.qos_mode, config_.skbmark,
      config_.max_cache_size, config_.server, config_.host, config_.product, config_.auth_id,
      config_.auth_pwd, config_.logger_max_db_size, config_.socket_file,
      config_.logd_socket_file, config_.log_file};
  EXPECT_EQ(std::vector<std::string>(std::begin(got), std::end(got)),
            std::vector<std::string>({"/b", "/l", "/k", "/e", "/var/run/vek", "/t", "/s",
                                      "/usr/vek/var", "/vl", "/vlog", "/vt", "eth0", "br0", "hw0",
                                      "hw1", "4096", "2048", "2", "0x100", "16", "srv", "h", "p",
                                      "id", "pw", "1024", "/var/run/vek/vek.sock",
                                      "/var/run/vek/veklogd.sock", ""}));
  EXPECT_EQ(std::vector<int>({config_.qos, config_.iam, config_.cs, config_.log_level}),
            std::vector<int>({0, 0, 0, 5}));
}

TEST_F(ConfigTest, OverlongValueIsCutToItsField) {
  put("/etc/vek/vek.ini", "[vek]\nupstream_port=" + std::string(100, 'w') + "\nhost=h\n");
  ASSERT_EQ(load("/x"), 0);
  EXPECT_EQ(std::string(config_.upstream_port), std::string(63, 'w'));
  EXPECT_STREQ(config_.host, "h");
}

}  // namespace

namespace {

// iniparser reads a number as strtol does, base 0; the level is held to int as
// on the 32-bit gateway instead of wrapping on a 64-bit build.
TEST_F(ConfigTest, LogLevelIsHeldToInt) {
  const std::pair<const char *, int> cases[] = {
      {"5", 5},           {"0x10", 16},          {"010", 8},
      {"7x", 7},          {"x", 0},              {"3000000000", 2147483647},
      {"4294967301", 2147483647}, {"-3000000000", -2147483647 - 1}};
  for (const auto &[value, expected] : cases) {
    put("/etc/vek/vek.ini", std::string("[vek]\nlog_level = ") + value + "\n");
    ASSERT_EQ(load("/x"), 0);
    EXPECT_EQ(config_.log_level, expected) << value;
  }
}

}  // namespace
