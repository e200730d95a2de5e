// What the transcripts rely on in vek-sim but cannot see: every write() is
// its own journal line, refused verbs change nothing, no mount outlives its
// simulator, and start exits 77 without FUSE.
// Each test starts its own simulator in a fresh sysroot; where FUSE cannot
// mount, it is skipped, never passed.
#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <fstream>
#include <iterator>
#include <string>

namespace {

// "<output> [status]" of a shell command on the sysroot $R, where `sim` is
// vek-sim, `mounted` tells whether $R/proc is, and `gone` waits until it is
// not. Its output goes to a file, so a daemon that keeps it cannot hold the run.
std::string sh(const std::string &root, const std::string &command) {
  static int calls = 0;
  const std::string file = root + ".out" + std::to_string(++calls);
  const std::string prelude = "R='" + root + "'; sim() { '" VEK_SIM_BIN "' --root \"$R\" \"$@\"; }; "
      "mounted() { grep -q \" $R/proc \" /proc/self/mountinfo; }; "
      "gone() { for i in $(seq 400); do mounted || [ \"$(sim status)\" != stopped ] || return 0; sleep 0.025; done; return 1; }; ";
  int status = system((prelude + "{ " + command + "; } >'" + file + "' 2>&1 </dev/null").c_str());
  std::ifstream in(file);
  std::string out{std::istreambuf_iterator<char>(in), {}};
  unlink(file.c_str());
  return out + " [" + std::to_string(WIFEXITED(status) ? WEXITSTATUS(status) : -1) + "]";
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
  void TearDown() override {  // never remove a tree with a mount on it
    EXPECT_EQ(sh("sim stop; mounted || rm -rf --one-file-system \"$R\""), " [0]") << "a mount is left on " << root_;
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
// other bytes "\xHH"; a refused verb is journalled and changes nothing.
TEST_F(SimTest, JournalHasOneEscapedLinePerWrite) {
  const std::string before = sh("sim cat /proc/vek/kctrl");
  EXPECT_EQ(write_verb("/proc/vek/kctrl", std::string("a\tb\\c\n\x10\x00\xff\r", 10)), EINVAL);
  EXPECT_EQ(sh("sim cat /proc/vek/kctrl"), before);
  int fd = open((root_ + "/proc/vek/qos_enabled").c_str(), O_WRONLY);
  EXPECT_EQ(write(fd, "0", 1) + write(fd, "1", 1), 2);
  close(fd);
  EXPECT_EQ(sh("sim journal"), "write /proc/vek/kctrl a\\tb\\\\c\\n\\x10\\x00\\xff\\x0d\n"
                               "write /proc/vek/qos_enabled 0\nwrite /proc/vek/qos_enabled 1\n [0]");
}

// The mount ends with its owner and with a killed daemon; start clears a mount a daemon left.
TEST_F(SimTest, NoMountOutlivesItsSimulator) {
  EXPECT_EQ(sh("sim stop; sleep 60 & sim start --owner $!; mounted && echo mounted; kill -KILL $!; gone && echo owner gone"),
            "mounted\nowner gone\n [0]");
  EXPECT_EQ(sh("sim start; kill -KILL $(cat \"$R/.sim/daemon.pid\"); gone && echo daemon gone"), "daemon gone\n [0]");
  EXPECT_EQ(sh("sim stop; mount -t tmpfs tmpfs \"$R/proc\"; sim start && sim cat /proc/vek/qos_enabled"), "1\n [0]");
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
