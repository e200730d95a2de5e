#include "sys/shell.h"

#include <dirent.h>
#include <ftw.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

int remove_entry(const char *path, const struct stat *, int, struct FTW *) { return remove(path); }

class ShellTest : public ::testing::Test {
 protected:
  void SetUp() override {
    unsetenv("VEKTOOL_SYSROOT");
    char templ[] = "/tmp/vektool-shell-XXXXXX";
    ASSERT_NE(mkdtemp(templ), nullptr);
    root_ = templ;
  }
  void TearDown() override {
    unsetenv("VEKTOOL_SYSROOT");
    nftw(root_.c_str(), remove_entry, 16, FTW_DEPTH | FTW_PHYS);
  }

  std::string path(const std::string &name) const { return root_ + "/" + name; }

  void put(const std::string &name, const std::string &content) const {
    std::string full = path(name);
    for (size_t pos = root_.size() + 1; (pos = full.find('/', pos)) != std::string::npos; ++pos)
      mkdir(full.substr(0, pos).c_str(), 0755);
    FILE *f = fopen(full.c_str(), "wb");
    ASSERT_NE(f, nullptr) << full;
    fwrite(content.data(), 1, content.size(), f);
    fclose(f);
  }

  std::string get(const std::string &name) const {
    std::string out;
    FILE *f = fopen(path(name).c_str(), "rb");
    if (!f) return "<missing>";
    char block[256];
    size_t n;
    while ((n = fread(block, 1, sizeof block, f)) > 0) out.append(block, n);
    fclose(f);
    return out;
  }

  // Mode bits of a path, or -1 when it is not a directory.
  int dir_mode(const std::string &full) const {
    struct stat st;
    if (stat(full.c_str(), &st) != 0 || !S_ISDIR(st.st_mode)) return -1;
    return static_cast<int>(st.st_mode & 07777);
  }

  void use_sysroot() const { setenv("VEKTOOL_SYSROOT", root_.c_str(), 1); }

  std::string root_;
};

// Clears the umask for the modes to show as the helper asked for them.
struct UmaskZero {
  mode_t old = umask(0);
  ~UmaskZero() { umask(old); }
};

// ---- file tests ----------------------------------------------------------

TEST_F(ShellTest, FileExists) {
  put("f", "x");
  mkdir(path("d").c_str(), 0755);
  EXPECT_EQ(file_exists(path("f").c_str()), 1);
  EXPECT_EQ(file_exists(path("d").c_str()), 1);
  EXPECT_EQ(file_exists(path("absent").c_str()), 0);
  EXPECT_EQ(file_exists(nullptr), 0);
  EXPECT_EQ(file_exists_fmt("%s/%s", root_.c_str(), "f"), 1);
  EXPECT_EQ(file_exists_fmt("%s/%s", root_.c_str(), "g"), 0);
  EXPECT_EQ(file_exists_fmt(nullptr), 0);
}

TEST_F(ShellTest, FileExistsThroughSysroot) {
  put("usr/vek/data/vek.xdb", "x");
  EXPECT_EQ(file_exists("/usr/vek/data/vek.xdb"), 0);
  use_sysroot();
  EXPECT_EQ(file_exists("/usr/vek/data/vek.xdb"), 1);
  EXPECT_EQ(file_exists_fmt("/usr/vek/data/%s", "vek.xdb"), 1);
  EXPECT_EQ(file_exists_fmt("/usr/vek/data/%s", "app.xdb"), 0);
}

// ---- make_dirs -----------------------------------------------------------

TEST_F(ShellTest, MakeDirsParentsPrivateLastOpen) {
  UmaskZero clear;
  EXPECT_EQ(make_dirs(path("a/b/c/").c_str()), 0);
  EXPECT_EQ(dir_mode(path("a")), 0700);
  EXPECT_EQ(dir_mode(path("a/b")), 0700);
  EXPECT_EQ(dir_mode(path("a/b/c")), 0755);
}

TEST_F(ShellTest, MakeDirsKeepsExistingParents) {
  UmaskZero clear;
  ASSERT_EQ(mkdir(path("a").c_str(), 0751), 0);
  EXPECT_EQ(make_dirs(path("a/b").c_str()), 0);
  EXPECT_EQ(dir_mode(path("a")), 0751);
  EXPECT_EQ(dir_mode(path("a/b")), 0755);
}

TEST_F(ShellTest, MakeDirsOnExistingPathDoesNothing) {
  UmaskZero clear;
  ASSERT_EQ(mkdir(path("d").c_str(), 0711), 0);
  EXPECT_EQ(make_dirs(path("d").c_str()), 0);
  EXPECT_EQ(dir_mode(path("d")), 0711);
  put("file", "x");
  EXPECT_EQ(make_dirs(path("file").c_str()), 0);  // any kind of file counts
}

TEST_F(ShellTest, MakeDirsFailsUnderAFile) {
  put("file", "x");
  EXPECT_EQ(make_dirs(path("file/sub").c_str()), -1);
  EXPECT_EQ(make_dirs(nullptr), -1);
}

TEST_F(ShellTest, MakeDirsCutsThePathAt255Characters) {
  UmaskZero clear;
  std::string long_path = path(std::string(300, 'd'));
  std::string cut = long_path.substr(0, 255);
  EXPECT_EQ(make_dirs(long_path.c_str()), 0);
  EXPECT_EQ(dir_mode(cut), 0755);
  EXPECT_EQ(dir_mode(long_path.substr(0, 256)), -1);
}

TEST_F(ShellTest, MakeDirsThroughSysroot) {
  UmaskZero clear;
  use_sysroot();
  EXPECT_EQ(make_dirs("/var/vek/db/"), 0);
  EXPECT_EQ(dir_mode(path("var")), 0700);
  EXPECT_EQ(dir_mode(path("var/vek")), 0700);
  EXPECT_EQ(dir_mode(path("var/vek/db")), 0755);
  EXPECT_EQ(make_dirs("/var/vek/db"), 0);
}

TEST_F(ShellTest, MakeDirsRelativePathIgnoresSysroot) {
  UmaskZero clear;
  char cwd[PATH_MAX];
  ASSERT_NE(getcwd(cwd, sizeof cwd), nullptr);
  ASSERT_EQ(chdir(root_.c_str()), 0);
  setenv("VEKTOOL_SYSROOT", "/nonexistent-root", 1);
  int result = make_dirs("rel/x");
  ASSERT_EQ(chdir(cwd), 0);
  EXPECT_EQ(result, 0);
  EXPECT_EQ(dir_mode(path("rel")), 0700);
  EXPECT_EQ(dir_mode(path("rel/x")), 0755);
}

// ---- find_pid_by_name ----------------------------------------------------

TEST_F(ShellTest, FindPidByNameInFakeProc) {
  use_sysroot();
  put("proc/1/comm", "init\n");
  put("proc/123abc/comm", "vek_service\n");  // not a process entry
  put("proc/self/comm", "vek_service\n");
  put("proc/net/comm", "vek_service\n");
  put("proc/77/comm", "dt_srv\r\n");
  put("proc/78/comm", "VEK_SERVICE\n");
  put("proc/79/comm", "abcdefghijklmno\n");  // the kernel's cut of a 17-character name
  put("proc/80/comm", "");
  put("proc/81/comm", std::string(600, 'n') + "\n");
  mkdir(path("proc/90").c_str(), 0755);  // no comm at all
  EXPECT_EQ(find_pid_by_name("init"), 1);
  EXPECT_EQ(find_pid_by_name("dt_srv"), 77);
  EXPECT_EQ(find_pid_by_name("vek_service"), -1);
  EXPECT_EQ(find_pid_by_name("vek_servic"), -1);
  EXPECT_EQ(find_pid_by_name("ini"), -1);
  EXPECT_EQ(find_pid_by_name("abcdefghijklmnopq"), -1);
  EXPECT_EQ(find_pid_by_name("abcdefghijklmno"), 79);
  EXPECT_EQ(find_pid_by_name(""), -1);
  // Only the first 511 characters of a line are read.
  EXPECT_EQ(find_pid_by_name(std::string(511, 'n').c_str()), 81);
  EXPECT_EQ(find_pid_by_name(std::string(600, 'n').c_str()), -1);
  EXPECT_EQ(find_pid_by_name(nullptr), -1);
}

TEST_F(ShellTest, FindPidByNameFirstListedWins) {
  use_sysroot();
  const char *pids[] = {"300", "41", "5", "2000"};
  for (const char *pid : pids) put(std::string("proc/") + pid + "/comm", "vek_service\n");
  // Whichever the directory lists first is the answer.
  long first = -1;
  DIR *dir = opendir(path("proc").c_str());
  ASSERT_NE(dir, nullptr);
  while (const struct dirent *e = readdir(dir)) {
    if (e->d_name[0] != '.') {
      first = strtol(e->d_name, nullptr, 10);
      break;
    }
  }
  closedir(dir);
  EXPECT_EQ(find_pid_by_name("vek_service"), first);
}

TEST_F(ShellTest, FindPidByNameWithoutProc) {
  use_sysroot();
  EXPECT_EQ(find_pid_by_name("init"), -1);
}

TEST(FindPidByName, FindsThisProcess) {
  unsetenv("VEKTOOL_SYSROOT");
  char comm[64] = {0};
  FILE *f = fopen("/proc/self/comm", "r");
  ASSERT_NE(f, nullptr);
  ASSERT_NE(fgets(comm, sizeof comm, f), nullptr);
  fclose(f);
  comm[strcspn(comm, "\n")] = '\0';
  long pid = find_pid_by_name(comm);
  ASSERT_NE(pid, -1);
  // Another process of the same name may be listed first; it must still be
  // one of that name.
  char own[64];
  snprintf(own, sizeof own, "/proc/%ld/comm", pid);
  char other[64] = {0};
  f = fopen(own, "r");
  ASSERT_NE(f, nullptr);
  ASSERT_NE(fgets(other, sizeof other, f), nullptr);
  fclose(f);
  other[strcspn(other, "\n")] = '\0';
  EXPECT_STREQ(other, comm);
}

// ---- run_command ---------------------------------------------------------

TEST_F(ShellTest, RunCommandExitCodes) {
  EXPECT_EQ(run_command("exit 3"), 3);
  EXPECT_EQ(run_command("exit %d", 0), 0);
  EXPECT_EQ(run_command("exit %d", 255), 255);
  EXPECT_EQ(run_command("false"), 1);
  EXPECT_EQ(run_command(nullptr), 0);
  EXPECT_EQ(run_command("printf %%s %s > %s", "written", path("out").c_str()), 0);
  EXPECT_EQ(get("out"), "written");
}

TEST_F(ShellTest, RunCommandCutsTheLineAt511Characters) {
  // "true", blanks, then ";exit 9" ending exactly at character 511 or 512.
  std::string tail = ";exit 9";
  std::string fits = "true" + std::string(511 - 4 - tail.size(), ' ') + tail;
  std::string over = "true" + std::string(512 - 4 - tail.size(), ' ') + tail;
  ASSERT_EQ(fits.size(), 511u);
  EXPECT_EQ(run_command("%s", fits.c_str()), 9);
  EXPECT_EQ(run_command("%s", over.c_str()), 0);  // "...;exit " keeps the last status
}

// ---- run_command_capture -------------------------------------------------

struct CaptureCase {
  const char *command;
  std::string text;
};

class Capture : public ::testing::TestWithParam<CaptureCase> {};

TEST_P(Capture, FirstLineOnly) {
  OwnedText text = run_command_capture(0, GetParam().command);
  ASSERT_NE(text, nullptr);
  EXPECT_EQ(std::string(text.get()), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Commands, Capture,
    ::testing::Values(CaptureCase{"printf '+0800\\n'", "+0800\n"},
                      CaptureCase{"printf 'one\\ntwo\\nthree\\n'", "one\n"},
                      CaptureCase{"printf 'a\\nlonger line\\n'", "a\n"},
                      CaptureCase{"printf 'abcdef\\nxy\\n'", "abcdef\n"},
                      CaptureCase{"printf abc", "abc"}, CaptureCase{"true", ""},
                      CaptureCase{"printf 'x%.0s' $(seq 600)", std::string(511, 'x')}));

TEST_F(ShellTest, CaptureDiscardRunsButReturnsNull) {
  std::string command = "printf done > " + path("side") + "; echo text";
  EXPECT_EQ(run_command_capture(CAPTURE_DISCARD, command.c_str()), nullptr);
  EXPECT_EQ(get("side"), "done");
  EXPECT_EQ(run_command_capture(0, nullptr), nullptr);
}

// ---- shell words ---------------------------------------------------------

struct WordCase {
  const char *word;
  const char *quoted;
};

class ShellWord : public ShellTest, public ::testing::WithParamInterface<WordCase> {};

TEST_P(ShellWord, QuotesWhatTheShellWouldInterpret) {
  char out[256];
  EXPECT_EQ(shell_word(out, sizeof out, GetParam().word), out);
  EXPECT_STREQ(out, GetParam().quoted);
}

TEST_P(ShellWord, TheShellSeesTheWordUnchanged) {
  if (!GetParam().word) return;
  char word[256];
  shell_word(word, sizeof word, GetParam().word);
  ASSERT_EQ(run_command("printf %%s %s > %s", word, path("word").c_str()), 0);
  EXPECT_EQ(get("word"), GetParam().word);
}

INSTANTIATE_TEST_SUITE_P(
    Words, ShellWord,
    ::testing::Values(WordCase{"abc", "abc"}, WordCase{"/usr/vek/bin/dt_srv", "/usr/vek/bin/dt_srv"},
                      WordCase{"Az09_@%+=:,./-", "Az09_@%+=:,./-"}, WordCase{"", "''"},
                      WordCase{nullptr, "''"}, WordCase{"a b", "'a b'"},
                      WordCase{"it's", "'it'\\''s'"}, WordCase{"'", "''\\'''"},
                      WordCase{"a;rm -rf /", "'a;rm -rf /'"}, WordCase{"$HOME", "'$HOME'"},
                      WordCase{"`id`", "'`id`'"}, WordCase{"$(id)", "'$(id)'"}, WordCase{"*", "'*'"},
                      WordCase{"~", "'~'"}, WordCase{"a\\b", "'a\\b'"}, WordCase{"x\"y", "'x\"y'"},
                      WordCase{"tab\there", "'tab\there'"}, WordCase{"line\nbreak", "'line\nbreak'"},
                      WordCase{"a|b&c>d<e", "'a|b&c>d<e'"}, WordCase{"[ab]?{c}!#", "'[ab]?{c}!#'"}));

struct CutCase {
  size_t size;
  const char *word;
  const char *out;
};

class ShellWordCut : public ::testing::TestWithParam<CutCase> {};

TEST_P(ShellWordCut, StaysOneBalancedWord) {
  char out[32];
  memset(out, 'Z', sizeof out);
  shell_word(out, GetParam().size, GetParam().word);
  EXPECT_STREQ(out, GetParam().out);
  EXPECT_EQ(out[GetParam().size], 'Z');
}

INSTANTIATE_TEST_SUITE_P(Cuts, ShellWordCut,
                         ::testing::Values(CutCase{8, "abcdefghij", "abcdefg"}, CutCase{8, "a b c d e", "'a b c'"},
                                           CutCase{8, "ab'cd", "'ab'"}, CutCase{9, "ab'cd", "'ab'\\'''"},
                                           CutCase{3, "a b", "''"}, CutCase{2, "a b", ""},
                                           CutCase{1, "abc", ""}));

TEST(ShellPath, SysrootGoesInFrontThenQuoting) {
  char out[256];
  unsetenv("VEKTOOL_SYSROOT");
  EXPECT_STREQ(shell_path(out, sizeof out, "/usr/vek/bin/dt_srv"), "/usr/vek/bin/dt_srv");
  EXPECT_STREQ(shell_path(out, sizeof out, "/tmp/bs/my file"), "'/tmp/bs/my file'");
  setenv("VEKTOOL_SYSROOT", "/tmp/sim root", 1);
  EXPECT_STREQ(shell_path(out, sizeof out, "/usr/vek/bin/dt_srv"), "'/tmp/sim root/usr/vek/bin/dt_srv'");
  EXPECT_STREQ(shell_path(out, sizeof out, "bin/dt_srv"), "bin/dt_srv");
  setenv("VEKTOOL_SYSROOT", "/sim", 1);
  EXPECT_STREQ(shell_path(out, sizeof out, "/tmp/bs/bs.json"), "/sim/tmp/bs/bs.json");
  EXPECT_STREQ(shell_path(out, sizeof out, nullptr), "''");
  unsetenv("VEKTOOL_SYSROOT");
}

}  // namespace
