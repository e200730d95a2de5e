// Files the tool makes as root: a replaced file and the engine lock. Through
// the tool (integrity-files.t) only the unnamed temporary file shows; the
// named one is what a file system without O_TMPFILE gets.
#include "sys/replace.h"

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <memory>
#include <set>

#include "scratch_sysroot.h"
#include "sys/lock.h"

namespace {

class ReplaceTest : public ScratchSysroot {
 protected:
  void SetUp() override { ScratchSysroot::SetUp(), mkdir((root_ + "/var").c_str(), 0755); }
  std::string listing() const {  // the names in /var, sorted: no temporary file may be left behind
    std::set<std::string> names;
    for (const auto &entry : std::filesystem::directory_iterator(root_ + "/var")) names.insert(entry.path().filename());
    std::string out;
    for (const std::string &name : names) out += name + " ";
    return out;
  }
  mode_t mode_of(const std::string &path) const {  // type and permissions, not following a link
    struct stat st;
    return lstat((root_ + path).c_str(), &st) == 0 ? st.st_mode : 0;
  }
};

// Named temporary files of processes that are gone are swept before a new
// one is made; those of a live process and other names are left alone, and
// one never committed is removed.
TEST_F(ReplaceTest, SweepsTheNamedTempsOfDeadProcessesOnly) {
  pid_t child = fork();
  if (child == 0) _exit(0);
  waitpid(child, nullptr, 0);
  const std::string dead = std::to_string(child), live = std::to_string(getppid());
  const std::string kept = ".app.id.vektool-" + live + "-AbC123 .app.id.vektool-x-AbC123 .vek.xr.vektool-" + dead +
                           "-AbC123 app.id.AbC123 ";
  for (const std::string &name : {".app.id.vektool-" + dead, ".app.id.vektool-" + live, std::string(".app.id.vektool-x"),
                                  ".vek.xr.vektool-" + dead, std::string("app.id")})
    put("/var/" + name + (name == "app.id" ? ".AbC123" : "-AbC123"), "left");
  {
    Replacement next("/var/app.id", false);
    ASSERT_TRUE(next.ok());
    EXPECT_NE(listing().find(".app.id.vektool-" + std::to_string(getpid()) + "-"), std::string::npos);
  }
  EXPECT_EQ(listing(), kept);
}

// TERM, INT and HUP remove a named temporary file and then end the process as
// they would have; the handlers stand only while a named file exists, and an
// ignored signal stays ignored. A committed one is a regular file of 0644 under any umask.
TEST_F(ReplaceTest, AnEndSignalRemovesTheNamedTemp) {
  for (int signal_number : {SIGTERM, SIGINT, SIGHUP}) {
    pid_t child = fork();
    if (child == 0) Replacement("/var/app.id", false).write("partial", 7), raise(signal_number), _exit(3);
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal_number) << signal_number;
    EXPECT_EQ(listing(), "") << signal_number;
  }
  auto handler = [](int signal_number) {
    struct sigaction action;
    sigaction(signal_number, nullptr, &action);
    return action.sa_handler;
  };
  signal(SIGHUP, SIG_IGN);
  mode_t saved_umask = umask(077);
  symlink((root_ + "/outside").c_str(), (root_ + "/var/app.id").c_str());
  {
    Replacement next("/var/app.id", false);
    EXPECT_TRUE(handler(SIGTERM) != SIG_DFL && handler(SIGHUP) == SIG_IGN && handler(SIGXFSZ) == SIG_IGN);
    EXPECT_TRUE(next.write("whole", 5) && next.commit());
    EXPECT_EQ(handler(SIGTERM), SIG_DFL);
  }
  umask(saved_umask);
  EXPECT_EQ(get("/var/app.id") + get("/outside") + listing(), "whole<missing>app.id ");
  EXPECT_EQ(mode_of("/var/app.id"), S_IFREG | 0644u);
  EXPECT_EQ(handler(SIGXFSZ), SIG_DFL);
  signal(SIGHUP, SIG_DFL);
}

// One holder at a time, across open files, in a 0644 file whatever the umask;
// the next waits its bound out and gets the lock once the holder is gone. No
// run directory, or no regular file in the lock's place: the command runs
// without the lock, and nothing is followed.
TEST_F(ReplaceTest, EngineLockHasOneHolderAndABoundedWait) {
  mode_t saved = umask(077);
  auto first = std::make_unique<EngineLock>();
  EXPECT_TRUE(first->take("/var") && first->held());
  umask(saved);
  EXPECT_EQ(mode_of("/var/vektool.lock"), S_IFREG | 0644u);
  EngineLock second;
  auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(second.take("/var", 200) || second.held());
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(200));
  first.reset();
  EXPECT_TRUE(second.take("/var", 200) && second.held());
  put("/link/x", "");
  put("/fifo/x", "");
  ASSERT_EQ(symlink((root_ + "/target").c_str(), (root_ + "/link/vektool.lock").c_str()), 0);
  ASSERT_EQ(mkfifo((root_ + "/fifo/vektool.lock").c_str(), 0600), 0);
  for (const char *run : {"/none", "", "/link", "/fifo", static_cast<const char *>(nullptr)}) {
    EngineLock lock;
    EXPECT_TRUE(lock.take(run, 50) && !lock.held()) << (run ? run : "null");
  }
  EXPECT_EQ(get("/target"), "<missing>");
}

}  // namespace
