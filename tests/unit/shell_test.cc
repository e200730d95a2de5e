#include "sys/shell.h"

#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "scratch_sysroot.h"

namespace {

class ShellTest : public ScratchSysroot {
 protected:
  int dir_mode(const std::string &path) const {  // -1 for no directory
    struct stat st;
    return stat((root_ + path).c_str(), &st) == 0 && S_ISDIR(st.st_mode) ? static_cast<int>(st.st_mode & 07777) : -1;
  }
};

TEST_F(ShellTest, FilesAndDirectories) {
  put("/usr/vek/data/vek.xdb", "x");
  EXPECT_EQ(file_exists("/usr/vek/data/vek.xdb") + file_exists(nullptr) + file_exists("/usr/vek/data/app.xdb"), 1);
  EXPECT_EQ(file_exists_fmt("/usr/vek/%s/vek.xdb", "data") + file_exists_fmt(nullptr), 1);
  // Parents 0700, the last one 0755; what exists is left alone; any kind of file counts.
  mode_t old_mask = umask(0);
  EXPECT_EQ(make_dirs("/var/vek/db/"), 0);
  ASSERT_EQ(mkdir((root_ + "/a").c_str(), 0751), 0);
  EXPECT_EQ(make_dirs("/a/b"), 0);
  umask(old_mask);
  EXPECT_EQ(std::vector<int>({dir_mode("/var"), dir_mode("/var/vek"), dir_mode("/var/vek/db"), dir_mode("/a"), dir_mode("/a/b")}),
            std::vector<int>({0700, 0700, 0755, 0751, 0755}));
  EXPECT_EQ(make_dirs("/usr/vek/data/vek.xdb"), 0);
  EXPECT_EQ(make_dirs("/usr/vek/data/vek.xdb/sub"), -1);
}

TEST_F(ShellTest, FindPidByName) {
  EXPECT_EQ(find_pid_by_name("init"), -1);  // no /proc at all
  put("/proc/1/comm", "init\n");
  put("/proc/123abc/comm", "vek_service\n");  // not process entries
  put("/proc/self/comm", "vek_service\n");
  put("/proc/77/comm", "dt_srv\r\n");
  put("/proc/78/comm", "VEK_SERVICE\n");
  put("/proc/79/comm", "abcdefghijklmno\n");  // the kernel's cut of a longer name
  mkdir((root_ + "/proc/90").c_str(), 0755);   // no comm
  const struct { const char *name; long pid; } cases[] = {
      {"init", 1}, {"dt_srv", 77}, {"vek_service", -1}, {"ini", -1}, {"abcdefghijklmnopq", -1},
      {"abcdefghijklmno", 79}, {"", -1}, {nullptr, -1}};
  for (const auto &c : cases) EXPECT_EQ(find_pid_by_name(c.name), c.pid) << c.name;
}

TEST_F(ShellTest, RunCommandAndCaptureTheFirstLine) {
  EXPECT_EQ(run_command("exit %d", 255), 255);
  EXPECT_EQ(run_command(nullptr), 0);
  // The line is cut at 511 characters: one more blank in front leaves ";exit ".
  std::string line = "true" + std::string(500, ' ') + ";exit 9";
  EXPECT_EQ(run_command("%s", line.c_str()), 9);
  EXPECT_EQ(run_command(" %s", line.c_str()), 0);
  const struct { const char *command; std::string text; } cases[] = {
      {"printf 'one\\ntwo\\n'", "one\n"}, {"printf abc", "abc"}, {"true", ""},
      {"printf 'x%.0s' $(seq 600)", std::string(511, 'x')}, {"printf 'a\\0b\\nc\\n'", "a"},
      {"yes", "y\n"}};  // the pipe closes after the first line: yes ends by SIGPIPE
  for (const auto &c : cases) {
    OwnedText text = run_command_capture(0, c.command);
    ASSERT_NE(text, nullptr) << c.command;
    EXPECT_EQ(std::string(text.get()), c.text) << c.command;
  }
  std::string command = "printf done > " + root_ + "/side; echo text";
  EXPECT_EQ(run_command_capture(CAPTURE_DISCARD, command.c_str()), nullptr);
  EXPECT_EQ(get("/side"), "done");
  EXPECT_EQ(run_command_capture(0, nullptr), nullptr);
}

// Each word comes back from the shell as it went in; a cut stays one balanced word.
TEST_F(ShellTest, ShellWordSurvivesTheShell) {
  std::vector<std::pair<std::string, std::string>> cases = {
      {"Az09_@%+=:,./-", "Az09_@%+=:,./-"}, {"", "''"}, {"it's", "'it'\\''s'"}, {"$(id)", "'$(id)'"}};
  for (char c : std::string(" \t\n!\"#$&()*;<>?[\\]^`{|}~")) cases.push_back({std::string(1, c), "'" + std::string(1, c) + "'"});
  char out[256];
  for (auto &c : cases) {
    EXPECT_EQ(shell_word(out, sizeof out, c.first.c_str()), out);
    EXPECT_EQ(out, c.second);
    ASSERT_EQ(run_command("printf %%s %s > %s/word", out, root_.c_str()), 0) << out;
    EXPECT_EQ(get("/word"), c.first);
  }
  EXPECT_STREQ(shell_word(out, sizeof out, nullptr), "''");
  const struct { size_t size; const char *word, *out; } cuts[] = {
      {8, "abcdefghij", "abcdefg"}, {8, "a b c d e", "'a b c'"}, {8, "ab'cd", "'ab'"},
      {9, "ab'cd", "'ab'\\'''"}, {3, "a b", "''"}, {2, "a b", ""}};
  for (const auto &c : cuts) {
    memset(out, 'Z', sizeof out);
    EXPECT_STREQ(shell_word(out, c.size, c.word), c.out);
    EXPECT_EQ(out[c.size], 'Z');
  }
  setenv("VEKTOOL_SYSROOT", "/tmp/sim root", 1);
  EXPECT_STREQ(shell_path(out, sizeof out, "/usr/vek/bin/dt_srv"), "'/tmp/sim root/usr/vek/bin/dt_srv'");
  EXPECT_STREQ(shell_path(out, sizeof out, "bin/dt_srv"), "bin/dt_srv");
}

}  // namespace
