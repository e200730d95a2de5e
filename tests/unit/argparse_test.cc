// Option parser: the words kept and their order, the values stored per kind,
// the exact error lines, statuses and help text. Every parse runs in a child
// whose standard output and error go to files, so one that ends the process
// (or loops) fails one case instead of the whole run.
#include "argparse.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <sstream>

namespace {

constexpr int kR = 99;  // the child's body came back instead of ending it

struct Outcome {
  int status;
  std::string out, err;
};

template <typename Body>
Outcome run_in_child(Body body) {
  FILE *files[2] = {tmpfile(), tmpfile()};
  fflush(nullptr);
  pid_t pid = fork();
  if (pid == 0) {
    alarm(5);
    dup2(fileno(files[0]), 1);
    dup2(fileno(files[1]), 2);
    body();
    fflush(nullptr);
    _exit(kR);
  }
  int status = 0;
  waitpid(pid, &status, 0);
  Outcome outcome{WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status), "", ""};
  for (std::string *text : {&outcome.out, &outcome.err}) {
    FILE *file = files[text == &outcome.err];
    rewind(file);
    for (int c; (c = fgetc(file)) != EOF;) *text += static_cast<char>(c);
    fclose(file);
  }
  return outcome;
}

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
    OPT_INTEGER(0, "sensitivity", &g_duration, "The sensitivity of profile setting."),
    OPT_STRING('m', nullptr, &g_mac, ""),
    OPT_END(),
};

// Entries rounded up to a multiple of 4 (the widest, 20) plus 4: help from column 26.
const std::string kUsage = "Usage: vektool tst [options] <command> [args]\n   or: vektool tst get\n";
const std::string kListing =
    "    -h, --help            show this help message and exit\n"
    "    --json                \n"
    "    -v, --verbose         Print more.\n"
    "    -r, --read            Allow reading.\n"
    "    -w, --write           Allow writing.\n"
    "    -d, --duration=<int>  The duration in minutes.\n"
    "    -u, --up=<uint>       Upstream rate.\n"
    "    -s, --scale=<flt>     Scale factor.\n"
    "    -f, --file=<str>      Input file.\n"
    "    --sensitivity=<int>   The sensitivity of profile setting.\n"
    "    -m=<str>              \n";
const std::string kHelp = kUsage + "\nBrief:\n\n" + kListing + "\n<mode>: mode name.\n";
const char *const kUsages[] = {"vektool tst [options] <command> [args]", "vektool tst get", "", "never", nullptr};

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
};

// "kept words|values that are not zero".
std::string report(const Words &words, int left) {
  std::string text;
  for (int i = 0; i < left; i++) text += (i ? " " : "") + std::string(words.vector[i]);
  if (words.vector[left]) text += " (no null)";
  text += "|";
  auto put = [&text](const std::string &item) { text += (text.back() == '|' ? "" : " ") + item; };
  for (auto [name, value] : {std::pair<const char *, long long>{"json", g_json}, {"verbose", g_verbose},
                             {"perms", g_perms}, {"duration", g_duration}, {"up", g_up}})
    if (value) put(name + ("=" + std::to_string(value)));
  if (g_scale != 0) put("scale=" + std::to_string(g_scale).substr(0, 5));
  if (g_file) put(std::string("file=") + g_file);
  if (g_mac) put(std::string("mac=") + g_mac);
  return text;
}

constexpr int kIgnore = ARGPARSE_IGNORE_UNKNOWN_ARGS;
constexpr int kStop = ARGPARSE_STOP_AT_NON_OPTION | ARGPARSE_IGNORE_UNKNOWN_ARGS;

TEST(Argparse, ParsesKeepsAndReports) {
  const struct { const char *words; int flags; std::string out, err; int status; } cases[] = {
      {"", kIgnore, "|", "", kR},
      {"get a --json b -v --duration 5", kIgnore, "get a b|json=1 verbose=1 duration=5", "", kR},
      {"a -v b -- c --json -d", kIgnore, "a b c --json -d|verbose=1", "", kR},
      {"- get", kIgnore, "- get|", "", kR},
      // Counters count; negation lowers them by one but never below 0.
      {"--json --json --no-json --no-verbose --no-verbose -vvv", kIgnore, "|json=1 verbose=3", "", kR},
      {"-rw --no-read --no-read", kIgnore, "|perms=2", "", kR},
      // Unknown words are dropped; a value word after one stays positional.
      {"-i vek.ini get --foo bar", kIgnore, "vek.ini get bar|", "", kR},
      {"--jsonx --no-file get", kIgnore, "get|", "", kR},
      {"--duration=0x10 -u 010", kIgnore, "|duration=16 up=8", "", kR},
      {"--duration=5 --duration=", kIgnore, "|", "", kR},
      {"-d -5 get", kIgnore, "get|duration=-5", "", kR},
      {"-d12 --up=-1", kIgnore, "|duration=12 up=4294967295", "", kR},
      // Strings: the next word whatever it is, the text after the first "=", the rest of a short word.
      {"--scale=2.5 -s 0.125 --file --json get", kIgnore, "get|scale=0.125 file=--json", "", kR},
      {"-vrfout.txt", kIgnore, "|verbose=1 perms=4 file=out.txt", "", kR},
      {"-vf in.txt -m aa:bb get", kIgnore, "get|verbose=1 file=in.txt mac=aa:bb", "", kR},
      // A value left over after "=" goes to a later long option without one; a short word replaces it.
      {"--json=1 --duration get", kIgnore, "get|json=1 duration=1", "", kR},
      {"--verbose=7 x --file", kIgnore, "x|verbose=1 file=7", "", kR},
      {"--json=on --duration 5", kIgnore, "", "error: option `--duration` expects an integer value\n", 1},
      {"--json get --verbose x", kStop, "get --verbose x|json=1", "", kR},
      {"-v -- -v", kStop, "-v|verbose=1", "", kR},
      // Help wherever it stands; unknown options refused with the help when not ignored.
      {"get --json --help x", kIgnore, kHelp, "", 0},
      {"--no-help", 0, kHelp, "error: unknown option `--no-help`\n", 1},
      {"-vq", 0, kHelp, "error: unknown option `-vq`\n", 1},
      // Option errors name the form given; numbers are held to the 32-bit gateway's long.
      {"get --duration", kIgnore, "", "error: option `--duration` requires a value\n", 1},
      {"--duration=12x", kIgnore, "", "error: option `--duration` expects an integer value\n", 1},
      {"--scale=1.5x", kIgnore, "", "error: option `--scale` expects a numerical value\n", 1},
      {"--scale=1e39", kIgnore, "", "error: option `--scale` numerical result out of range\n", 1},
      {"--duration=2147483647 --up=-4294967295", kIgnore, "|duration=2147483647 up=1", "", kR},
      {"--duration=-2147483649", kIgnore, "", "error: option `--duration` numerical result out of range\n", 1},
      {"-d 0x100000000", kIgnore, "", "error: option `-d` numerical result out of range\n", 1},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.words);
    Outcome outcome = run_in_child([&c] {
      Words words(c.words);
      argparse parser;
      argparse_init(&parser, kOptions, kUsages, c.flags);
      argparse_describe(&parser, "\nBrief:", "\n<mode>: mode name.");
      int left = argparse_parse(&parser, static_cast<int>(words.words.size()), words.vector.data());
      fputs(report(words, left).c_str(), stdout);
    });
    EXPECT_EQ(outcome.status, c.status);
    EXPECT_EQ(outcome.out, c.out);
    EXPECT_EQ(outcome.err, c.err);
  }
}

}  // namespace
