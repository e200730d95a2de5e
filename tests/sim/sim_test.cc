// Tests of vek-sim where the tool's end-to-end tests lean on it: the journal
// of verbs, the engine state they read back, the database handshake, the
// service modes, the programs, and mounts that never outlive a test.
#include <dirent.h>
#include <fcntl.h>
#include <poll.h>
#include <sched.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <ctime>
#include <string>
#include <vector>

#include "sim_fixture.h"

namespace {

class OwnedFd {
 public:
  explicit OwnedFd(int fd) : fd_(fd) {}
  OwnedFd(const OwnedFd &) = delete;
  OwnedFd &operator=(const OwnedFd &) = delete;
  ~OwnedFd() {
    if (fd_ >= 0) close(fd_);
  }
  int get() const { return fd_; }

 private:
  int fd_;
};

// What the tool does for one verb: open write-only without creating or
// truncating, one write() call, close. Returns 0 or the errno.
int write_verb(const std::string &path, const std::string &data) {
  OwnedFd fd(open(path.c_str(), O_WRONLY));
  if (fd.get() < 0) return errno;
  ssize_t n = write(fd.get(), data.data(), data.size());
  if (n < 0) return errno;
  return static_cast<size_t>(n) == data.size() ? 0 : EIO;
}

// Reads a file whole in chunks of `chunk` bytes; returns 0 or the errno.
int read_all(const std::string &path, std::string *out, size_t chunk = 128) {
  OwnedFd fd(open(path.c_str(), O_RDONLY));
  if (fd.get() < 0) return errno;
  out->clear();
  std::vector<char> buf(chunk);
  for (;;) {
    ssize_t n = read(fd.get(), buf.data(), buf.size());
    if (n < 0) return errno;
    if (n == 0) return 0;
    out->append(buf.data(), static_cast<size_t>(n));
  }
}

std::string read_text(const std::string &path) {
  std::string s;
  int err = read_all(path, &s);
  return err == 0 ? s : std::string("<") + strerror(err) + ">";
}

// The value of the first line of `content` that begins with `tag`.
std::string record(const std::string &content, const std::string &tag) {
  size_t pos = 0;
  while (pos < content.size()) {
    size_t end = content.find('\n', pos);
    if (end == std::string::npos) end = content.size();
    if (content.compare(pos, tag.size(), tag) == 0) return content.substr(pos + tag.size(), end - pos - tag.size());
    pos = end + 1;
  }
  return "<no " + tag + ">";
}

std::vector<std::string> dir_entries(const std::string &path) {
  std::vector<std::string> names;
  DIR *d = opendir(path.c_str());
  if (!d) return names;
  while (struct dirent *e = readdir(d))
    if (strcmp(e->d_name, ".") != 0 && strcmp(e->d_name, "..") != 0) names.push_back(e->d_name);
  closedir(d);
  return names;
}

bool mounted(const std::string &path) {
  std::string info;
  read_all("/proc/self/mountinfo", &info, 4096);
  return info.find(" " + path + " ") != std::string::npos;
}

double now_ms() {
  struct timespec ts;
  clock_gettime(CLOCK_MONOTONIC, &ts);
  return static_cast<double>(ts.tv_sec) * 1000.0 + static_cast<double>(ts.tv_nsec) / 1e6;
}

// True when vektool is built and knows the group (an unknown group exits
// 255; a known one without a command exits 1 in silence).
bool tool_has_group(SimGateway &gw, const std::string &group, std::string *why) {
  if (access(vektool_bin().c_str(), X_OK) != 0) {
    *why = "vektool is not built";
    return false;
  }
  RunResult r = gw.run({group});
  if (r.status == 1 && r.out.empty()) return true;
  *why = "vektool has no group " + group + " yet";
  return false;
}

// ---------------------------------------------------------------------------
// The journal: every write() call is one verb, in order, bytes exact.

TEST_F(SimTest, SeveralVerbsToOneFileAreJournalledInOrderAcrossRuns) {
  const std::string mon = gw().path("/proc/vek/monitor");
  EXPECT_EQ(record(read_text(mon), "u:block_conns:"), "42");
  // Three separate writers, as three runs of the tool would be.
  EXPECT_EQ(gw().sh("printf clear > \"$R/proc/vek/monitor\"").status, 0);
  std::string between = read_text(mon);
  EXPECT_EQ(write_verb(mon, "clear"), 0);
  EXPECT_EQ(gw().sh("printf 'clear' > \"$R/proc/vek/monitor\"").status, 0);
  EXPECT_EQ(gw().journal(),
            "write /proc/vek/monitor clear\n"
            "write /proc/vek/monitor clear\n"
            "write /proc/vek/monitor clear\n");
  EXPECT_EQ(between,
            "u:block_conns:0\n"
            "j:cat_conns:{\"1\":0,\"4\":0,\"9\":0}\n"
            "j:prio_conns:[0,0,0,0,0,0]\n");
}

TEST_F(SimTest, MonClearConnCountTwiceWithAGetBetween) {
  std::string why;
  if (!tool_has_group(gw(), "mon", &why)) GTEST_SKIP() << why;
  RunResult before = gw().run({"mon", "get-conn-count", "block"});
  RunResult clear1 = gw().run({"mon", "clear-conn-count"});
  RunResult get = gw().run({"mon", "get-conn-count", "block"});
  RunResult clear2 = gw().run({"mon", "clear-conn-count", "--json"});
  EXPECT_EQ(before.out, "42\n");
  EXPECT_EQ(clear1.out, "");
  EXPECT_EQ(clear1.status, 0);
  EXPECT_EQ(get.out, "0\n");
  EXPECT_EQ(clear2.out, "{\"return\":0}\n");
  EXPECT_EQ(gw().journal(), "write /proc/vek/monitor clear\nwrite /proc/vek/monitor clear\n");
}

struct EscapeCase {
  const char *name;
  std::string data;
  const char *line;
};

TEST_F(SimTest, JournalEscapesEachWriteOntoOneLine) {
  const EscapeCase cases[] = {
      {"plain", "set-entry-count 5", "write /proc/vek/kctrl set-entry-count 5"},
      {"newline", "1\n", "write /proc/vek/kctrl 1\\n"},
      {"tab and backslash", "a\tb\\c", "write /proc/vek/kctrl a\\tb\\\\c"},
      {"quotes stay", "set-para {\"enabled\":1}", "write /proc/vek/kctrl set-para {\"enabled\":1}"},
      {"binary", std::string("\x10\x00\x00\xff\r", 5), "write /proc/vek/kctrl \\x10\\x00\\x00\\xff\\x0d"},
  };
  std::vector<std::string> want;
  for (const EscapeCase &c : cases) {
    // The engine refuses all but one of these; each is journalled anyway.
    write_verb(gw().path("/proc/vek/kctrl"), c.data);
    want.push_back(c.line);
  }
  EXPECT_EQ(gw().journal_lines(), want);
}

TEST_F(SimTest, TwoWritesOnOneOpenFileAreTwoVerbs) {
  OwnedFd fd(open(gw().path("/proc/vek/qos_enabled").c_str(), O_WRONLY));
  ASSERT_GE(fd.get(), 0);
  EXPECT_EQ(write(fd.get(), "0", 1), 1);
  EXPECT_EQ(write(fd.get(), "1", 1), 1);
  EXPECT_EQ(gw().journal(), "write /proc/vek/qos_enabled 0\nwrite /proc/vek/qos_enabled 1\n");
  EXPECT_EQ(gw().cat("/proc/vek/qos_enabled"), "1\n");
}

TEST_F(SimTest, JournalClearEmptiesIt) {
  EXPECT_EQ(write_verb(gw().path("/proc/vek/monitor"), "clear"), 0);
  gw().clear_journal();
  EXPECT_EQ(gw().journal(), "");
  EXPECT_EQ(write_verb(gw().path("/proc/vek/qos_enabled"), "0"), 0);
  EXPECT_EQ(gw().journal(), "write /proc/vek/qos_enabled 0\n");
}

// ---------------------------------------------------------------------------
// Engine state: what a file reads after the verbs the tool writes.

struct RuleCase {
  const char *name;
  const char *file;                // written to
  std::vector<std::string> verbs;  // one write each, all accepted
  const char *read;                // read back
  const char *tag;                 // "" for the whole file
  std::string expected;
};

std::string queues(const std::string &up_first, const std::string &down_last) {
  std::string up = "[" + up_first, down = "[";
  for (int i = 1; i < 8; i++) up += ",[\"\",1000]";
  for (int i = 0; i < 7; i++) down += "[\"\",1000],";
  return "[" + up + "]," + down + down_last + "]]";
}

const RuleCase kRules[] = {
    {"QosOff", "/proc/vek/qos_enabled", {"0"}, "/proc/vek/qos_enabled", "", "0\n"},
    {"IamOffOn", "/proc/vek/iam_enabled", {"0", "1"}, "/proc/vek/iam_enabled", "", "1\n"},
    {"Algorithm", "/proc/vek/qos_ctrl", {"d:algorithm:2"}, "/proc/vek/qos_ctrl", "",
     "d:algorithm:2\nj:qoe:[1,1]\nj:hyqos:[0]\nd:qnum:8\n"},
    {"QoeActiveAndProfile", "/proc/vek/qoe_config", {"1 0", "3 2"}, "/proc/vek/qos_ctrl", "j:qoe:", "[0,2]"},
    {"HyqosActive", "/proc/vek/qoe_config", {"2 5"}, "/proc/vek/qos_ctrl", "j:hyqos:", "[1]"},
    {"ProfileSettings", "/proc/vek/qoe_config", {"60 2 10 20"}, "/proc/vek/qoe_config", "j:pfs:",
     "[[50,50],[50,50],[10,20],[50,50],[50,50],[50,50],[50,50],[50,50]]"},
    {"QueueRates", "/proc/vek/qoe_config", {"501 0 0 10 a", "501 1 7 100"}, "/proc/vek/qoe_config",
     "j:hyqos_rate:", queues("[\"a\",10]", "[\"\",100]")},
    {"QueueReset", "/proc/vek/qoe_config", {"501 0 0 10 a", "511 0 0"}, "/proc/vek/qoe_config",
     "j:hyqos_rate:", queues("[\"\",1000]", "[\"\",1000]")},
    {"DefaultQueues", "/proc/vek/dbdev", {"11 1 2"}, "/proc/vek/dbdev", "j:defq:", "[1,2]"},
    {"DeviceQueues", "/proc/vek/dbdev", {"10 00-11-22-33-44-55 3 4", "10 aabbccddeeff 1 1"}, "/proc/vek/dbdev",
     "j:devs:", "[[\"00:11:22:33:44:55\",3,4],[\"66:77:88:99:aa:bb\",0,0],[\"aa:bb:cc:dd:ee:ff\",1,1]]"},
    {"DeviceDelete", "/proc/vek/dbdev", {"7 66:77:88:99:AA:BB"}, "/proc/vek/dbdev", "j:devs:",
     "[[\"00:11:22:33:44:55\",0,0]]"},
    {"DevicesDeleteAll", "/proc/vek/dbdev", {"6"}, "/proc/vek/dbdev", "j:devs:", "[]"},
    {"DevicesToDefault", "/proc/vek/dbdev", {"10 00:11:22:33:44:55 3 4", "11 5 6", "18", "17"}, "/proc/vek/dbdev",
     "", "j:devs:[[\"00:11:22:33:44:55\",5,6],[\"66:77:88:99:aa:bb\",5,6]]\nj:defq:[0,0]\n"},
    {"CacheRulesAndTtl", "/proc/vek/dst_ctrl", {"set-delete-rule 1 100 60", "enable-ttl-delete 1"},
     "/proc/vek/dst_ctrl", "", "{\"et\":1,\"ecnt\":32768,\"emb\":16,\"dr\":[[0,0],[100,60]]}\n"},
    {"CacheEntries", "/proc/vek/neighbor_ctrl", {"set-entry-count 100", "set-entry-mbytes 8"},
     "/proc/vek/neighbor_ctrl", "", "{\"ecnt\":100,\"emb\":8}\n"},
    {"CloudOff", "/proc/vek/fc_ctrl", {"disable-cloud"}, "/proc/vek/fc_ctrl", "",
     "{\"ec\":0,\"ecnt\":32768,\"emb\":16,\"dr\":[]}\n"},
    {"Dscp", "/proc/vek/conn_ctx", {"set-dscp-tagging 1", "set-dscp-mapping {\"ef\":46}"}, "/proc/vek/conn_ctx", "",
     "{\"dscp\":{\"tagging\":1,\"mapping\":{\"ef\":46}},\"dr\":[]}\n"},
    {"Bandwidth", "/proc/vek/qoe_config2", {"set-para {\"enabled\":1,\"up\":5000}"}, "/proc/vek/qoe_config2", "",
     "{\"enabled\":1,\"up\":5000,\"down\":0}\n"},
    {"LimiterRules", "/proc/vek/limiter_ctrl",
     {"set 0 00:11:22:33:44:55 -1 -1 -1", "set 1 192.168.1.0/24 1 2048 4096", "set 2 42 0 1 2"},
     "/proc/vek/limiter_ctrl", "",
     "{\"s\":1,\"mr\":[{\"s\":1,\"m\":\"00:11:22:33:44:55\",\"r\":[1024,1024]}],"
     "\"ir\":[{\"s\":1,\"a\":\"192.168.1.0/24\",\"r\":[2048,4096]}],\"vr\":[{\"s\":0,\"v\":\"42\",\"r\":[1,2]}]}\n"},
    {"LimiterDelAndClear", "/proc/vek/limiter_ctrl",
     {"set 0 00:11:22:33:44:55 1 1 1", "set 2 7 1 1 1", "del 0 00-11-22-33-44-55"}, "/proc/vek/limiter_ctrl", "",
     "{\"s\":1,\"mr\":[],\"ir\":[],\"vr\":[{\"s\":1,\"v\":\"7\",\"r\":[1,1]}]}\n"},
    {"LimiterClear", "/proc/vek/limiter_ctrl", {"set 2 7 1 1 1", "clear"}, "/proc/vek/limiter_ctrl", "",
     "{\"s\":0,\"mr\":[],\"ir\":[],\"vr\":[]}\n"},
    {"GcDevice", "/proc/vek/gc",
     {"map aa:bb:cc:dd:ee:ff 4 2", "set-relative aa:bb:cc:dd:ee:ff -2", "set-duration aa:bb:cc:dd:ee:ff 30",
      "set-enable aa:bb:cc:dd:ee:ff 1"},
     "/proc/vek/gc", "",
     "{\"en\":1,\"devs\":[{\"mac\":\"aa:bb:cc:dd:ee:ff\",\"en\":1,\"map\":[[4,2]],\"abs\":-1,\"rel\":-2,"
     "\"dur\":30,\"raise\":[]}]}\n"},
    {"GcClear", "/proc/vek/gc", {"set-absolute aa:bb:cc:dd:ee:ff 2", "disable", "clear"}, "/proc/vek/gc", "",
     "{\"en\":0,\"devs\":[]}\n"},
    {"SsLists", "/proc/vek/ss",
     {"enable", "set-mode BY_DEVICE", "add-device 00:11:22:33:44:55 tv", "add-device 66:77:88:99:aa:bb",
      "disable-device 66:77:88:99:aa:bb", "add example.com 10.0.0.1"},
     "/proc/vek/ss", "",
     "{\"en\":1,\"mode\":\"by_device\",\"devs\":[{\"mac\":\"00:11:22:33:44:55\",\"name\":\"tv\",\"en\":1},"
     "{\"mac\":\"66:77:88:99:aa:bb\",\"name\":\"\",\"en\":0}],\"hosts\":[{\"host\":\"example.com\",\"addr\":"
     "\"10.0.0.1\"}]}\n"},
    {"SsClear", "/proc/vek/ss", {"add-device 00:11:22:33:44:55", "add a.b 10.0.0.1", "clear-device", "clear"},
     "/proc/vek/ss", "", "{\"en\":0,\"mode\":\"all_device\",\"devs\":[],\"hosts\":[]}\n"},
    {"Redirect", "/proc/vek/iam_ctrl", {"set-redirect 10.0.0.9", "set-redirect-ttl 60", "enable-redirect"},
     "/proc/vek/iam_ctrl", "", "{\"redirect\":1,\"ip\":\"10.0.0.9\",\"ttl\":60}\n"},
    {"RuleImport", "/proc/vek/pc_rule_import", {"0", "rule a\n", "rule b\n"}, "/proc/vek/pc_rule_export", "",
     "rule a\nrule b\n"},
    {"TzOffset", "/proc/vek/pc_tzoffset", {"+0530\n"}, "/proc/vek/pc_tzoffset", "", "+0530\n"},
    {"AppCategories", "/proc/vek/kctrl", {"reset-appid-c6y", "set-appid-c6y 80 1", "set-appid-c6y 443 1"},
     "/proc/vek/kctrl", "d:appid_c6y:", "2"},
    {"EngineSwitch", "/proc/vek/kctrl", {"disable", "disable-c6y-acc"}, "/proc/vek/kctrl", "",
     "d:enabled:0\nd:c6y_acc:0\nd:appid_c6y:8\n"},
    {"Limits", "/proc/vek/conn_max", {"1000"}, "/proc/vek/conn_max", "", "1000\n"},
    {"QosMode", "/proc/vek/qos_mode", {"3"}, "/proc/vek/qos_mode", "", "3\n"},
    {"BridgeMode", "/proc/vek/malnet_mode", {"1"}, "/proc/vek/malnet_mode", "", "s:mode:bridge\n"},
    {"PppoeFilter", "/proc/sys/net/bridge/bridge-nf-filter-pppoe-tagged", {"1"},
     "/proc/sys/net/bridge/bridge-nf-filter-pppoe-tagged", "", "1\n"},
    {"SkbMark", "/proc/vek/rtk", {"j:skb:0x200"}, "/proc/vek/rtk", "", "j:skb:0x200\n"},
};

void PrintTo(const RuleCase &c, std::ostream *os) { *os << c.name; }

class RuleTest : public SimTest, public ::testing::WithParamInterface<RuleCase> {};

TEST_P(RuleTest, ReadsBackWhatTheVerbsSet) {
  const RuleCase &c = GetParam();
  for (const std::string &v : c.verbs) EXPECT_EQ(write_verb(gw().path(c.file), v), 0) << v;
  std::string content = read_text(gw().path(c.read));
  EXPECT_EQ(*c.tag ? record(content, c.tag) : content, c.expected);
}

INSTANTIATE_TEST_SUITE_P(Engine, RuleTest, ::testing::ValuesIn(kRules),
                         [](const ::testing::TestParamInfo<RuleCase> &i) { return std::string(i.param.name); });

struct RefusedCase {
  const char *file;
  const char *verb;
  int err;
};

TEST_F(SimTest, RefusedVerbsFailAndChangeNothing) {
  const RefusedCase cases[] = {
      {"/proc/vek/qos_ctrl", "d:algorithm:3", EINVAL},
      {"/proc/vek/qoe_config", "3 8", EINVAL},
      {"/proc/vek/qoe_config", "501 0 8 10", EINVAL},  // queue 8 of 8
      {"/proc/vek/dbdev", "7 00:00:00:00:00:01", ENOENT},
      {"/proc/vek/limiter_ctrl", "set 1 192.168.1.0/33 1 1 1", EINVAL},
      {"/proc/vek/monitor", "reset", EINVAL},
      {"/proc/vek/version", "1", EINVAL},
      {"/proc/kmod_xdn/grpxdb_import", "x", EINVAL},  // no size announced
  };
  for (const RefusedCase &c : cases) {
    std::string before = gw().cat(c.file);
    EXPECT_EQ(write_verb(gw().path(c.file), c.verb), c.err) << c.file << " " << c.verb;
    EXPECT_EQ(gw().cat(c.file), before) << c.file;
  }
  EXPECT_EQ(gw().journal_lines().size(), sizeof cases / sizeof cases[0]);
}

// ---------------------------------------------------------------------------
// The database import handshake.

struct DbCase {
  const char *name;
  const char *dir;
  long boot_size;  // of the installation's file
};

const DbCase kDbs[] = {
    {"grpxdb", "/proc/kmod_xdn", 1536},
    {"sidxdb", "/proc/kmod_xdn", 1100},
    {"xr", "/proc/kmod_xapp", 300},
};

void PrintTo(const DbCase &c, std::ostream *os) { *os << c.name; }

class DbTest : public SimTest, public ::testing::WithParamInterface<DbCase> {
 protected:
  std::string file(const char *what) { return gw().path(std::string(GetParam().dir) + "/" + GetParam().name + "_" + what); }
  std::string jpath(const char *what) { return std::string(GetParam().dir) + "/" + GetParam().name + "_" + what; }
  // The clean command exactly as the tool runs it.
  void clean() {
    RunResult r = gw().sh(std::string("echo \"1\" > \"$R") + jpath("clean") + "\"");
    EXPECT_EQ(r.status, 0) << r.err;
  }
  int announce(int32_t size) { return write_verb(file("size"), std::string(reinterpret_cast<char *>(&size), 4)); }
};

TEST_P(DbTest, BootsWithTheInstallationsImage) {
  EXPECT_EQ(read_text(file("info")),
            "writable: 0\nsize: " + std::to_string(GetParam().boot_size) + "\nepoch: 1700000000\n");
}

TEST_P(DbTest, CleanSizeAndImageInstallANewImage) {
  clean();
  EXPECT_EQ(read_text(file("info")), "writable: 1\nsize: 0\nepoch: 0\n");
  EXPECT_EQ(announce(1300), 0);
  EXPECT_EQ(read_text(file("info")), "writable: 1\nsize: 1300\nepoch: 0\n");
  std::string image(1300, 'x');
  OwnedFd fd(open(file("import").c_str(), O_WRONLY));
  ASSERT_GE(fd.get(), 0);
  EXPECT_EQ(write(fd.get(), image.data(), 512), 512);
  EXPECT_EQ(write(fd.get(), image.data(), 512), 512);
  EXPECT_EQ(write(fd.get(), image.data(), 276), 276);
  EXPECT_EQ(read_text(file("info")), "writable: 0\nsize: 1300\nepoch: 1700000001\n");
  std::vector<std::string> want = {
      "write " + jpath("clean") + " 1\\n",
      "write " + jpath("size") + " \\x14\\x05\\x00\\x00",
      "write " + jpath("import") + " <512 bytes>",
      "write " + jpath("import") + " <512 bytes>",
      "write " + jpath("import") + " <276 bytes>",
  };
  EXPECT_EQ(gw().journal_lines(), want);
  // A second import gets a later epoch.
  clean();
  EXPECT_EQ(announce(3), 0);
  EXPECT_EQ(write_verb(file("import"), "abc"), 0);
  EXPECT_EQ(read_text(file("info")), "writable: 0\nsize: 3\nepoch: 1700000002\n");
}

TEST_P(DbTest, ImageLargerThanAnnouncedIsRefused) {
  clean();
  EXPECT_EQ(announce(4), 0);
  EXPECT_EQ(write_verb(file("import"), "abcde"), EINVAL);
  EXPECT_EQ(read_text(file("info")), "writable: 1\nsize: 4\nepoch: 0\n");
}

TEST_P(DbTest, BusyKernelNeverBecomesWritable) {
  gw().kernel("busy", GetParam().name);
  clean();
  EXPECT_EQ(read_text(file("info")), "writable: 0\nsize: 0\nepoch: 0\n");
  EXPECT_EQ(announce(3), EBUSY);
  gw().kernel("normal", GetParam().name);
  clean();
  EXPECT_EQ(read_text(file("info")), "writable: 1\nsize: 0\nepoch: 0\n");
}

TEST_P(DbTest, RejectingKernelDropsTheImage) {
  gw().kernel("reject");
  clean();
  EXPECT_EQ(announce(3), 0);
  EXPECT_EQ(write_verb(file("import"), "abc"), 0);
  EXPECT_EQ(read_text(file("info")), "writable: 1\nsize: 0\nepoch: 0\n");
}

TEST_P(DbTest, ImageBeforeSizeOrSizeWhileInstalledIsRefused) {
  EXPECT_EQ(announce(3), EBUSY);  // an image is installed: clean first
  clean();
  EXPECT_EQ(write_verb(file("import"), "abc"), EINVAL);
  EXPECT_EQ(write_verb(file("size"), "12"), EINVAL);  // not 4 bytes
}

INSTANTIATE_TEST_SUITE_P(Databases, DbTest, ::testing::ValuesIn(kDbs),
                         [](const ::testing::TestParamInfo<DbCase> &i) { return std::string(i.param.name); });

// ---------------------------------------------------------------------------
// The service socket.

// Asks the way the tool does: one request, up to `first_ms` for the first
// byte, then reads while bytes keep coming within `budget_ms` in all.
struct Answer {
  bool connected = false;
  std::string reply;
  bool first_in_time = false;
};

Answer ask(const std::string &path, const std::string &request, int first_ms, int budget_ms) {
  Answer a;
  OwnedFd fd(socket(AF_UNIX, SOCK_STREAM, 0));
  struct sockaddr_un addr;
  memset(&addr, 0, sizeof addr);
  addr.sun_family = AF_UNIX;
  snprintf(addr.sun_path, sizeof addr.sun_path, "%s", path.c_str());
  if (connect(fd.get(), reinterpret_cast<struct sockaddr *>(&addr), sizeof addr) != 0) return a;
  a.connected = true;
  if (send(fd.get(), request.data(), request.size(), MSG_NOSIGNAL) != static_cast<ssize_t>(request.size())) return a;
  struct pollfd p = {fd.get(), POLLIN, 0};
  if (poll(&p, 1, first_ms) != 1) return a;
  a.first_in_time = true;
  double deadline = now_ms() + budget_ms;
  char buf[1024];
  for (;;) {
    ssize_t n = recv(fd.get(), buf, sizeof buf, 0);
    if (n <= 0) break;
    a.reply.append(buf, static_cast<size_t>(n));
    int left = static_cast<int>(deadline - now_ms());
    if (left < 0) left = 0;
    if (poll(&p, 1, left) != 1) break;
  }
  return a;
}

const char *const kGetCs = "{\"v\":1,\"method\":\"get-cs\"}";

std::string sock_path(SimGateway &gw) { return gw.path("/var/run/vek/vek.sock"); }

TEST_F(SimTest, ServiceAnswersEachMethodAndJournalsTheRequest) {
  Answer cs = ask(sock_path(gw()), kGetCs, 3000, 1000);
  EXPECT_EQ(cs.reply,
            "{\"return\":0,\"result\":{\"enabled\":1,\"state\":\"connected\",\"server\":\"cloud.example.com\","
            "\"since\":1700000000}}\n");
  gw().reply("get-diag", "{\"result\":{\"x\":1}}");
  Answer diag = ask(sock_path(gw()), "{\"v\":1,\"method\":\"get-diag\"}", 3000, 1000);
  EXPECT_EQ(diag.reply, "{\"result\":{\"x\":1}}");
  Answer other = ask(sock_path(gw()), "{\"v\":1,\"method\":\"reboot\"}", 3000, 1000);
  EXPECT_EQ(other.reply, "{\"return\":1,\"detail\":\"unknown method\"}\n");
  std::vector<std::string> want = {
      "request /var/run/vek/vek.sock {\"v\":1,\"method\":\"get-cs\"}",
      "request /var/run/vek/vek.sock {\"v\":1,\"method\":\"get-diag\"}",
      "request /var/run/vek/vek.sock {\"v\":1,\"method\":\"reboot\"}",
  };
  EXPECT_EQ(gw().journal_lines(), want);
}

TEST_F(SimTest, ServiceInPiecesSendsTheWholeReply) {
  gw().reply("get-cs", std::string(100, 'a') + std::string(100, 'b'));
  gw().service("pieces");
  Answer a = ask(sock_path(gw()), kGetCs, 3000, 2000);
  EXPECT_EQ(a.reply, std::string(100, 'a') + std::string(100, 'b'));
}

TEST_F(SimTest, ServicePausingPastTheBudgetIsCutAfterTheFirstPiece) {
  gw().service("pieces", 200);
  Answer a = ask(sock_path(gw()), kGetCs, 3000, 10);
  EXPECT_EQ(a.reply, "{\"return\":0,\"res");  // the first 16 bytes
}

TEST_F(SimTest, SilentServiceHoldsTheConnectionWithoutAWord) {
  gw().service("silent");
  Answer a = ask(sock_path(gw()), kGetCs, 500, 10);
  EXPECT_TRUE(a.connected);
  EXPECT_FALSE(a.first_in_time);
  EXPECT_EQ(a.reply, "");
}

TEST_F(SimTest, SlowServiceAnswersAfterItsDelay) {
  gw().service("slow", 300);
  Answer early = ask(sock_path(gw()), kGetCs, 150, 10);
  EXPECT_FALSE(early.first_in_time);
  Answer late = ask(sock_path(gw()), kGetCs, 2000, 50);
  EXPECT_TRUE(late.first_in_time);
  EXPECT_EQ(late.reply.compare(0, 10, "{\"return\":"), 0) << late.reply;
}

TEST_F(SimTest, SlowServiceByDefaultMissesTheToolsThreeSeconds) {
  gw().service("slow");
  Answer a = ask(sock_path(gw()), kGetCs, 3000, 10);
  EXPECT_TRUE(a.connected);
  EXPECT_FALSE(a.first_in_time);
}

TEST_F(SimTest, DownServiceHasNoSocketUntilItIsBack) {
  gw().service("down");
  EXPECT_NE(access(sock_path(gw()).c_str(), F_OK), 0);
  EXPECT_FALSE(ask(sock_path(gw()), kGetCs, 100, 10).connected);
  gw().service("normal");
  EXPECT_EQ(access(sock_path(gw()).c_str(), F_OK), 0);
  EXPECT_NE(ask(sock_path(gw()), kGetCs, 3000, 100).reply, "");
}

// ---------------------------------------------------------------------------
// The programs.

struct ProgramCase {
  const char *name;
  const char *command;  // run by sh with the tool's PATH
  const char *program;
  int exit_status;
  const char *err_text;
  const char *journal;
  std::string out;
  std::string err;
};

const ProgramCase kPrograms[] = {
    {"VekctlOn", "vekctl vek on --wan ppp0 --lan br1 2>&1 > /dev/null", "vekctl", 0, "",
     "run vekctl vek on --wan ppp0 --lan br1", "", ""},
    {"VekctlFailing", "vekctl vek off", "vekctl", 3, "vekctl: engine busy", "run vekctl vek off", "",
     "vekctl: engine busy\n"},
    {"VekctlErrorToStdout", "vekctl vek on 2>&1 > /dev/null", "vekctl", 1, "vekctl: no module", "run vekctl vek on",
     "vekctl: no module\n", ""},
    {"Veklog", "\"$R/usr/vek/bin/veklog\" enable --conf \"$R/usr/vek/bin/vek.ini\" > /dev/null 2>&1", "veklog", 2, "",
     "run veklog enable --conf $R/usr/vek/bin/vek.ini", "", ""},
    {"QuotedWords", "vekctl 'a b' '' 'x\"y' 'tab\there'", "vekctl", 0, "",
     "run vekctl \"a b\" \"\" \"x\\\"y\" \"tab\\there\"", "", ""},
    {"Date", "date +%z", "date", 0, "", "run date +%z", "+0800\n", ""},
    {"Killall", "killall dt_srv", "killall", 0, "", "run killall dt_srv", "", ""},
    {"DtSrv", "\"$R/usr/vek/bin/dt_srv\"", "dt_srv", 4, "", "run dt_srv", "", ""},
};

void PrintTo(const ProgramCase &c, std::ostream *os) { *os << c.name; }

class ProgramTest : public SimTest, public ::testing::WithParamInterface<ProgramCase> {};

TEST_P(ProgramTest, JournalsArgvAndExitsAsTheScenarioSays) {
  const ProgramCase &c = GetParam();
  gw().set_exit(c.program, c.exit_status, c.err_text);
  RunResult r = gw().sh(std::string("PATH=\"$R/usr/sbin:$R/usr/sbin:$PATH\"; ") + c.command);
  EXPECT_EQ(r.status, c.exit_status);
  EXPECT_EQ(r.out, c.out);
  EXPECT_EQ(r.err, c.err);
  EXPECT_EQ(gw().journal(), std::string(c.journal) + "\n");
}

INSTANTIATE_TEST_SUITE_P(Programs, ProgramTest, ::testing::ValuesIn(kPrograms),
                         [](const ::testing::TestParamInfo<ProgramCase> &i) { return std::string(i.param.name); });

TEST_F(SimTest, VekctlStartsAndStopsTheService) {
  const std::string sbin = "PATH=\"$R/usr/sbin:$PATH\"; ";
  EXPECT_EQ(gw().sh(sbin + "vekctl vek off").status, 0);
  EXPECT_EQ(gw().sim({"proc", "list"}).out, "1 init\n812 dnsmasq\n");
  gw().missing("/proc/vek");
  EXPECT_EQ(gw().sh(sbin + "vekctl vek on --wan ppp0").status, 0);
  EXPECT_EQ(gw().sim({"proc", "list"}).out, "1 init\n812 dnsmasq\n1021 vek_service\n");
  EXPECT_EQ(read_text(gw().path("/proc/vek/malnet_up")), "ppp0\n");
  EXPECT_EQ(read_text(gw().path("/proc/vek/malnet_dw")), "br0\n");
  EXPECT_EQ(read_text(gw().path("/proc/vek/qos_enabled")), "1\n");  // the engine loaded afresh
}

TEST_F(SimTest, DtSrvRunsUntilKillall) {
  const std::string sbin = "PATH=\"$R/usr/sbin:$PATH\"; ";
  EXPECT_EQ(gw().sh("\"$R/usr/vek/bin/dt_srv\"").status, 0);
  EXPECT_EQ(read_text(gw().path("/proc/1187/comm")), "dt_srv\n");
  std::string topo = read_text(gw().path("/tmp/bs/bs.json"));
  EXPECT_EQ(topo.compare(0, 10, "{\"bands\":["), 0) << topo;
  // A topology file the scenario laid is kept.
  gw().set_file("/tmp/bs/bs.json", "{}");
  EXPECT_EQ(gw().sh("\"$R/usr/vek/bin/dt_srv\"").status, 0);
  EXPECT_EQ(read_text(gw().path("/tmp/bs/bs.json")), "{}");
  EXPECT_EQ(gw().sh(sbin + "killall dt_srv").status, 0);
  EXPECT_EQ(access(gw().path("/proc/1187").c_str(), F_OK), -1);
  gw().set_exit("killall", 1);
  gw().proc_start("dt_srv");
  EXPECT_EQ(gw().sh(sbin + "killall dt_srv").status, 1);
  EXPECT_EQ(read_text(gw().path("/proc/1187/comm")), "dt_srv\n");  // a failing killall kills nothing
}

// ---------------------------------------------------------------------------
// Files: size 0, unreadable, missing, the process entries and /proc/self/exe.

TEST_F(SimTest, ControlFilesReportSizeZeroAndReadWhole) {
  std::string text(300, 'v');
  gw().set_file("/proc/vek/qos_traffic", text);
  struct stat st;
  ASSERT_EQ(stat(gw().path("/proc/vek/qos_traffic").c_str(), &st), 0);
  EXPECT_EQ(st.st_size, 0);
  std::string got;
  EXPECT_EQ(read_all(gw().path("/proc/vek/qos_traffic"), &got, 128), 0);
  EXPECT_EQ(got, text);
}

TEST_F(SimTest, UnreadableFileRefusesReadersEvenRootButTakesVerbs) {
  ASSERT_EQ(geteuid(), 0u) << "this test shows that root is refused";
  gw().unreadable("/proc/vek/monitor");
  std::string got;
  EXPECT_EQ(read_all(gw().path("/proc/vek/monitor"), &got), EACCES);
  EXPECT_EQ(open(gw().path("/proc/vek/monitor").c_str(), O_RDWR), -1);
  EXPECT_EQ(write_verb(gw().path("/proc/vek/monitor"), "clear"), 0);
  EXPECT_EQ(gw().journal(), "write /proc/vek/monitor clear\n");
  EXPECT_EQ(record(gw().cat("/proc/vek/monitor"), "u:block_conns:"), "0");
  EXPECT_EQ(read_all(gw().path("/proc/vek/monitor"), &got), EACCES);  // still unreadable
  gw().set_file("/proc/vek/monitor", "u:block_conns:7\n");
  EXPECT_EQ(read_text(gw().path("/proc/vek/monitor")), "u:block_conns:7\n");
}

TEST_F(SimTest, MissingFileCannotBeOpenedNorCreated) {
  gw().missing("/proc/vek/monitor");
  EXPECT_EQ(write_verb(gw().path("/proc/vek/monitor"), "clear"), ENOENT);
  std::string got;
  EXPECT_EQ(read_all(gw().path("/proc/vek/monitor"), &got), ENOENT);
  EXPECT_EQ(open(gw().path("/proc/vek/monitor").c_str(), O_WRONLY | O_CREAT, 0644), -1);
  std::vector<std::string> names = dir_entries(gw().path("/proc/vek"));
  EXPECT_EQ(std::count(names.begin(), names.end(), "monitor"), 0);
  EXPECT_EQ(gw().journal(), "");
  gw().set_file("/proc/vek/monitor", "");
  EXPECT_EQ(read_text(gw().path("/proc/vek/monitor")), "");
  EXPECT_EQ(gw().sim({"file", "/proc/vek/monitor", "u:block_conns:5"}).status, 0);
  EXPECT_EQ(read_text(gw().path("/proc/vek/monitor")), "u:block_conns:5");
  gw().missing("/proc/vek");
  struct stat st;
  EXPECT_EQ(stat(gw().path("/proc/vek").c_str(), &st), -1);
}

TEST_F(SimTest, ProcListsNamesThenProcessesByPid) {
  std::vector<std::string> want = {"kmod_xapp", "kmod_xdn", "self", "sys", "vek", "1", "812", "1021"};
  EXPECT_EQ(dir_entries(gw().path("/proc")), want);
  EXPECT_EQ(read_text(gw().path("/proc/1021/comm")), "vek_service\n");
  gw().proc_start("vek_service", 77);
  gw().proc_start("a_very_long_process_name");
  want = {"kmod_xapp", "kmod_xdn", "self", "sys", "vek", "1", "77", "812", "1021", "2000"};
  EXPECT_EQ(dir_entries(gw().path("/proc")), want);
  EXPECT_EQ(read_text(gw().path("/proc/2000/comm")), "a_very_long_pro\n");
  gw().proc_stop("vek_service");
  want = {"kmod_xapp", "kmod_xdn", "self", "sys", "vek", "1", "812", "2000"};
  EXPECT_EQ(dir_entries(gw().path("/proc")), want);
}

TEST_F(SimTest, SelfExePointsAtTheInstallation) {
  char buf[256] = {};
  EXPECT_EQ(readlink(gw().path("/proc/self/exe").c_str(), buf, sizeof buf - 1), 20);
  EXPECT_STREQ(buf, "/usr/vek/bin/vektool");
  EXPECT_EQ(gw().sim({"exe", "/opt/vek/sbin/vektool"}).status, 0);
  memset(buf, 0, sizeof buf);
  readlink(gw().path("/proc/self/exe").c_str(), buf, sizeof buf - 1);
  EXPECT_STREQ(buf, "/opt/vek/sbin/vektool");
}

// ---------------------------------------------------------------------------
// The installation the tool finds in the sysroot.

TEST_F(SimTest, InstallationHasEveryKeyAndTheDataFiles) {
  std::string ini = gw().cat("/usr/vek/bin/vek.ini");
  const char *vek_keys[] = {"bin", "lib", "klib", "etc", "run", "tmp", "share", "var", "var_lib", "var_log",
                            "var_tmp", "qos", "iam", "cs", "upstream_port", "downstream_port", "hw_up_if",
                            "hw_dw_if", "max_conn_count", "max_db_entries", "qos_mode", "skbmark",
                            "max_cache_size", "server", "host", "product", "auth_id", "auth_pwd", "log_level"};
  size_t vek = ini.find("[vek]\n"), logger = ini.find("[logger]\n");
  ASSERT_NE(vek, std::string::npos);
  ASSERT_NE(logger, std::string::npos);
  for (const char *key : vek_keys) {
    size_t at = ini.find(std::string("\n") + key + " = ", vek);
    EXPECT_TRUE(at != std::string::npos && at < logger) << key;
  }
  EXPECT_NE(ini.find("\nmax_db_size = ", logger), std::string::npos);
  const struct {
    const char *path;
    off_t size;
  } files[] = {{"/usr/vek/var/vek.xdb", 1536}, {"/usr/vek/var/app.xdb", 1100}, {"/usr/vek/var/vek.xr", 300}};
  for (const auto &f : files) {
    struct stat st;
    ASSERT_EQ(stat(gw().path(f.path).c_str(), &st), 0) << f.path;
    EXPECT_EQ(st.st_size, f.size) << f.path;
  }
  EXPECT_EQ(access(gw().path("/usr/vek/var/app.id").c_str(), R_OK), 0);
  for (const char *prog : {"/usr/sbin/vekctl", "/usr/sbin/killall", "/usr/vek/bin/veklog", "/usr/vek/bin/dt_srv"})
    EXPECT_EQ(access(gw().path(prog).c_str(), X_OK), 0) << prog;
  struct stat run;
  EXPECT_TRUE(stat(gw().path("/var/run/vek").c_str(), &run) == 0 && S_ISDIR(run.st_mode));
}

TEST_F(SimTest, ResetBringsBackTheBootStateAndKeepsTheJournal) {
  EXPECT_EQ(write_verb(gw().path("/proc/vek/qos_enabled"), "0"), 0);
  gw().missing("/proc/vek/monitor");
  gw().proc_stop("vek_service");
  gw().service("down");
  EXPECT_EQ(gw().sim({"reset"}).status, 0);
  EXPECT_EQ(read_text(gw().path("/proc/vek/qos_enabled")), "1\n");
  EXPECT_EQ(record(read_text(gw().path("/proc/vek/monitor")), "u:block_conns:"), "42");
  EXPECT_EQ(read_text(gw().path("/proc/1021/comm")), "vek_service\n");
  EXPECT_EQ(gw().journal(), "write /proc/vek/qos_enabled 0\n");
  EXPECT_TRUE(ask(sock_path(gw()), kGetCs, 3000, 100).connected);
}

// ---------------------------------------------------------------------------
// Starting and stopping: no mount outlives its simulator.

TEST(SimLifecycle, StopUnmountsAndStartAgainKeepsTheState) {
  SimGateway gw;
  if (gw.cannot_mount()) GTEST_SKIP() << "FUSE cannot mount here: " << gw.error();
  ASSERT_TRUE(gw.ok()) << gw.error();
  const std::string mp = gw.root() + "/proc";
  EXPECT_TRUE(mounted(mp));
  EXPECT_EQ(write_verb(gw.path("/proc/vek/qos_enabled"), "0"), 0);
  EXPECT_EQ(gw.sim({"stop"}).status, 0);
  EXPECT_FALSE(mounted(mp));
  EXPECT_EQ(access(gw.path("/var/run/vek/vek.sock").c_str(), F_OK), -1);
  RunResult st = gw.sim({"status"});
  EXPECT_EQ(st.status, 1);
  EXPECT_EQ(st.out, "stopped\n");
  EXPECT_EQ(gw.sim({"stop"}).status, 0);  // stopping a stopped one is fine
  EXPECT_EQ(gw.sim({"start"}).status, 0);
  EXPECT_TRUE(mounted(mp));
  EXPECT_EQ(read_text(gw.path("/proc/vek/qos_enabled")), "0\n");
  RunResult twice = gw.sim({"start"});
  EXPECT_EQ(twice.status, 1);
  EXPECT_NE(twice.err.find("already runs"), std::string::npos) << twice.err;
}

TEST(SimLifecycle, EndsWithItsOwner) {
  SimGateway gw;
  if (gw.cannot_mount()) GTEST_SKIP() << "FUSE cannot mount here: " << gw.error();
  ASSERT_TRUE(gw.ok()) << gw.error();
  ASSERT_EQ(gw.sim({"stop"}).status, 0);
  pid_t owner = fork();
  if (owner == 0) {
    pause();
    _exit(0);
  }
  ASSERT_GT(owner, 0);
  ASSERT_EQ(gw.sim({"start", "--owner", std::to_string(owner)}).status, 0);
  const std::string mp = gw.root() + "/proc";
  EXPECT_TRUE(mounted(mp));
  kill(owner, SIGKILL);
  waitpid(owner, nullptr, 0);
  double deadline = now_ms() + 3000;
  while (mounted(mp) && now_ms() < deadline) usleep(5000);
  EXPECT_FALSE(mounted(mp));
  EXPECT_EQ(gw.sim({"status"}).out, "stopped\n");
}

TEST(SimLifecycle, KilledSimulatorLeavesNoMount) {
  SimGateway gw;
  if (gw.cannot_mount()) GTEST_SKIP() << "FUSE cannot mount here: " << gw.error();
  ASSERT_TRUE(gw.ok()) << gw.error();
  const std::string mp = gw.root() + "/proc";
  std::string pid;
  ASSERT_EQ(read_all(gw.root() + "/.sim/daemon.pid", &pid), 0);
  kill(atoi(pid.c_str()), SIGKILL);
  double deadline = now_ms() + 3000;
  while (mounted(mp) && now_ms() < deadline) usleep(5000);
  // auto_unmount clears it at once; stop clears what might be left.
  EXPECT_EQ(gw.sim({"stop"}).status, 0);
  EXPECT_FALSE(mounted(mp));
}

TEST(SimLifecycle, StartClearsAMountLeftOnItsMountPoint) {
  SimGateway gw;
  if (gw.cannot_mount()) GTEST_SKIP() << "FUSE cannot mount here: " << gw.error();
  ASSERT_TRUE(gw.ok()) << gw.error();
  ASSERT_EQ(gw.sim({"stop"}).status, 0);
  const std::string mp = gw.root() + "/proc";
  // What a daemon killed without auto_unmount leaves: something mounted there.
  ASSERT_EQ(mount("tmpfs", mp.c_str(), "tmpfs", 0, nullptr), 0) << strerror(errno);
  RunResult r = gw.sim({"start"});
  EXPECT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(read_text(gw.path("/proc/vek/qos_enabled")), "1\n");
}

TEST(SimLifecycle, WithoutFuseStartSaysSoAndExits77) {
  char tmpl[] = "/tmp/vek-sim-nofuse.XXXXXX";
  ASSERT_NE(mkdtemp(tmpl), nullptr);
  std::string root = tmpl;
  int out[2];
  ASSERT_EQ(pipe(out), 0);
  pid_t pid = fork();
  if (pid == 0) {
    // A private namespace where /dev/fuse is not the FUSE device.
    if (unshare(CLONE_NEWNS) != 0 || mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
        mount("/dev/null", "/dev/fuse", nullptr, MS_BIND, nullptr) != 0)
      _exit(200);
    dup2(out[1], 2);
    execl(vek_sim_bin().c_str(), "vek-sim", "--root", root.c_str(), "start", static_cast<char *>(nullptr));
    _exit(201);
  }
  close(out[1]);
  std::string err;
  char buf[512];
  ssize_t n;
  while ((n = read(out[0], buf, sizeof buf)) > 0) err.append(buf, static_cast<size_t>(n));
  close(out[0]);
  int status = 0;
  waitpid(pid, &status, 0);
  run_process({"/bin/rm", "-rf", "--one-file-system", root});
  if (WIFEXITED(status) && WEXITSTATUS(status) == 200) GTEST_SKIP() << "no private mount namespace here";
  EXPECT_EQ(WEXITSTATUS(status), 77);
  EXPECT_EQ(err.compare(0, 29 + root.size(), "vek-sim: cannot mount " + root + "/proc: "), 0) << err;
}

}  // namespace
