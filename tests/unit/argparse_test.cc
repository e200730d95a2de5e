// Option parser: the words kept and their order, the values stored per kind,
// the exact error lines, statuses and help text. Every parse runs in a child
// whose standard output and error go to files, so one that ends the process
// (or loops) fails one case instead of the whole run.
#include "argparse.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

namespace {

constexpr int kReturned = 99;  // the child's body came back instead of ending it

std::string slurp(FILE *file) {
  std::string text;
  rewind(file);
  for (int c; (c = fgetc(file)) != EOF;) text += static_cast<char>(c);
  fclose(file);
  return text;
}

struct Outcome {
  int status;  // exit status, or minus the signal number
  std::string out, err;
};

template <typename Body>
Outcome run_in_child(Body body) {
  FILE *out = tmpfile(), *err = tmpfile();
  fflush(nullptr);
  pid_t pid = fork();
  if (pid == 0) {
    alarm(5);
    dup2(fileno(out), 1);
    dup2(fileno(err), 2);
    body();
    fflush(nullptr);
    _exit(kReturned);
  }
  int wait_status = 0;
  waitpid(pid, &wait_status, 0);
  int status = WIFEXITED(wait_status) ? WEXITSTATUS(wait_status) : -WTERMSIG(wait_status);
  return {status, slurp(out), slurp(err)};
}

// A writable vector as main gets it: the group word, the given words, a null.
struct Words {
  std::vector<std::string> words{"grp"};
  std::vector<char *> vector;
  explicit Words(const char *line) {
    std::istringstream in(line);
    for (std::string word; in >> word;) words.push_back(word);
    for (std::string &word : words) vector.push_back(&word[0]);
    vector.push_back(nullptr);
  }
  int count() const { return static_cast<int>(words.size()); }
  bool owns(const char *text) const {
    for (const std::string &word : words)
      if (text >= word.data() && text <= word.data() + word.size()) return true;
    return false;
  }
};

// Zero in every child: the parent never parses.
int g_json, g_verbose, g_perms, g_duration;
unsigned g_up;
float g_scale;
const char *g_file, *g_mac;

const argparse_option kOptions[] = {
    OPT_HELP(),
    OPT_BOOLEAN(0, "json", &g_json, ""),
    OPT_BOOLEAN('v', "verbose", &g_verbose, "Print more."),
    OPT_BIT('r', "read", &g_perms, "Allow reading.", 4),
    OPT_BIT('w', "write", &g_perms, "Allow writing.", 2),
    OPT_INTEGER('d', "duration", &g_duration, "The duration in minutes."),
    OPT_UINTEGER('u', "up", &g_up, "Upstream rate."),
    OPT_FLOAT('s', "scale", &g_scale, "Scale factor."),
    OPT_STRING('f', "file", &g_file, "Input file."),
    OPT_STRING('m', nullptr, &g_mac, ""),
    OPT_END(),
};

const char *const kUsages[] = {"vektool tst [options] <command> [args]", "vektool tst get",
                               "vektool tst set <value>", nullptr};

const std::string kHelp =
    "Usage: vektool tst [options] <command> [args]\n"
    "   or: vektool tst get\n"
    "   or: vektool tst set <value>\n"
    "\n"
    "    -h, --help" + std::string(12, ' ') + "show this help message and exit\n"
    "    --json" + std::string(16, ' ') + "\n"
    "    -v, --verbose" + std::string(9, ' ') + "Print more.\n"
    "    -r, --read" + std::string(12, ' ') + "Allow reading.\n"
    "    -w, --write" + std::string(11, ' ') + "Allow writing.\n"
    "    -d, --duration=<int>" + std::string(2, ' ') + "The duration in minutes.\n"
    "    -u, --up=<uint>" + std::string(7, ' ') + "Upstream rate.\n"
    "    -s, --scale=<flt>" + std::string(5, ' ') + "Scale factor.\n"
    "    -f, --file=<str>" + std::string(6, ' ') + "Input file.\n"
    "    -m=<str>" + std::string(14, ' ') + "\n";

// "kept words|values that are not zero"; a string value not pointing into
// the vector is marked as a copy.
std::string report(const Words &words, int left) {
  std::string text;
  for (int i = 0; i < left; i++) text += (i ? " " : "") + std::string(words.vector[i]);
  if (words.vector[left]) text += " (no null)";
  text += "|";
  auto put = [&text](const std::string &item) { text += (text.back() == '|' ? "" : " ") + item; };
  for (auto [name, value] : {std::pair<const char *, long long>{"json", g_json},
                             {"verbose", g_verbose}, {"perms", g_perms},
                             {"duration", g_duration}, {"up", g_up}})
    if (value) put(name + ("=" + std::to_string(value)));
  char scale[32];
  snprintf(scale, sizeof scale, "scale=%g", static_cast<double>(g_scale));
  if (g_scale != 0) put(scale);
  if (g_file) put(std::string("file=") + g_file + (words.owns(g_file) ? "" : " (copy)"));
  if (g_mac) put(std::string("mac=") + g_mac);
  return text;
}

constexpr int kIgnore = ARGPARSE_IGNORE_UNKNOWN_ARGS;
constexpr int kStop = ARGPARSE_STOP_AT_NON_OPTION | ARGPARSE_IGNORE_UNKNOWN_ARGS;
constexpr int kR = kReturned;

struct ParseCase {
  const char *words;  // after the group word
  int flags;
  std::string out;  // the report when the parse comes back
  std::string err;
  int status;
};

const ParseCase kParseCases[] = {
    {"", kIgnore, "|", "", kR},
    {"get a --json b -v --duration 5", kIgnore, "get a b|json=1 verbose=1 duration=5", "", kR},
    {"set -d 3 x", 0, "set x|duration=3", "", kR},
    {"a -v b -- c --json -d", kIgnore, "a b c --json -d|verbose=1", "", kR},
    {"- get", kIgnore, "- get|", "", kR},
    // Counters count, negation lowers them by one but never below 0.
    {"--json --json -vvv", kIgnore, "|json=2 verbose=3", "", kR},
    {"--json --json --no-json --no-verbose --no-verbose -v", kIgnore, "|json=1 verbose=1", "", kR},
    {"-rw --no-read --no-read", kIgnore, "|perms=2", "", kR},
    {"--write --read", kIgnore, "|perms=6", "", kR},
    // Unknown words are dropped; a value word after one stays positional.
    {"-i vek.ini get --foo bar", kIgnore, "vek.ini get bar|", "", kR},
    {"--jsonx --no-file get", kIgnore, "get|", "", kR},
    // Numbers: bases, empty text, negative next word, letter with digits.
    {"--duration=0x10", kIgnore, "|duration=16", "", kR},
    {"--duration=010", kIgnore, "|duration=8", "", kR},
    {"--duration=5 --duration=", kIgnore, "|", "", kR},
    {"-d -5 get", kIgnore, "get|duration=-5", "", kR},
    {"-d12", kIgnore, "|duration=12", "", kR},
    {"--up=0x10", kIgnore, "|up=16", "", kR},
    {"--up=-1", kIgnore, "|up=4294967295", "", kR},
    {"--scale=2.5 -s 0.125 -u 300", kIgnore, "|up=300 scale=0.125", "", kR},
    // Strings: the next word whatever it is, text after the first "=",
    // the rest of a short word.
    {"--file --json get", kIgnore, "get|file=--json", "", kR},
    {"--file=a=b", kIgnore, "|file=a=b", "", kR},
    {"-fpath get", kIgnore, "get|file=path", "", kR},
    {"-fv", kIgnore, "|file=v", "", kR},
    {"-vrfout.txt", kIgnore, "|verbose=1 perms=4 file=out.txt", "", kR},
    {"-vf in.txt -m aa:bb get", kIgnore, "get|verbose=1 file=in.txt mac=aa:bb", "", kR},
    // A value left over after "=" is taken by a later long option without
    // one; a short word replaces it.
    {"--json=1 --duration get", kIgnore, "get|json=1 duration=1", "", kR},
    {"--verbose=7 x --file", kIgnore, "x|verbose=1 file=7", "", kR},
    {"--json=1 -v --duration 3", kIgnore, "|json=1 verbose=1 duration=3", "", kR},
    {"--json=on --duration 5", kIgnore, "", "error: option `--duration` expects an integer value\n",
     1},
    // Stopping at the first word that is no option.
    {"--json get --verbose x", kStop, "get --verbose x|json=1", "", kR},
    {"-v - -v", kStop, "- -v|verbose=1", "", kR},
    {"a -- b", kStop, "a -- b|", "", kR},
    {"-v -- -v", kStop, "-v|verbose=1", "", kR},
    // Help, wherever it stands.
    {"-h", kIgnore, kHelp, "", 0},
    {"get --json --help x", kIgnore, kHelp, "", 0},
    {"-vh", kIgnore, kHelp, "", 0},
    {"--no-help", 0, kHelp, "error: unknown option `--no-help`\n", 1},
    {"get --bogus x", 0, kHelp, "error: unknown option `--bogus`\n", 1},
    {"-vq", 0, kHelp, "error: unknown option `-vq`\n", 1},
    // Option errors name the form that was given.
    {"get --duration", kIgnore, "", "error: option `--duration` requires a value\n", 1},
    {"-d", kIgnore, "", "error: option `-d` requires a value\n", 1},
    {"get -m", kIgnore, "", "error: option `-m` requires a value\n", 1},
    {"--duration=12x", kIgnore, "", "error: option `--duration` expects an integer value\n", 1},
    {"--duration=99999999999999999999", kIgnore, "",
     "error: option `--duration` numerical result out of range\n", 1},
    {"--up=5k", kIgnore, "", "error: option `--up` expects an unsigned integer value\n", 1},
    {"-u 99999999999999999999999", kIgnore, "",
     "error: option `-u` numerical result out of range\n", 1},
    // Held to the 32-bit gateway's long: past int is a range error on every
    // build, never a wrapped value.
    {"--duration=2147483647", kIgnore, "|duration=2147483647", "", kR},
    {"--duration=-2147483648", kIgnore, "|duration=-2147483648", "", kR},
    {"--duration=3000000000", kIgnore, "",
     "error: option `--duration` numerical result out of range\n", 1},
    {"--duration=-2147483649", kIgnore, "",
     "error: option `--duration` numerical result out of range\n", 1},
    {"--duration=0x100000000", kIgnore, "",
     "error: option `--duration` numerical result out of range\n", 1},
    {"--up=4294967295", kIgnore, "|up=4294967295", "", kR},
    {"--up=-4294967295", kIgnore, "|up=1", "", kR},
    {"--up=4294967296", kIgnore, "", "error: option `--up` numerical result out of range\n", 1},
    {"--up=-4294967296", kIgnore, "", "error: option `--up` numerical result out of range\n", 1},
    {"--scale=1.5x", kIgnore, "", "error: option `--scale` expects a numerical value\n", 1},
    {"--scale=1e39", kIgnore, "", "error: option `--scale` numerical result out of range\n", 1},
};

TEST(Argparse, ParsesKeepsAndReports) {
  for (const ParseCase &c : kParseCases) {
    SCOPED_TRACE(c.words);
    Outcome outcome = run_in_child([&c] {
      Words words(c.words);
      argparse parser;
      argparse_init(&parser, kOptions, kUsages, c.flags);
      fputs(report(words, argparse_parse(&parser, words.count(), words.vector.data())).c_str(),
            stdout);
    });
    EXPECT_EQ(outcome.status, c.status);
    EXPECT_EQ(outcome.out, c.out);
    EXPECT_EQ(outcome.err, c.err);
  }
}

int g_sensitivity, g_intensity;

const argparse_option kQosOptions[] = {
    OPT_HELP(),
    OPT_INTEGER(0, "sensitivity", &g_sensitivity, "The sensitivity of profile setting."),
    OPT_INTEGER(0, "intensity", &g_intensity, "The intensity of profile setting."),
    OPT_BOOLEAN(0, "json", &g_json, ""),
    OPT_STRING('m', nullptr, &g_mac, ""),
    OPT_END(),
};

// Entries 10, 19, 17, 6 and 8 wide, rounded up to 12, 20, 20, 8, 8: width 24.
const std::string kQosListing =
    "    -h, --help" + std::string(12, ' ') + "show this help message and exit\n"
    "    --sensitivity=<int>   The sensitivity of profile setting.\n"
    "    --intensity=<int>     The intensity of profile setting.\n"
    "    --json" + std::string(16, ' ') + "\n"
    "    -m=<str>" + std::string(14, ' ') + "\n";

TEST(Argparse, HelpText) {
  const char *const cut[] = {"vektool qos [options] <command> [args]", "vektool qos on", "",
                             "never", nullptr};
  const std::string usage = "Usage: vektool qos [options] <command> [args]\n   or: vektool qos on\n";
  const struct {
    const char *const *usages;
    const char *description, *epilog;
    std::string expected;
  } cases[] = {
      {cut, nullptr, nullptr, usage + "\n" + kQosListing},
      {cut, "\nBrief:", "\n<mode>: mode name.",
       usage + "\nBrief:\n\n" + kQosListing + "\n<mode>: mode name.\n"},
      {nullptr, nullptr, nullptr, "Usage:\n\n" + kQosListing},
  };
  for (const auto &c : cases) {
    Outcome outcome = run_in_child([&c] {
      argparse parser;
      argparse_init(&parser, kQosOptions, c.usages, kIgnore);
      argparse_describe(&parser, c.description, c.epilog);
      argparse_usage(&parser);
    });
    EXPECT_EQ(outcome.status, kReturned);
    EXPECT_EQ(outcome.out, c.expected);
    EXPECT_EQ(outcome.err, "");
  }
}

// Kinds above the last known one are reported without a newline and without
// stopping; one with a place to store into stops the process like an assert.
TEST(Argparse, BrokenTable) {
  static int odd;
  static const argparse_option table[] = {
      OPT_BOOLEAN('v', "verbose", &g_verbose, ""),
      {9, 'x', "odd", &odd, "", nullptr, 0, 0},
      {12, 0, nullptr, nullptr, "", nullptr, 0, 0},
      OPT_END(),
  };
  Outcome outcome = run_in_child([] {
    Words words("-v -x");
    argparse parser;
    argparse_init(&parser, table, nullptr, 0);
    argparse_parse(&parser, words.count(), words.vector.data());
  });
  EXPECT_EQ(outcome.status, -SIGABRT);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, std::string("wrong option type: 9wrong option type: 12") +
                             program_invocation_short_name +
                             ": src/argparse:134: argparse_getvalue: Assertion `0' failed.\n");
}

}  // namespace
