#include "sys/lock.h"

#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>

#include "scratch_sysroot.h"

namespace {

class LockTest : public ScratchSysroot {};

// One holder at a time, across open files, in a 0644 file whatever the umask;
// the next waits its bound out and gets the lock once the holder is gone.
TEST_F(LockTest, OneHolderAndABoundedWait) {
  mkdir((root_ + "/run").c_str(), 0755);
  mode_t saved = umask(077);
  auto first = std::make_unique<EngineLock>();
  EXPECT_TRUE(first->take("/run"));
  EXPECT_TRUE(first->held());
  umask(saved);
  struct stat st;
  ASSERT_EQ(lstat((root_ + "/run/vektool.lock").c_str(), &st), 0);
  EXPECT_EQ(st.st_mode, S_IFREG | 0644u);
  EngineLock second;
  auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(second.take("/run", 200));
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(200));
  EXPECT_FALSE(second.held());
  first.reset();
  EXPECT_TRUE(second.take("/run", 200));
  EXPECT_TRUE(second.held());
}

// No run directory, or something other than a regular file in the lock's
// place: the command runs without the lock, and nothing is followed.
TEST_F(LockTest, WithoutALockFileTheCommandRunsUnlocked) {
  put("/run/x", "");
  put("/fifo/x", "");
  ASSERT_EQ(symlink((root_ + "/target").c_str(), (root_ + "/run/vektool.lock").c_str()), 0);
  ASSERT_EQ(mkfifo((root_ + "/fifo/vektool.lock").c_str(), 0600), 0);
  for (const char *run : {"/none", "", "/run", "/fifo"}) {
    EngineLock lock;
    EXPECT_TRUE(lock.take(run, 50)) << run;
    EXPECT_FALSE(lock.held()) << run;
  }
  EXPECT_EQ(get("/target"), "<missing>");
  EXPECT_TRUE(EngineLock().take(nullptr));
}

}  // namespace
