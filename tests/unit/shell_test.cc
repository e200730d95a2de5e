// Processes found by name, the words put on the shell's command line and the
// programs' PATH (the programs run: integrity-io.t, vek.t, dt.t).
#include "sys/shell.h"

#include <sys/stat.h>

#include <cstring>
#include <vector>

#include "scratch_sysroot.h"
#include "sys/environ.h"

namespace {

class ShellTest : public ScratchSysroot {};

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

// Words quoted for the shell (injection.t runs them through it); a cut stays one balanced word.
TEST_F(ShellTest, ShellWordQuotesAndCutsWhole) {
  std::vector<std::pair<std::string, std::string>> cases = {
      {"Az09_@%+=:,./-", "Az09_@%+=:,./-"}, {"", "''"}, {"it's", "'it'\\''s'"}, {"$(id)", "'$(id)'"}};
  for (char c : std::string(" \t\n!\"#$&()*;<>?[\\]^`{|}~")) cases.push_back({std::string(1, c), "'" + std::string(1, c) + "'"});
  char out[256];
  for (auto &c : cases) {
    EXPECT_EQ(shell_word(out, sizeof out, c.first.c_str()), out);
    EXPECT_EQ(out, c.second);
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
}

// The engine's directory goes in front of the programs' PATH, or is all of it.
TEST(Environ, PathGetsTheDirectoryInFront) {
  const std::string saved = getenv("PATH") ? getenv("PATH") : "/usr/bin:/bin";  // other tests run programs
  unsetenv("PATH");
  prepend_path_env("/usr/sbin"), prepend_path_env("%s/usr/sbin", "/sim"), prepend_path_env(nullptr);
  EXPECT_STREQ(getenv("PATH"), "/sim/usr/sbin:/usr/sbin");
  setenv("PATH", saved.c_str(), 1);
}

}  // namespace
