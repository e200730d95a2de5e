#include "sys/shell.h"

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "scratch_sysroot.h"

namespace {

// A scratch directory that also serves as the sysroot.
class ShellTest : public ScratchSysroot {
 protected:
  std::string path(const std::string &name) const { return root_ + "/" + name; }
  void put(const std::string &name, const std::string &content) const {
    for (size_t pos = 0; (pos = name.find('/', pos)) != std::string::npos; ++pos)
      mkdir(path(name.substr(0, pos)).c_str(), 0755);
    std::ofstream(path(name)) << content;
  }
  std::string get(const std::string &name) const {
    std::ostringstream out;
    out << std::ifstream(path(name)).rdbuf();
    return out.str();
  }
  // Mode bits of a directory, or -1.
  int dir_mode(const std::string &name) const {
    struct stat st;
    if (stat(path(name).c_str(), &st) != 0 || !S_ISDIR(st.st_mode)) return -1;
    return static_cast<int>(st.st_mode & 07777);
  }
};

TEST_F(ShellTest, FileExists) {
  put("usr/vek/data/vek.xdb", "x");
  EXPECT_EQ(file_exists("/usr/vek/data/vek.xdb"), 1);
  EXPECT_EQ(file_exists("/usr/vek/data/app.xdb"), 0);
  EXPECT_EQ(file_exists(nullptr), 0);
  EXPECT_EQ(file_exists_fmt("/usr/vek/data/%s", "vek.xdb"), 1);
  EXPECT_EQ(file_exists_fmt(nullptr), 0);
}

TEST_F(ShellTest, MakeDirsParentsPrivateLastOpen) {
  mode_t old_mask = umask(0);
  EXPECT_EQ(make_dirs("/var/vek/db/"), 0);
  EXPECT_EQ(dir_mode("var"), 0700);
  EXPECT_EQ(dir_mode("var/vek"), 0700);
  EXPECT_EQ(dir_mode("var/vek/db"), 0755);
  ASSERT_EQ(chmod(path("var/vek/db").c_str(), 0711), 0);
  EXPECT_EQ(make_dirs("/var/vek/db"), 0);  // present: left alone
  EXPECT_EQ(dir_mode("var/vek/db"), 0711);
  ASSERT_EQ(mkdir(path("a").c_str(), 0751), 0);
  EXPECT_EQ(make_dirs("/a/b"), 0);
  EXPECT_EQ(dir_mode("a"), 0751);
  EXPECT_EQ(dir_mode("a/b"), 0755);
  umask(old_mask);
  put("file", "x");
  EXPECT_EQ(make_dirs("/file"), 0);  // any kind of file counts
  EXPECT_EQ(make_dirs("/file/sub"), -1);
}

TEST_F(ShellTest, FindPidByName) {
  EXPECT_EQ(find_pid_by_name("init"), -1);  // no /proc at all
  put("proc/1/comm", "init\n");
  put("proc/123abc/comm", "vek_service\n");  // not process entries
  put("proc/self/comm", "vek_service\n");
  put("proc/77/comm", "dt_srv\r\n");
  put("proc/78/comm", "VEK_SERVICE\n");
  put("proc/79/comm", "abcdefghijklmno\n");  // the kernel's cut of a longer name
  mkdir(path("proc/90").c_str(), 0755);      // no comm
  const struct { const char *name; long pid; } cases[] = {
      {"init", 1}, {"dt_srv", 77}, {"vek_service", -1}, {"ini", -1}, {"abcdefghijklmnopq", -1},
      {"abcdefghijklmno", 79}, {"", -1}, {nullptr, -1}};
  for (const auto &c : cases) EXPECT_EQ(find_pid_by_name(c.name), c.pid) << c.name;
}

TEST_F(ShellTest, FindPidByNameFirstListedWins) {
  for (const char *pid : {"300", "41", "5", "2000"}) put(std::string("proc/") + pid + "/comm", "vek_service\n");
  long first = -1;
  DIR *dir = opendir(path("proc").c_str());
  ASSERT_NE(dir, nullptr);
  while (const struct dirent *e = readdir(dir))
    if (e->d_name[0] != '.' && first < 0) first = strtol(e->d_name, nullptr, 10);
  closedir(dir);
  EXPECT_EQ(find_pid_by_name("vek_service"), first);
}

TEST_F(ShellTest, RunCommand) {
  EXPECT_EQ(run_command("exit 3"), 3);
  EXPECT_EQ(run_command("exit %d", 255), 255);
  EXPECT_EQ(run_command(nullptr), 0);
  EXPECT_EQ(run_command("printf %%s %s > %s", "written", path("out").c_str()), 0);
  EXPECT_EQ(get("out"), "written");
  // The line is cut at 511 characters: one more blank in front leaves ";exit ".
  std::string line = "true" + std::string(500, ' ') + ";exit 9";
  EXPECT_EQ(run_command("%s", line.c_str()), 9);
  EXPECT_EQ(run_command(" %s", line.c_str()), 0);
}

TEST_F(ShellTest, CaptureReadsTheFirstLineOnly) {
  const struct { const char *command; std::string text; } cases[] = {
      {"printf '+0800\\n'", "+0800\n"}, {"printf 'one\\ntwo\\nthree\\n'", "one\n"},
      {"printf 'a\\nlonger line\\n'", "a\n"}, {"printf abc", "abc"}, {"true", ""},
      {"printf 'x%.0s' $(seq 600)", std::string(511, 'x')}, {"printf 'a\\0b\\nc\\n'", "a"},
      {"yes", "y\n"}};  // the pipe closes after the first line: yes ends by SIGPIPE
  for (const auto &c : cases) {
    OwnedText text = run_command_capture(0, c.command);
    ASSERT_NE(text, nullptr) << c.command;
    EXPECT_EQ(std::string(text.get()), c.text) << c.command;
  }
  std::string command = "printf done > " + path("side") + "; echo text";
  EXPECT_EQ(run_command_capture(CAPTURE_DISCARD, command.c_str()), nullptr);
  EXPECT_EQ(get("side"), "done");
  EXPECT_EQ(run_command_capture(0, nullptr), nullptr);
}

TEST_F(ShellTest, ShellWordSurvivesTheShell) {
  std::vector<std::pair<std::string, std::string>> cases = {
      {"/usr/vek/bin/dt_srv", "/usr/vek/bin/dt_srv"}, {"Az09_@%+=:,./-", "Az09_@%+=:,./-"}, {"", "''"},
      {"it's", "'it'\\''s'"}, {"a;rm -rf /", "'a;rm -rf /'"}, {"$(id)", "'$(id)'"}};
  for (char c : std::string(" \t\n!\"#$&()*;<>?[\\]^`{|}~"))  // each quoted on its own
    cases.push_back({std::string(1, c), "'" + std::string(1, c) + "'"});
  char out[256];
  for (auto &c : cases) {
    EXPECT_EQ(shell_word(out, sizeof out, c.first.c_str()), out);
    EXPECT_EQ(out, c.second);
    ASSERT_EQ(run_command("printf %%s %s > %s", out, path("word").c_str()), 0) << out;
    EXPECT_EQ(get("word"), c.first);
  }
  EXPECT_STREQ(shell_word(out, sizeof out, nullptr), "''");
}

TEST(ShellWord, CutStaysOneBalancedWord) {
  const struct { size_t size; const char *word, *out; } cases[] = {
      {8, "abcdefghij", "abcdefg"}, {8, "a b c d e", "'a b c'"}, {8, "ab'cd", "'ab'"},
      {9, "ab'cd", "'ab'\\'''"}, {3, "a b", "''"}, {2, "a b", ""}};
  for (const auto &c : cases) {
    char out[16];
    memset(out, 'Z', sizeof out);
    EXPECT_STREQ(shell_word(out, c.size, c.word), c.out);
    EXPECT_EQ(out[c.size], 'Z');
  }
}

TEST(ShellPath, SysrootGoesInFrontThenQuoting) {
  char out[256];
  unsetenv("VEKTOOL_SYSROOT");
  EXPECT_STREQ(shell_path(out, sizeof out, "/tmp/bs/my file"), "'/tmp/bs/my file'");
  setenv("VEKTOOL_SYSROOT", "/tmp/sim root", 1);
  EXPECT_STREQ(shell_path(out, sizeof out, "/usr/vek/bin/dt_srv"), "'/tmp/sim root/usr/vek/bin/dt_srv'");
  EXPECT_STREQ(shell_path(out, sizeof out, "bin/dt_srv"), "bin/dt_srv");
  unsetenv("VEKTOOL_SYSROOT");
}

}  // namespace
