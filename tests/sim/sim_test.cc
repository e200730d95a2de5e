// What the transcripts rely on in vek-sim but cannot see: every write() is
// its own journal line, refused verbs change nothing, imports are refused out
// of order, no mount outlives its simulator, and start exits 77 without FUSE.
// Each test starts its own simulator in a fresh sysroot; where FUSE cannot
// mount, it is skipped, never passed.
#include <fcntl.h>
#include <sched.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <fstream>
#include <sstream>
#include <string>

namespace {

std::string slurp(const std::string &path) {
  std::ifstream in(path);
  std::ostringstream out;
  out << in.rdbuf();
  return out.str();
}

bool mounted(const std::string &mount_point) {
  return slurp("/proc/self/mountinfo").find(" " + mount_point + " ") != std::string::npos;
}

bool unmounted_soon(const std::string &mount_point) {
  for (int i = 0; i < 2000 && mounted(mount_point); i++) usleep(5000);
  return !mounted(mount_point);
}

// "<output> [status]": standard output and error go to a file, so a daemon
// that keeps them cannot hold the run. `sim` is vek-sim on the sysroot $R.
std::string sh(const std::string &root, const std::string &command) {
  static int calls = 0;
  const std::string out = root + ".out" + std::to_string(++calls);
  int status = system(("R='" + root + "'; sim() { '" VEK_SIM_BIN "' --root \"$R\" \"$@\"; }; { " + command + "; } >'" +
                       out + "' 2>&1 </dev/null").c_str());
  std::string text = slurp(out);
  unlink(out.c_str());
  return text + " [" + std::to_string(WIFEXITED(status) ? WEXITSTATUS(status) : -1) + "]";
}

class SimTest : public ::testing::Test {
 protected:
  void SetUp() override {
    char dir[] = "/tmp/vek-sim-test.XXXXXX";
    ASSERT_NE(mkdtemp(dir), nullptr);
    root_ = dir;
    std::string started = sh("sim start --owner " + std::to_string(getpid()));
    if (started.find("[77]") != std::string::npos) GTEST_SKIP() << "FUSE cannot mount here: " << started;
    ASSERT_EQ(started, " [0]");
  }
  void TearDown() override {
    EXPECT_EQ(sh("sim stop"), " [0]");
    if (mounted(root_ + "/proc")) ADD_FAILURE() << "a mount is left on " << root_;  // never remove a tree with one
    else sh("rm -rf --one-file-system \"$R\"");
  }
  std::string sh(const std::string &command) { return ::sh(root_, command); }
  // One verb as the tool writes it: one write() on a file opened write-only. 0 or the errno.
  int write_verb(const std::string &path, const std::string &data) {
    int fd = open((root_ + path).c_str(), O_WRONLY);
    if (fd < 0) return errno;
    int err = write(fd, data.data(), data.size()) < 0 ? errno : 0;
    close(fd);
    return err;
  }
  std::string root_;
};

// Each write() is one line: printable bytes as they are, "\\", "\n", "\t",
// other bytes "\xHH"; refused verbs are journalled and change nothing.
TEST_F(SimTest, JournalHasOneEscapedLinePerWrite) {
  const struct { const char *file; std::string data; int err; } writes[] = {
      {"/proc/vek/kctrl", "a\tb\\c\n", EINVAL},
      {"/proc/vek/dbdev", "7 00:00:00:00:00:01", ENOENT},
      {"/proc/vek/monitor", std::string("\x10\x00\xff\r", 4), EINVAL}};
  for (const auto &c : writes) {
    std::string before = sh(std::string("sim cat ") + c.file);
    EXPECT_EQ(write_verb(c.file, c.data), c.err) << c.file;
    EXPECT_EQ(sh(std::string("sim cat ") + c.file), before) << c.file;
  }
  int fd = open((root_ + "/proc/vek/qos_enabled").c_str(), O_WRONLY);
  EXPECT_EQ(write(fd, "0", 1) + write(fd, "1", 1), 2);
  close(fd);
  EXPECT_EQ(sh("sim journal"),
            "write /proc/vek/kctrl a\\tb\\\\c\\n\n"
            "write /proc/vek/dbdev 7 00:00:00:00:00:01\n"
            "write /proc/vek/monitor \\x10\\x00\\xff\\x0d\n"
            "write /proc/vek/qos_enabled 0\n"
            "write /proc/vek/qos_enabled 1\n [0]");
}

// The module takes a size only after a clean, only as 4 bytes, and an image
// only within it; the image stream is journalled as byte counts.
TEST_F(SimTest, ImportHandshakeRefusesOutOfOrder) {
  const std::string db = "/proc/kmod_xdn/grpxdb";
  const int32_t three = 3, five = 5;
  EXPECT_EQ(write_verb(db + "_size", std::string(reinterpret_cast<const char *>(&three), 4)), EBUSY);
  EXPECT_EQ(sh("echo 1 > \"$R" + db + "_clean\"; sim cat " + db + "_info"), "writable: 1\nsize: 0\nepoch: 0\n [0]");
  EXPECT_EQ(write_verb(db + "_import", "abc"), EINVAL);
  EXPECT_EQ(write_verb(db + "_size", "12"), EINVAL);
  EXPECT_EQ(write_verb(db + "_size", std::string(reinterpret_cast<const char *>(&five), 4)), 0);
  EXPECT_EQ(write_verb(db + "_import", "abcdef"), EINVAL);
  EXPECT_EQ(write_verb(db + "_import", "abcde"), 0);
  const std::string w = "write " + db;
  EXPECT_EQ(sh("sim cat " + db + "_info; sim journal"),
            "writable: 0\nsize: 5\nepoch: 1700000001\n" + w + "_size \\x03\\x00\\x00\\x00\n" + w + "_clean 1\\n\n" + w +
                "_import <3 bytes>\n" + w + "_size 12\n" + w + "_size \\x05\\x00\\x00\\x00\n" + w + "_import <6 bytes>\n" +
                w + "_import <5 bytes>\n [0]");
}

// The mount ends with its owner and with a killed daemon; start clears a mount a daemon left.
TEST_F(SimTest, NoMountOutlivesItsSimulator) {
  const std::string mp = root_ + "/proc";
  ASSERT_EQ(sh("sim stop"), " [0]");
  pid_t owner = fork();
  if (owner == 0) pause(), _exit(0);
  ASSERT_EQ(sh("sim start --owner " + std::to_string(owner)), " [0]");
  EXPECT_TRUE(mounted(mp));
  kill(owner, SIGKILL);
  waitpid(owner, nullptr, 0);
  EXPECT_TRUE(unmounted_soon(mp));
  for (int i = 0; i < 2000 && sh("sim status") != "stopped\n [1]"; i++) usleep(5000);  // it exits after unmounting
  ASSERT_EQ(sh("sim start; kill -KILL $(cat \"$R/.sim/daemon.pid\")"), " [0]");
  EXPECT_TRUE(unmounted_soon(mp));  // auto_unmount
  EXPECT_EQ(sh("sim stop"), " [0]");
  ASSERT_EQ(mount("tmpfs", mp.c_str(), "tmpfs", 0, nullptr), 0) << strerror(errno);
  EXPECT_EQ(sh("sim start && sim cat /proc/vek/qos_enabled"), "1\n [0]");
}

// Where /dev/fuse is no FUSE device, start exits 77 with its reason.
TEST(SimStart, WithoutFuseExits77) {
  if (unshare(CLONE_NEWNS) != 0 || mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
      mount("/dev/null", "/dev/fuse", nullptr, MS_BIND, nullptr) != 0)
    GTEST_SKIP() << "cannot hide /dev/fuse here";
  char dir[] = "/tmp/vek-sim-test.XXXXXX";
  ASSERT_NE(mkdtemp(dir), nullptr);
  std::string started = sh(dir, "sim start");
  EXPECT_EQ(started.rfind("vek-sim: cannot mount " + std::string(dir) + "/proc: ", 0), 0u) << started;
  EXPECT_EQ(started.substr(started.size() - 5), " [77]");
  umount("/dev/fuse");
  sh(dir, "rm -rf --one-file-system \"$R\"");
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
