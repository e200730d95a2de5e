#include "sys/replace.h"

#include <dirent.h>
#include <sys/resource.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <sstream>
#include <string>

#include "scratch_sysroot.h"

namespace {

class ReplaceTest : public ScratchSysroot {
 protected:
  void SetUp() override {
    ScratchSysroot::SetUp();
    mkdir((root_ + "/var").c_str(), 0755);
  }
  void put(const std::string &path, const std::string &content, mode_t mode = 0644) const {
    std::ofstream(root_ + path) << content;
    chmod((root_ + path).c_str(), mode);
  }
  std::string get(const std::string &path) const {
    std::ifstream in(root_ + path);
    std::ostringstream out;
    out << in.rdbuf();
    return in ? out.str() : "<missing>";
  }
  // The names in /var, sorted: no temporary file may be left behind.
  std::string listing() const {
    struct dirent **names = nullptr;
    int n = scandir((root_ + "/var").c_str(), &names, nullptr, alphasort);
    std::string out;
    for (int i = 0; i < n; i++) {
      if (names[i]->d_name[0] != '.') out += std::string(names[i]->d_name) + " ";
      free(names[i]);
    }
    free(names);
    return out;
  }
  // How many names in /var begin with a dot (temporary files), "." and ".." aside.
  size_t dot_listing() const {
    struct dirent **names = nullptr;
    int n = scandir((root_ + "/var").c_str(), &names, nullptr, alphasort);
    size_t count = 0;
    for (int i = 0; i < n; i++) {
      if (names[i]->d_name[0] == '.' && strcmp(names[i]->d_name, ".") != 0 && strcmp(names[i]->d_name, "..") != 0)
        count++;
      free(names[i]);
    }
    free(names);
    return count;
  }
};

std::string type_and_mode(const std::string &path) {
  struct stat st;
  if (lstat(path.c_str(), &st) != 0) return "missing";
  char text[32];
  snprintf(text, sizeof text, "%s %o", S_ISREG(st.st_mode) ? "file" : S_ISLNK(st.st_mode) ? "link" : "other",
           static_cast<unsigned>(st.st_mode & 07777));
  return text;
}

// Whatever stands at the destination, a regular file of mode 0644 takes its
// place, made unnamed or named, under any umask; a link is replaced, never
// followed, and nothing a directory held is followed out of it.
TEST_F(ReplaceTest, PutsARegularFileOf0644InPlaceOfAnything) {
  std::string big(5000, 'n');
  put("/new", big);
  put("/outside", "keep", 04755);
  const char *const kinds[] = {"absent", "setuid file", "link", "fifo", "empty dir", "full dir"};
  mode_t saved_umask = umask(0);
  for (bool unnamed : {true, false}) {
    for (const char *kind : kinds) {
      SCOPED_TRACE(std::string(kind) + (unnamed ? " unnamed" : " named"));
      umask(0);
      const std::string dest = root_ + "/var/app.id", k = kind;
      if (k == "setuid file") put("/var/app.id", "old", 04755);
      if (k == "link") symlink((root_ + "/outside").c_str(), dest.c_str());
      if (k == "fifo") mkfifo(dest.c_str(), 0666);
      if (k == "empty dir" || k == "full dir") mkdir(dest.c_str(), 0755);
      if (k == "full dir") {
        mkdir((dest + "/sub").c_str(), 0755);
        symlink((root_ + "/outside").c_str(), (dest + "/sub/link").c_str());
        put("/var/app.id/file", "x");
      }
      ASSERT_EQ(type_and_mode(dest), k == "absent" ? "missing" : k == "setuid file" ? "file 4755"
                                     : k == "link" ? "link 777" : k == "fifo" ? "other 666" : "other 755");
      umask(unnamed ? 0 : 077);
      Replacement next("/var/app.id", unnamed);
      ASSERT_TRUE(next.ok());
      EXPECT_TRUE(next.write(big.data(), 3000));
      EXPECT_TRUE(next.write(big.data(), 2000));
      EXPECT_TRUE(next.commit());
      EXPECT_EQ(get("/var/app.id"), big);
      EXPECT_EQ(type_and_mode(dest), "file 644");
      EXPECT_EQ(get("/outside"), "keep");
      EXPECT_EQ(type_and_mode(root_ + "/outside"), "file 4755");
      EXPECT_EQ(listing(), "app.id ");
      remove(dest.c_str());
    }
  }
  umask(saved_umask);
}

// Named temporary files of processes that are gone are swept before a new
// one is made; those of a live process and other names are left alone.
TEST_F(ReplaceTest, SweepsTheNamedTempsOfDeadProcessesOnly) {
  pid_t child = fork();
  if (child == 0) _exit(0);
  ASSERT_GT(child, 0);
  waitpid(child, nullptr, 0);
  const std::string dead = ".app.id.vektool-" + std::to_string(child) + "-AbC123";
  const std::string live = ".app.id.vektool-" + std::to_string(getppid()) + "-AbC123";
  for (const std::string &name : {dead, live, std::string(".app.id.vektool-x-AbC123"),
                                  std::string(".vek.xr.vektool-") + std::to_string(child) + "-AbC123",
                                  std::string("app.id.AbC123")})
    put("/var/" + name, "left");
  {
    Replacement next("/var/app.id", false);
    ASSERT_TRUE(next.ok());
    EXPECT_EQ(get("/var/" + dead), "<missing>");
    EXPECT_EQ(get("/var/" + live), "left");
    EXPECT_EQ(dot_listing(), 4u);  // the three kept and the new one
  }
  EXPECT_EQ(dot_listing(), 3u);  // not committed: the new one is gone
  EXPECT_EQ(get("/var/app.id.AbC123"), "left");
}

// TERM, INT and HUP remove a named temporary file and then end the process
// as they would have.
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
    EXPECT_EQ(dot_listing(), 0u) << signal_number;
  }
  // Only while a named file exists, and an ignored signal stays ignored.
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

TEST_F(ReplaceTest, AFailedCopyLeavesTheOldFile) {
  put("/var/app.id", "old\n");
  put("/empty", "");
  put("/new", std::string(3000, 'n'));
  // Source missing or empty, destination directory missing.
  const struct { const char *destination, *source; long result; } cases[] = {
      {"/var/app.id", "/none", -1}, {"/var/app.id", "/empty", 0}, {"/nodir/app.id", "/new", -2},
      {"/var/app.id", nullptr, -1}, {nullptr, "/new", -1}};
  for (const auto &c : cases) {
    EXPECT_EQ(replace_file(c.destination, c.source), c.result) << (c.source ? c.source : "null");
    EXPECT_EQ(get("/var/app.id"), "old\n");
  }
  EXPECT_EQ(listing(), "app.id ");
}

TEST_F(ReplaceTest, AFileSizeLimitFailsTheCopyAndNotTheProcess) {
  put("/var/app.id", "old\n");
  put("/new", std::string(3000, 'n'));
  struct rlimit saved;
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &saved), 0);
  struct rlimit limit = saved;
  limit.rlim_cur = 1024;
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
  long result = replace_file("/var/app.id", "/new");
  setrlimit(RLIMIT_FSIZE, &saved);
  EXPECT_EQ(result, -1);
  EXPECT_EQ(get("/var/app.id"), "old\n");
  EXPECT_EQ(listing(), "app.id ");
}

}  // namespace
