// Tests of vek-sim where every transcript leans on it and none pins it: the
// journal's format, the import handshake's refusals, the service modes, and
// mounts that never outlive their simulator. Each test starts its own in a
// fresh sysroot; where FUSE cannot mount, it is skipped, never passed.
#include <fcntl.h>
#include <poll.h>
#include <sched.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <string>
#include <vector>

namespace {

struct Outcome {
  std::string out, err;
  int status;
};

std::string slurp(FILE *f) {
  std::string s;
  rewind(f);
  for (int c; (c = fgetc(f)) != EOF;) s += static_cast<char>(c);
  return s;
}

// Standard streams are unlinked temporary files: a detaching daemon that keeps them cannot hold the run.
Outcome run(std::vector<std::string> argv, const std::string &input = "") {
  FILE *io[3] = {tmpfile(), tmpfile(), tmpfile()};
  fputs(input.c_str(), io[0]);
  fflush(io[0]);
  rewind(io[0]);
  std::vector<char *> words;
  for (std::string &word : argv) words.push_back(&word[0]);
  words.push_back(nullptr);
  pid_t pid = fork();
  if (pid == 0) {
    for (int i = 0; i < 3; i++) dup2(fileno(io[i]), i);
    execv(words[0], words.data());
    _exit(127);
  }
  int status = 0;
  waitpid(pid, &status, 0);
  Outcome r{slurp(io[1]), slurp(io[2]), WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status)};
  for (FILE *f : io) fclose(f);
  return r;
}

bool mounted(const std::string &mount_point) {
  FILE *f = fopen("/proc/self/mountinfo", "re");
  bool found = f && slurp(f).find(" " + mount_point + " ") != std::string::npos;
  if (f) fclose(f);
  return found;
}

bool unmounted_soon(const std::string &mount_point) {
  for (int i = 0; i < 2000 && mounted(mount_point); i++) usleep(5000);
  return !mounted(mount_point);
}

class SimTest : public ::testing::Test {
 protected:
  void SetUp() override {
    char dir[] = "/tmp/vek-sim-test.XXXXXX";
    ASSERT_NE(mkdtemp(dir), nullptr);
    root_ = dir;
    Outcome r = sim({"start", "--owner", std::to_string(getpid())});
    if (r.status == 77) GTEST_SKIP() << "FUSE cannot mount here: " << r.err;
    ASSERT_EQ(r.status, 0) << r.err;
  }
  void TearDown() override {
    EXPECT_EQ(sim({"stop"}).status, 0);
    if (mounted(root_ + "/proc")) ADD_FAILURE() << "a mount is left on " << root_;  // never remove a tree with one
    else run({"/bin/rm", "-rf", "--one-file-system", root_});
  }
  Outcome sim(std::vector<std::string> args, const std::string &input = "") {
    args.insert(args.begin(), {VEK_SIM_BIN, "--root", root_});
    return run(args, input);
  }
  Outcome sh(const std::string &command) {
    return run({"/bin/sh", "-c", "R='" + root_ + "'; PATH=\"$R/usr/sbin:$PATH\"; " + command});
  }
  std::string journal() { return sim({"journal"}).out; }
  // One verb as the tool writes it: one write() on a file opened write-only. 0 or the errno.
  int write_verb(const std::string &path, const std::string &data) {
    int fd = open((root_ + path).c_str(), O_WRONLY);
    if (fd < 0) return errno;
    ssize_t n = write(fd, data.data(), data.size());
    int err = n < 0 ? errno : 0;
    close(fd);
    return err;
  }
  std::string root_;
};

// Each write() is one line: printable bytes as they are, "\\", "\n", "\t",
// other bytes "\xHH"; refused verbs are journalled and change nothing.
// Program runs quote odd words and write the sysroot as $R.
TEST_F(SimTest, JournalHasOneEscapedLinePerEvent) {
  const struct { const char *file; std::string data; int err; } writes[] = {
      {"/proc/vek/kctrl", "a\tb\\c\n", EINVAL},
      {"/proc/vek/dbdev", "7 00:00:00:00:00:01", ENOENT},
      {"/proc/vek/monitor", std::string("\x10\x00\xff\r", 4), EINVAL}};
  for (const auto &c : writes) {
    std::string before = sim({"cat", c.file}).out;
    EXPECT_EQ(write_verb(c.file, c.data), c.err) << c.file;
    EXPECT_EQ(sim({"cat", c.file}).out, before) << c.file;
  }
  int fd = open((root_ + "/proc/vek/qos_enabled").c_str(), O_WRONLY);
  EXPECT_EQ(write(fd, "0", 1) + write(fd, "1", 1), 2);
  close(fd);
  EXPECT_EQ(sh("printf clear > \"$R/proc/vek/monitor\"").status, 0);  // a shell's truncation is no verb
  EXPECT_EQ(sim({"exit", "vekctl", "3", "vekctl: engine busy"}).status, 0);
  Outcome vekctl = sh("vekctl 'a b' '' 'x\"y' 'tab\there'");
  EXPECT_EQ(std::to_string(vekctl.status) + " " + vekctl.err, "3 vekctl: engine busy\n");
  EXPECT_EQ(sh("\"$R/usr/vek/bin/veklog\" enable --conf \"$R/usr/vek/bin/vek.ini\"").status, 0);
  EXPECT_EQ(journal(),
            "write /proc/vek/kctrl a\\tb\\\\c\\n\n"
            "write /proc/vek/dbdev 7 00:00:00:00:00:01\n"
            "write /proc/vek/monitor \\x10\\x00\\xff\\x0d\n"
            "write /proc/vek/qos_enabled 0\n"
            "write /proc/vek/qos_enabled 1\n"
            "write /proc/vek/monitor clear\n"
            "run vekctl \"a b\" \"\" \"x\\\"y\" \"tab\\there\"\n"
            "run veklog enable --conf $R/usr/vek/bin/vek.ini\n");
}

// The module takes a size only after a clean, only as 4 bytes, and an image
// only within it; the image stream is journalled as byte counts.
TEST_F(SimTest, ImportHandshakeRefusesOutOfOrder) {
  const std::string db = "/proc/kmod_xdn/grpxdb", w = "write " + db;
  auto info = [&] { return sim({"cat", db + "_info"}).out; };
  auto size = [](int32_t n) { return std::string(reinterpret_cast<char *>(&n), 4); };
  EXPECT_EQ(info(), "writable: 0\nsize: 1536\nepoch: 1700000000\n");
  EXPECT_EQ(write_verb(db + "_size", size(3)), EBUSY);
  EXPECT_EQ(sh("echo \"1\" > \"$R" + db + "_clean\"").status, 0);
  EXPECT_EQ(info(), "writable: 1\nsize: 0\nepoch: 0\n");
  EXPECT_EQ(write_verb(db + "_import", "abc"), EINVAL);
  EXPECT_EQ(write_verb(db + "_size", "12"), EINVAL);
  EXPECT_EQ(write_verb(db + "_size", size(5)), 0);
  EXPECT_EQ(write_verb(db + "_import", "abcdef"), EINVAL);
  EXPECT_EQ(write_verb(db + "_import", "abcde"), 0);
  EXPECT_EQ(info(), "writable: 0\nsize: 5\nepoch: 1700000001\n");
  EXPECT_EQ(journal(), w + "_size \\x03\\x00\\x00\\x00\n" + w + "_clean 1\\n\n" + w + "_import <3 bytes>\n" + w +
                           "_size 12\n" + w + "_size \\x05\\x00\\x00\\x00\n" + w + "_import <6 bytes>\n" + w +
                           "_import <5 bytes>\n");
}

// Asks as the tool does: one request, up to `first_ms` for the first byte,
// then reads while bytes keep coming within 10 ms in all.
std::string ask(const std::string &socket_path, int first_ms) {
  int fd = socket(AF_UNIX, SOCK_STREAM, 0);
  struct sockaddr_un addr = {};
  addr.sun_family = AF_UNIX;
  snprintf(addr.sun_path, sizeof addr.sun_path, "%s", socket_path.c_str());
  const std::string request = "{\"v\":1,\"method\":\"get-cs\"}";
  struct pollfd p = {fd, POLLIN, 0};
  std::string reply = connect(fd, reinterpret_cast<struct sockaddr *>(&addr), sizeof addr) != 0 ? "<refused>"
                      : send(fd, request.data(), request.size(), MSG_NOSIGNAL) < 1 || poll(&p, 1, first_ms) != 1 ? "<nothing>" : "";
  auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(10);
  char buf[1024];
  for (ssize_t n; reply.empty() || reply[0] != '<';) {
    if ((n = recv(fd, buf, sizeof buf, 0)) < 1) break;
    reply.append(buf, static_cast<size_t>(n));
    auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now()).count();
    if (poll(&p, 1, left > 0 ? static_cast<int>(left) : 0) != 1) break;
  }
  close(fd);
  return reply;
}

TEST_F(SimTest, ServiceModesAnswerAsTheToolWillSeeThem) {
  const std::string reply = "{\"return\":0,\"result\":{\"enabled\":1,\"state\":\"connected\",\"server\":"
                            "\"cloud.example.com\",\"since\":1700000000}}\n";
  const struct { const char *mode, *ms; int first_ms; std::string reply; } cases[] = {
      {"normal", "", 3000, reply},
      {"pieces", "", 3000, reply},
      {"pieces", "200", 3000, reply.substr(0, 16)},  // a pause past the budget cuts it
      {"silent", "", 300, "<nothing>"},
      {"close", "", 3000, ""},
      {"reset", "", 3000, reply.substr(0, 16)},
      {"down", "", 300, "<refused>"}};
  for (const auto &c : cases) {
    SCOPED_TRACE(std::string(c.mode) + " " + c.ms);
    EXPECT_EQ(sim(c.ms[0] ? std::vector<std::string>{"service", c.mode, c.ms} : std::vector<std::string>{"service", c.mode}).status, 0);
    EXPECT_EQ(sim({"journal", "--clear"}).status, 0);
    EXPECT_EQ(ask(root_ + "/var/run/vek/vek.sock", c.first_ms), c.reply);
    EXPECT_EQ(journal(), c.reply == "<refused>" ? "" : "request /var/run/vek/vek.sock {\"v\":1,\"method\":\"get-cs\"}\n");
  }
}

// The mount ends with its owner and with a killed daemon; start clears a mount a daemon left.
TEST_F(SimTest, NoMountOutlivesItsSimulator) {
  const std::string mp = root_ + "/proc";
  ASSERT_EQ(sim({"stop"}).status, 0);
  pid_t owner = fork();
  if (owner == 0) {
    pause();
    _exit(0);
  }
  ASSERT_EQ(sim({"start", "--owner", std::to_string(owner)}).status, 0);
  EXPECT_TRUE(mounted(mp));
  kill(owner, SIGKILL);
  waitpid(owner, nullptr, 0);
  EXPECT_TRUE(unmounted_soon(mp));
  for (int i = 0; i < 2000 && sim({"status"}).out != "stopped\n"; i++) usleep(5000);  // it exits after unmounting
  ASSERT_EQ(sim({"start"}).status, 0);
  FILE *pid_file = fopen((root_ + "/.sim/daemon.pid").c_str(), "r");
  ASSERT_NE(pid_file, nullptr);
  kill(atoi(slurp(pid_file).c_str()), SIGKILL);
  fclose(pid_file);
  EXPECT_TRUE(unmounted_soon(mp));  // auto_unmount
  EXPECT_EQ(sim({"stop"}).status, 0);
  ASSERT_EQ(mount("tmpfs", mp.c_str(), "tmpfs", 0, nullptr), 0) << strerror(errno);
  Outcome r = sim({"start"});
  EXPECT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(sim({"cat", "/proc/vek/qos_enabled"}).out, "1\n");
}

// Where /dev/fuse is no FUSE device, start exits 77 with its reason.
TEST(SimStart, WithoutFuseExits77) {
  if (unshare(CLONE_NEWNS) != 0 || mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
      mount("/dev/null", "/dev/fuse", nullptr, MS_BIND, nullptr) != 0)
    GTEST_SKIP() << "cannot hide /dev/fuse here";
  char dir[] = "/tmp/vek-sim-test.XXXXXX";
  ASSERT_NE(mkdtemp(dir), nullptr);
  Outcome r = run({VEK_SIM_BIN, "--root", dir, "start"});
  EXPECT_EQ(r.status, 77);
  EXPECT_EQ(r.err.rfind("vek-sim: cannot mount " + std::string(dir) + "/proc: ", 0), 0u) << r.err;
  umount("/dev/fuse");
  run({"/bin/rm", "-rf", "--one-file-system", dir});
}

}  // namespace

// In a private mount namespace where it may, no FUSE mount outlives the run;
// the simulator's auto_unmount and owner watch cover the rest.
int main(int argc, char **argv) {
  ::testing::InitGoogleTest(&argc, argv);
  if (unshare(CLONE_NEWNS) != 0 || mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
    fprintf(stderr, "note: no private mount namespace; relying on the simulator's auto_unmount\n");
  return RUN_ALL_TESTS();
}
