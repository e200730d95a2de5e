#include "sys/replace.h"

#include <dirent.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <string>

#include "scratch_sysroot.h"

namespace {

class ReplaceTest : public ScratchSysroot {
 protected:
  void SetUp() override {
    ScratchSysroot::SetUp();
    mkdir((root_ + "/var").c_str(), 0755);
  }
  // The names in /var, sorted, "." and ".." aside: no temporary file may be left behind.
  std::string listing() const {
    struct dirent **names = nullptr;
    int n = scandir((root_ + "/var").c_str(), &names, nullptr, alphasort);
    std::string out;
    for (int i = 0; i < n; free(names[i++]))
      if (std::string(".") != names[i]->d_name && std::string("..") != names[i]->d_name) out += names[i]->d_name + std::string(" ");
    free(names);
    return out;
  }
  mode_t mode_of(const std::string &path) const {  // type and permissions, not following a link
    struct stat st;
    return lstat((root_ + path).c_str(), &st) == 0 ? st.st_mode : 0;
  }
};

// Whatever stands at the destination, a regular file of mode 0644 takes its
// place, made unnamed or named, under any umask; a link is replaced, never
// followed, and nothing a directory held is followed out of it.
TEST_F(ReplaceTest, PutsARegularFileOf0644InPlaceOfAnything) {
  const std::string big(5000, 'n'), dest = root_ + "/var/app.id";
  put("/outside", "keep");
  chmod((root_ + "/outside").c_str(), 04755);
  mode_t saved_umask = umask(0);
  for (bool unnamed : {true, false}) {
    for (std::string kind : {"absent", "setuid file", "link", "fifo", "empty dir", "full dir"}) {
      SCOPED_TRACE(kind + (unnamed ? " unnamed" : " named"));
      umask(0);
      if (kind == "setuid file") put("/var/app.id", "old"), chmod(dest.c_str(), 04755);
      if (kind == "link") symlink((root_ + "/outside").c_str(), dest.c_str());
      if (kind == "fifo") mkfifo(dest.c_str(), 0666);
      if (kind == "empty dir") mkdir(dest.c_str(), 0755);
      if (kind == "full dir") {
        put("/var/app.id/file", "x");
        mkdir((dest + "/sub").c_str(), 0755);
        symlink((root_ + "/outside").c_str(), (dest + "/sub/link").c_str());
      }
      umask(unnamed ? 0 : 077);
      Replacement next("/var/app.id", unnamed);
      ASSERT_TRUE(next.ok());
      EXPECT_TRUE(next.write(big.data(), 3000));
      EXPECT_TRUE(next.write(big.data(), 2000));
      EXPECT_TRUE(next.commit());
      EXPECT_EQ(get("/var/app.id"), big);
      EXPECT_EQ(mode_of("/var/app.id"), S_IFREG | 0644u);
      EXPECT_EQ(mode_of("/outside"), S_IFREG | 04755u);
      EXPECT_EQ(get("/outside"), "keep");
      EXPECT_EQ(listing(), "app.id ");
      remove(dest.c_str());
    }
  }
  umask(saved_umask);
}

// Named temporary files of processes that are gone are swept before a new
// one is made; those of a live process and other names are left alone, and
// one never committed is removed.
TEST_F(ReplaceTest, SweepsTheNamedTempsOfDeadProcessesOnly) {
  pid_t child = fork();
  if (child == 0) _exit(0);
  waitpid(child, nullptr, 0);
  const std::string dead = std::to_string(child), live = std::to_string(getppid());
  for (const std::string &name : {".app.id.vektool-" + dead, ".app.id.vektool-" + live, std::string(".app.id.vektool-x"),
                                  ".vek.xr.vektool-" + dead, std::string("app.id")})
    put("/var/" + name + (name == "app.id" ? ".AbC123" : "-AbC123"), "left");
  const std::string kept = ".app.id.vektool-" + live + "-AbC123 .app.id.vektool-x-AbC123 .vek.xr.vektool-" + dead +
                           "-AbC123 app.id.AbC123 ";
  {
    Replacement next("/var/app.id", false);
    ASSERT_TRUE(next.ok());
    EXPECT_NE(listing().find(".app.id.vektool-" + std::to_string(getpid()) + "-"), std::string::npos);
  }
  EXPECT_EQ(listing(), kept);
}

// TERM, INT and HUP remove a named temporary file and then end the process as
// they would have; the handlers stand only while a named file exists, and an
// ignored signal stays ignored.
TEST_F(ReplaceTest, AnEndSignalRemovesTheNamedTemp) {
  for (int signal_number : {SIGTERM, SIGINT, SIGHUP}) {
    pid_t child = fork();
    if (child == 0) {
      Replacement next("/var/app.id", false);
      next.write("partial", 7);
      raise(signal_number);
      _exit(3);
    }
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
  {
    Replacement next("/var/app.id", false);
    EXPECT_NE(handler(SIGTERM), SIG_DFL);
    EXPECT_EQ(handler(SIGHUP), SIG_IGN);
    EXPECT_EQ(handler(SIGXFSZ), SIG_IGN);
    next.write("whole", 5);
    EXPECT_TRUE(next.commit());
    EXPECT_EQ(handler(SIGTERM), SIG_DFL);
  }
  EXPECT_EQ(get("/var/app.id"), "whole");
  EXPECT_EQ(handler(SIGXFSZ), SIG_DFL);
  signal(SIGHUP, SIG_DFL);
}

// A missing or empty source, a missing directory, a file size limit: the old file stays.
TEST_F(ReplaceTest, AFailedCopyLeavesTheOldFile) {
  put("/var/app.id", "old\n");
  put("/empty", "");
  put("/new", std::string(3000, 'n'));
  const struct { const char *destination, *source; long result; rlim_t limit; } cases[] = {  // limit 0: none
      {"/var/app.id", "/none", -1, 0}, {"/var/app.id", "/empty", 0, 0}, {"/nodir/app.id", "/new", -2, 0},
      {"/var/app.id", nullptr, -1, 0}, {nullptr, "/new", -1, 0},        {"/var/app.id", "/new", -1, 1024}};
  struct rlimit saved;
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &saved), 0);
  for (const auto &c : cases) {
    struct rlimit limit = {c.limit ? c.limit : saved.rlim_cur, saved.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    long result = replace_file(c.destination, c.source);
    setrlimit(RLIMIT_FSIZE, &saved);
    EXPECT_EQ(result, c.result) << (c.source ? c.source : "null");
    EXPECT_EQ(get("/var/app.id"), "old\n");
    EXPECT_EQ(listing(), "app.id ");
  }
}

}  // namespace
