// Tests of vek-sim where the tool's end-to-end tests lean on it: the journal
// of verbs, the engine state they read back, the database handshake, the
// service modes, the programs, and mounts that never outlive a test.
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstring>

#include "sim_fixture.h"

namespace {

struct OwnedFd {
  int fd;
  ~OwnedFd() { if (fd >= 0) close(fd); }
};

long now_ms() {
  using namespace std::chrono;
  return static_cast<long>(duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

// What the tool does for one verb: open write-only without creating or
// truncating, one write() call, close. Returns 0 or the errno.
int write_verb(const std::string &path, const std::string &data) {
  OwnedFd fd{open(path.c_str(), O_WRONLY)};
  if (fd.fd < 0) return errno;
  ssize_t n = write(fd.fd, data.data(), data.size());
  return n < 0 ? errno : static_cast<size_t>(n) == data.size() ? 0 : EIO;
}

// The whole file read in 128-byte chunks, or "<error text>".
std::string read_text(const std::string &path) {
  OwnedFd fd{open(path.c_str(), O_RDONLY)};
  std::string s;
  char buf[128];
  ssize_t n = -1;
  while (fd.fd >= 0 && (n = read(fd.fd, buf, sizeof buf)) > 0) s.append(buf, static_cast<size_t>(n));
  return n == 0 ? s : "<" + std::string(strerror(errno)) + ">";
}

bool wait_unmounted(const std::string &mp) {
  for (long deadline = now_ms() + 10000; mounted(mp) && now_ms() < deadline;) usleep(5000);
  return !mounted(mp);
}

// ---- The journal: every write() call is one verb, in order, bytes exact.

TEST_F(SimTest, MonRunsJournalEveryClearInOrder) {
  RunResult before = gw().run({"mon", "get-conn-count", "block"});
  RunResult clear1 = gw().run({"mon", "clear-conn-count"});
  RunResult get = gw().run({"mon", "get-conn-count", "block"});
  RunResult clear2 = gw().run({"mon", "clear-conn-count", "--json"});
  // A shell's `>` truncates before it writes: only the write is a verb.
  EXPECT_EQ(gw().sh("printf clear > \"$R/proc/vek/monitor\"").status, 0);
  EXPECT_EQ(before.out + clear1.out + get.out + clear2.out, "42\n0\n{\"return\":0}\n");
  EXPECT_EQ(clear1.status + clear2.status, 0);
  EXPECT_EQ(gw().journal(),
            "write /proc/vek/monitor clear\n"
            "write /proc/vek/monitor clear\n"
            "write /proc/vek/monitor clear\n");
}

// Refused verbs change nothing and are journalled all the same.
TEST_F(SimTest, EachWriteIsOneVerbEscapedOntoOneLine) {
  const struct {
    const char *file;  // under /proc/vek
    std::string data;
    int err;
    const char *line;
  } cases[] = {
      {"kctrl", "1\n", EINVAL, "kctrl 1\\n"},
      {"kctrl", "a\tb\\c", EINVAL, "kctrl a\\tb\\\\c"},
      {"qos_ctrl", "d:algorithm:3", EINVAL, "qos_ctrl d:algorithm:3"},
      {"dbdev", "7 00:00:00:00:00:01", ENOENT, "dbdev 7 00:00:00:00:00:01"},
      {"version", "set-para {\"v\":1}", EINVAL, "version set-para {\"v\":1}"},
      {"monitor", std::string("\x10\x00\x00\xff\r", 5), EINVAL, "monitor \\x10\\x00\\x00\\xff\\x0d"},
  };
  std::string want;
  for (const auto &c : cases) {
    std::string before = gw().cat(std::string("/proc/vek/") + c.file);
    EXPECT_EQ(write_verb(gw().path(std::string("/proc/vek/") + c.file), c.data), c.err) << c.line;
    EXPECT_EQ(gw().cat(std::string("/proc/vek/") + c.file), before) << c.line;
    want += std::string("write /proc/vek/") + c.line + "\n";
  }
  OwnedFd fd{open(gw().path("/proc/vek/qos_enabled").c_str(), O_WRONLY)};
  EXPECT_EQ(write(fd.fd, "0", 1), 1);
  EXPECT_EQ(write(fd.fd, "1", 1), 1);
  EXPECT_EQ(gw().journal(), want + "write /proc/vek/qos_enabled 0\nwrite /proc/vek/qos_enabled 1\n");
  EXPECT_EQ(gw().cat("/proc/vek/qos_enabled"), "1\n");
}

// ---- Engine state: what a file reads after the verbs the tool writes.

const std::string kMonitorClear = "u:block_conns:0\nj:cat_conns:{\"1\":0,\"4\":0,\"9\":0}\nj:prio_conns:[0,0,0,0,0,0]\n";

// qoe_config with queues 0 and 1 up and queue 7 down as given, the others at boot.
std::string qoe_config(const std::string &up01, const std::string &down7) {
  std::string q = "[\"\",1000]", pfs = "j:pfs:[", up = "j:hyqos_rate:[[" + up01, down = "[";
  for (int i = 0; i < 8; i++) pfs += i ? ",[50,50]" : "[50,50]";
  for (int i = 2; i < 8; i++) up += "," + q;
  for (int i = 0; i < 7; i++) down += q + ",";
  return pfs + "]\n" + up + "]," + down + down7 + "]]\n";
}

TEST_F(SimTest, VerbsSetTheRecordsReadBack) {
  const struct {
    std::vector<std::string> verbs;  // "FILE VERB" under /proc/vek, one write each, all accepted
    const char *read;                // the file read back
    std::string expected;
  } cases[] = {
      {{"iam_enabled 0", "iam_enabled 7"}, "iam_enabled", "1\n"},
      {{"malnet_mode 1"}, "malnet_mode", "s:mode:bridge\n"},
      {{"qos_ctrl d:algorithm:2", "qoe_config 1 0", "qoe_config 3 2", "qoe_config 2 5"}, "qos_ctrl",
       "d:algorithm:2\nj:qoe:[0,2]\nj:hyqos:[1]\nd:qnum:8\n"},
      {{"qoe_config 501 0 0 10 a", "qoe_config 501 0 1 20 b", "qoe_config 511 0 0", "qoe_config 501 1 7 100"},
       "qoe_config", qoe_config("[\"\",1000],[\"b\",20]", "[\"\",100]")},
      {{"dbdev 6", "dbdev 10 00-11-22-33-44-55 3 4", "dbdev 10 AABBCCDDEEFF 1 1", "dbdev 7 aa:bb:cc:dd:ee:ff"},
       "dbdev", "j:devs:[[\"00:11:22:33:44:55\",3,4]]\nj:defq:[0,0]\n"},
      {{"dbdev 10 00:11:22:33:44:55 3 4", "dbdev 11 5 6", "dbdev 18", "dbdev 17"}, "dbdev",
       "j:devs:[[\"00:11:22:33:44:55\",5,6],[\"66:77:88:99:aa:bb\",5,6]]\nj:defq:[0,0]\n"},
      {{"limiter_ctrl set 0 00:11:22:33:44:55 -1 -1 -1", "limiter_ctrl set 1 192.168.1.0/24 1 2048 4096",
        "limiter_ctrl set 2 42 0 1 2"},
       "limiter_ctrl",
       "{\"s\":1,\"mr\":[{\"s\":1,\"m\":\"00:11:22:33:44:55\",\"r\":[1024,1024]}],"
       "\"ir\":[{\"s\":1,\"a\":\"192.168.1.0/24\",\"r\":[2048,4096]}],\"vr\":[{\"s\":0,\"v\":\"42\",\"r\":[1,2]}]}\n"},
      {{"limiter_ctrl set 0 00:11:22:33:44:55 1 1 1", "limiter_ctrl set 2 7 1 1 1",
        "limiter_ctrl del 0 00-11-22-33-44-55"},
       "limiter_ctrl", "{\"s\":1,\"mr\":[],\"ir\":[],\"vr\":[{\"s\":1,\"v\":\"7\",\"r\":[1,1]}]}\n"},
      {{"limiter_ctrl set 1 10.0.0.0/8 1 1 1", "limiter_ctrl clear"}, "limiter_ctrl", "{\"s\":0,\"mr\":[],\"ir\":[],\"vr\":[]}\n"},
      {{"dst_ctrl set-delete-rule 1 100 60", "dst_ctrl enable-ttl-delete 1"}, "dst_ctrl",
       "{\"et\":1,\"ecnt\":32768,\"emb\":16,\"dr\":[[0,0],[100,60]]}\n"},
      {{"monitor clear"}, "monitor", kMonitorClear},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.verbs.back());
    EXPECT_EQ(gw().sim({"reset"}).status, 0);
    for (const std::string &v : c.verbs) {
      size_t sp = v.find(' ');
      EXPECT_EQ(write_verb(gw().path("/proc/vek/" + v.substr(0, sp)), v.substr(sp + 1)), 0) << v;
    }
    EXPECT_EQ(read_text(gw().path(std::string("/proc/vek/") + c.read)), c.expected);
  }
}

// ---- The database import handshake, for each of the three databases.

TEST_F(SimTest, DatabaseImportHandshake) {
  // The files' gateway path without "_clean" etc., and the size of the image they boot with.
  const struct { std::string name; long boot_size; } dbs[] = {{"/proc/kmod_xdn/grpxdb", 1536}, {"/proc/kmod_xdn/sidxdb", 1100}, {"/proc/kmod_xapp/xr", 300}};
  const char *const kClean = "writable: 1\nsize: 0\nepoch: 0\n";
  // What the module reads after a clean, after a size and an image (which fail with `write_err`).
  const struct { const char *mode; int write_err; const char *after_clean, *after_image; } modes[] = {
      {"reject", 0, kClean, kClean},
      {"busy", EBUSY, "writable: 0\nsize: 0\nepoch: 0\n", "writable: 0\nsize: 0\nepoch: 0\n"},
      {"normal", 0, kClean, "writable: 0\nsize: 3\nepoch: 1700000002\n"},
  };
  for (const auto &db : dbs) {
    SCOPED_TRACE(db.name);
    auto info = [&] { return read_text(gw().path(db.name + "_info")); };
    auto clean = [&] { return gw().sh("echo \"1\" > \"$R" + db.name + "_clean\"").status; };  // as the tool does
    auto put = [&](const char *file, const std::string &data) { return write_verb(gw().path(db.name + file), data); };
    auto size = [](int32_t n) { return std::string(reinterpret_cast<char *>(&n), 4); };
    gw().clear_journal();
    EXPECT_EQ(info(), "writable: 0\nsize: " + std::to_string(db.boot_size) + "\nepoch: 1700000000\n");
    EXPECT_EQ(put("_size", size(3)), EBUSY);  // an image is installed: clean first
    EXPECT_EQ(clean(), 0);
    EXPECT_EQ(info(), kClean);
    EXPECT_EQ(put("_import", "abc"), EINVAL);  // no size announced
    EXPECT_EQ(put("_size", "12"), EINVAL);     // not 4 bytes
    EXPECT_EQ(put("_size", size(1300)), 0);
    EXPECT_EQ(info(), "writable: 1\nsize: 1300\nepoch: 0\n");
    EXPECT_EQ(put("_import", std::string(1301, 'x')), EINVAL);  // past the size
    OwnedFd fd{open(gw().path(db.name + "_import").c_str(), O_WRONLY)};
    for (size_t piece : {512, 512, 276}) EXPECT_EQ(write(fd.fd, std::string(piece, 'x').data(), piece), piece);
    EXPECT_EQ(info(), "writable: 0\nsize: 1300\nepoch: 1700000001\n");
    const std::string w = "write " + db.name;
    EXPECT_EQ(gw().journal(), w + "_size \\x03\\x00\\x00\\x00\n" + w + "_clean 1\\n\n" + w + "_import <3 bytes>\n" +
                                  w + "_size 12\n" + w + "_size \\x14\\x05\\x00\\x00\n" + w + "_import <1301 bytes>\n" +
                                  w + "_import <512 bytes>\n" + w + "_import <512 bytes>\n" + w + "_import <276 bytes>\n");
    for (const auto &m : modes) {
      SCOPED_TRACE(m.mode);
      gw().kernel(m.mode, db.name.substr(db.name.rfind('/') + 1));
      EXPECT_EQ(clean(), 0);
      EXPECT_EQ(info(), m.after_clean);
      EXPECT_EQ(put("_size", size(3)), m.write_err);
      EXPECT_EQ(put("_import", "abc"), m.write_err);
      EXPECT_EQ(info(), m.after_image);
    }
  }
}

// ---- The service socket.

// Asks the way the tool does: one request, up to `first_ms` for the first
// byte, then reads while bytes keep coming within `budget_ms` in all.
std::string ask(SimGateway &gw, const std::string &method, int first_ms = 3000, int budget_ms = 1000) {
  OwnedFd fd{socket(AF_UNIX, SOCK_STREAM, 0)};
  struct sockaddr_un addr = {};
  addr.sun_family = AF_UNIX;
  snprintf(addr.sun_path, sizeof addr.sun_path, "%s", gw.path("/var/run/vek/vek.sock").c_str());
  if (connect(fd.fd, reinterpret_cast<struct sockaddr *>(&addr), sizeof addr) != 0) return "<refused>";
  std::string request = "{\"v\":1,\"method\":\"" + method + "\"}", reply;
  struct pollfd p = {fd.fd, POLLIN, 0};
  if (send(fd.fd, request.data(), request.size(), MSG_NOSIGNAL) < 0 || poll(&p, 1, first_ms) != 1) return "<nothing>";
  char buf[1024];
  ssize_t n;
  for (long deadline = now_ms() + budget_ms; (n = recv(fd.fd, buf, sizeof buf, 0)) > 0;) {
    reply.append(buf, static_cast<size_t>(n));
    if (poll(&p, 1, static_cast<int>(deadline > now_ms() ? deadline - now_ms() : 0)) != 1) break;
  }
  return reply;
}

const std::string kCsReply =
    "{\"return\":0,\"result\":{\"enabled\":1,\"state\":\"connected\",\"server\":\"cloud.example.com\","
    "\"since\":1700000000}}\n";

TEST_F(SimTest, ServiceModesAnswerAsTheToolWillSeeThem) {
  gw().reply("get-diag", "{\"result\":{\"x\":1}}");
  const struct {
    const char *mode;
    long ms;
    const char *method;
    int first_ms, budget_ms, min_ms, max_ms;  // the last two: how long the question takes
    std::string reply;
  } cases[] = {
      {"normal", -1, "get-cs", 3000, 1000, 0, 500, kCsReply},
      {"normal", -1, "get-diag", 3000, 1000, 0, 500, "{\"result\":{\"x\":1}}"},
      {"normal", -1, "reboot", 3000, 1000, 0, 500, "{\"return\":1,\"detail\":\"unknown method\"}\n"},
      {"pieces", -1, "get-cs", 3000, 1000, 0, 500, kCsReply},
      {"pieces", 200, "get-cs", 3000, 10, 0, 500, kCsReply.substr(0, 16)},  // a pause past the budget cuts it
      {"silent", -1, "get-cs", 500, 10, 500, 1000, "<nothing>"},
      {"slow", -1, "get-cs", 5000, 100, 3000, 4500, kCsReply},  // past the tool's 3 s
      {"down", -1, "get-cs", 500, 10, 0, 100, "<refused>"},
      {"close", -1, "get-cs", 3000, 1000, 0, 500, ""},
      {"reset", -1, "get-cs", 3000, 1000, 0, 500, kCsReply.substr(0, 16)},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(std::string(c.mode) + " " + std::to_string(c.ms) + " " + c.method);
    gw().service(c.mode, c.ms);
    gw().clear_journal();
    long start = now_ms();
    EXPECT_EQ(ask(gw(), c.method, c.first_ms, c.budget_ms), c.reply);
    long took = now_ms() - start;
    EXPECT_TRUE(took >= c.min_ms && took < c.max_ms) << took << " ms";
    std::string request = std::string("request /var/run/vek/vek.sock {\"v\":1,\"method\":\"") + c.method + "\"}\n";
    EXPECT_EQ(gw().journal(), c.reply == "<refused>" ? "" : request);
  }
}

// ---- The programs.

TEST_F(SimTest, ProgramsJournalArgvAndExitAsTheScenarioSays) {
  const struct {
    const char *command;  // run by sh with the installation's sbin first on PATH
    int exit_status;
    const char *err_text, *journal, *out, *err;
  } cases[] = {
      {"vekctl vek off", 3, "vekctl: engine busy", "run vekctl vek off", "", "vekctl: engine busy\n"},
      {"vekctl vek on 2>&1 > /dev/null", 1, "vekctl: no module", "run vekctl vek on", "vekctl: no module\n", ""},
      {"vekctl 'a b' '' 'x\"y' 'tab\there'", 0, "", "run vekctl \"a b\" \"\" \"x\\\"y\" \"tab\\there\"", "", ""},
      {"\"$R/usr/vek/bin/veklog\" enable --conf \"$R/usr/vek/bin/vek.ini\"", 2, "",
       "run veklog enable --conf $R/usr/vek/bin/vek.ini", "", ""},
      {"date +%z", 0, "", "run date +%z", "+0800\n", ""},
      {"\"$R/usr/vek/bin/dt_srv\"", 4, "", "run dt_srv", "", ""},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.command);
    const std::string journal = c.journal;
    gw().clear_journal();
    gw().set_exit(journal.substr(4, journal.find(' ', 4) - 4), c.exit_status, c.err_text);
    RunResult r = gw().sh(std::string("PATH=\"$R/usr/sbin:$PATH\"; ") + c.command);
    EXPECT_EQ(r.status, c.exit_status);
    EXPECT_EQ(r.out, c.out);
    EXPECT_EQ(r.err, c.err);
    EXPECT_EQ(gw().journal(), journal + "\n");
  }
}

TEST_F(SimTest, ProgramsStartAndStopProcesses) {
  const std::string sbin = "PATH=\"$R/usr/sbin:$PATH\"; ";
  EXPECT_EQ(gw().sh(sbin + "vekctl vek off").status, 0);
  EXPECT_EQ(gw().sim({"proc", "list"}).out, "1 init\n812 dnsmasq\n");
  gw().missing("/proc/vek");
  EXPECT_EQ(access(gw().path("/proc/vek").c_str(), F_OK), -1);
  EXPECT_EQ(gw().sh(sbin + "vekctl vek on --wan ppp0").status, 0);
  EXPECT_EQ(read_text(gw().path("/proc/1021/comm")), "vek_service\n");
  EXPECT_EQ(read_text(gw().path("/proc/vek/malnet_up")) + read_text(gw().path("/proc/vek/malnet_dw")), "ppp0\nbr0\n");
  EXPECT_EQ(gw().sh("\"$R/usr/vek/bin/dt_srv\"").status, 0);
  gw().set_exit("killall", 1);
  EXPECT_EQ(gw().sh(sbin + "killall dt_srv").status, 1);
  EXPECT_EQ(read_text(gw().path("/proc/1187/comm")), "dt_srv\n");  // a failing program does nothing
  gw().set_exit("killall", 0);
  EXPECT_EQ(gw().sh(sbin + "killall dt_srv").status, 0);
  EXPECT_EQ(access(gw().path("/proc/1187").c_str(), F_OK), -1);
}

// ---- Files: size 0, unreadable, missing, the process entries and /proc/self/exe.

TEST_F(SimTest, UnreadableFileRefusesReadersEvenRootButTakesVerbs) {
  ASSERT_EQ(geteuid(), 0u) << "this test shows that root is refused";
  const std::string mon = gw().path("/proc/vek/monitor");
  gw().unreadable("/proc/vek/monitor");
  EXPECT_EQ(read_text(mon), "<" + std::string(strerror(EACCES)) + ">");
  EXPECT_EQ(write_verb(mon, "clear"), 0);
  EXPECT_EQ(gw().cat("/proc/vek/monitor"), kMonitorClear);
  EXPECT_EQ(read_text(mon), "<" + std::string(strerror(EACCES)) + ">");  // still unreadable
  // Laying a content makes it readable again; like procfs it reports size 0.
  gw().set_file("/proc/vek/monitor", std::string(300, 'v'));
  EXPECT_EQ(read_text(mon), std::string(300, 'v'));
  struct stat st;
  EXPECT_EQ(stat(mon.c_str(), &st), 0);
  EXPECT_EQ(st.st_size, 0);
}

TEST_F(SimTest, MissingFileCannotBeOpenedNorCreated) {
  const std::string mon = gw().path("/proc/vek/monitor");
  gw().missing("/proc/vek/monitor");
  EXPECT_EQ(write_verb(mon, "clear"), ENOENT);
  EXPECT_EQ(read_text(mon), "<" + std::string(strerror(ENOENT)) + ">");
  EXPECT_EQ(open(mon.c_str(), O_WRONLY | O_CREAT, 0644), -1);
  EXPECT_EQ(gw().journal(), "");
}

TEST_F(SimTest, ProcListsNamesThenProcessesByPidAndSelfExe) {
  gw().proc_start("vek_service", 77);
  gw().proc_start("a_very_long_process_name");
  gw().proc_stop("dnsmasq");
  EXPECT_EQ(gw().sh("ls -U \"$R/proc\" | tr '\\n' ' '").out, "kmod_xapp kmod_xdn self sys vek 1 77 1021 2000 ");
  EXPECT_EQ(read_text(gw().path("/proc/2000/comm")) + read_text(gw().path("/proc/77/comm")),
            "a_very_long_pro\nvek_service\n");
  char buf[64] = {};
  EXPECT_EQ(readlink(gw().path("/proc/self/exe").c_str(), buf, sizeof buf - 1), 20);
  EXPECT_STREQ(buf, "/usr/vek/bin/vektool");
  EXPECT_EQ(gw().sim({"exe", "/opt/vek/sbin/vektool"}).status, 0);
  EXPECT_EQ(readlink(gw().path("/proc/self/exe").c_str(), buf, sizeof buf - 1), 21);
  EXPECT_STREQ(buf, "/opt/vek/sbin/vektool");
}

// ---- Starting and stopping: no mount outlives its simulator.

TEST(SimLifecycle, EndsWithItsOwnerOrWhenKilledAndStartClearsAMountLeft) {
  SimGateway gw;
  if (gw.cannot_mount()) GTEST_SKIP() << "FUSE cannot mount here: " << gw.error();
  ASSERT_TRUE(gw.ok()) << gw.error();
  const std::string mp = gw.root() + "/proc";
  ASSERT_EQ(gw.sim({"stop"}).status, 0);
  pid_t owner = fork();
  if (owner == 0) {
    pause();
    _exit(0);
  }
  ASSERT_EQ(gw.sim({"start", "--owner", std::to_string(owner)}).status, 0);
  EXPECT_TRUE(mounted(mp));
  kill(owner, SIGKILL);
  waitpid(owner, nullptr, 0);
  EXPECT_TRUE(wait_unmounted(mp));
  // The daemon unmounts first and exits a moment later.
  std::string status = gw.sim({"status"}).out;
  for (long deadline = now_ms() + 10000; status != "stopped\n" && now_ms() < deadline;) {
    usleep(5000);
    status = gw.sim({"status"}).out;
  }
  EXPECT_EQ(status, "stopped\n");
  ASSERT_EQ(gw.sim({"start"}).status, 0);
  kill(atoi(read_text(gw.root() + "/.sim/daemon.pid").c_str()), SIGKILL);
  EXPECT_TRUE(wait_unmounted(mp));  // auto_unmount
  EXPECT_EQ(gw.sim({"stop"}).status, 0);
  // What a daemon killed without auto_unmount leaves: something mounted there.
  ASSERT_EQ(mount("tmpfs", mp.c_str(), "tmpfs", 0, nullptr), 0) << strerror(errno);
  RunResult r = gw.sim({"start"});
  EXPECT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(read_text(gw.path("/proc/vek/qos_enabled")), "1\n");
}

TEST(SimLifecycle, WithoutFuseStartExits77AndTheFixtureSaysItCannotMount) {
  // In a mount namespace of this test alone, /dev/fuse is not the FUSE device.
  if (!enter_private_mount_namespace() || mount("/dev/null", "/dev/fuse", nullptr, MS_BIND, nullptr) != 0)
    GTEST_SKIP() << "cannot hide /dev/fuse here";
  {
    SimGateway gw;
    EXPECT_FALSE(gw.ok());
    EXPECT_TRUE(gw.cannot_mount());
    EXPECT_EQ(gw.error().rfind("vek-sim start exited 77: vek-sim: cannot mount " + gw.root() + "/proc: ", 0), 0)
        << gw.error();
  }
  umount("/dev/fuse");
}

}  // namespace
