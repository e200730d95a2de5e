#include "sys/lock.h"

#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>

#include "scratch_sysroot.h"

namespace {

class LockTest : public ScratchSysroot {
 protected:
  std::string mode_of(const std::string &path) const {
    struct stat st;
    if (lstat((root_ + path).c_str(), &st) != 0) return "missing";
    return std::string(S_ISREG(st.st_mode) ? "file " : "other ") + std::to_string(st.st_mode & 07777);
  }
};

// One holder at a time, across open files; the next waits its bound out and
// gets it once the holder is gone.
TEST_F(LockTest, OneHolderAndABoundedWait) {
  mkdir((root_ + "/run").c_str(), 0755);
  mode_t saved = umask(077);
  auto first = std::make_unique<EngineLock>();
  EXPECT_TRUE(first->take("/run"));
  EXPECT_TRUE(first->held());
  umask(saved);
  EXPECT_EQ(mode_of("/run/vektool.lock"), "file " + std::to_string(0644));
  EngineLock second;
  auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(second.take("/run", 200));
  auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start).count();
  EXPECT_GE(ms, 200);
  EXPECT_LT(ms, 1000);
  EXPECT_FALSE(second.held());
  first.reset();
  EXPECT_TRUE(second.take("/run", 200));
  EXPECT_TRUE(second.held());
}

// No run directory, or something other than a regular file in the lock's
// place: the command runs without the lock, and nothing is followed.
TEST_F(LockTest, WithoutALockFileTheCommandRunsUnlocked) {
  mkdir((root_ + "/run").c_str(), 0755);
  ASSERT_EQ(symlink((root_ + "/target").c_str(), (root_ + "/run/vektool.lock").c_str()), 0);
  mkdir((root_ + "/fifo").c_str(), 0755);
  ASSERT_EQ(mkfifo((root_ + "/fifo/vektool.lock").c_str(), 0600), 0);
  for (const char *run : {"/none", "", "/run", "/fifo"}) {
    EngineLock lock;
    EXPECT_TRUE(lock.take(run, 50)) << run;
    EXPECT_FALSE(lock.held()) << run;
  }
  EXPECT_EQ(mode_of("/target"), "missing");
  EXPECT_TRUE(EngineLock().take(nullptr));
}

}  // namespace
