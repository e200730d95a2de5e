// Option parser as every group sets it up (unknown options ignored): the words
// kept, the values stored, the exact errors and statuses (the help of every
// group: the transcripts). Each parse runs in a child, so one that ends the
// process fails one case.
#include "argparse.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <iterator>
#include <sstream>

namespace {

constexpr int kR = 99;  // the parse came back instead of ending the process
int g_json, g_verbose, g_duration, g_sensitivity, g_bits;  // zero in every child: the parent never parses
const char *g_file, *g_mac;

const argparse_option kOptions[] = {
    OPT_HELP(),
    OPT_BOOLEAN(0, "json", &g_json, ""),      OPT_BOOLEAN('v', "verbose", &g_verbose, ""),
    OPT_INTEGER('d', "duration", &g_duration, ""), OPT_STRING('f', "file", &g_file, ""),
    OPT_INTEGER(0, "sensitivity", &g_sensitivity, ""), OPT_STRING('m', nullptr, &g_mac, ""),
    OPT_BIT('r', "read", &g_bits, "", 4),  // no group has one yet
    OPT_END(),
};

// Parses "grp WORDS" in a child; its output is "kept words|values not zero".
std::string parse(const std::string &line, int flags, int *status) {
  FILE *out = tmpfile();
  fflush(nullptr);
  pid_t pid = fork();
  if (pid == 0) {
    alarm(5);
    dup2(fileno(out), 1), dup2(fileno(out), 2);
    std::istringstream in("grp " + line);
    std::vector<std::string> words{std::istream_iterator<std::string>(in), {}};
    std::vector<char *> vector;
    for (std::string &word : words) vector.push_back(&word[0]);
    vector.push_back(nullptr);
    argparse parser;
    argparse_init(&parser, kOptions, nullptr, flags);
    int left = argparse_parse(&parser, static_cast<int>(words.size()), vector.data());
    for (int i = 0; i < left; i++) printf(i ? " %s" : "%s", vector[i]);
    printf("%s|", vector[left] ? " (no null)" : "");
    for (auto [name, value] : {std::pair<const char *, int>{"json", g_json}, {"verbose", g_verbose},
                               {"duration", g_duration}, {"sensitivity", g_sensitivity}, {"bits", g_bits}})
      if (value) printf(" %s=%d", name, value);
    if (g_file) printf(" file=%s", g_file);
    if (g_mac) printf(" mac=%s", g_mac);
    fflush(nullptr);
    _exit(kR);
  }
  waitpid(pid, status, 0);
  *status = WIFEXITED(*status) ? WEXITSTATUS(*status) : -1;
  std::string text;
  rewind(out);
  for (int c; (c = fgetc(out)) != EOF;) text += static_cast<char>(c);
  fclose(out);
  return text;
}

TEST(Argparse, ParsesKeepsAndReports) {
  const struct { const char *words; std::string out; int status, flags = ARGPARSE_IGNORE_UNKNOWN_ARGS; } cases[] = {
      {"", "|", kR},
      {"get a --json b -v --duration 5", "get a b| json=1 verbose=1 duration=5", kR},
      {"a -v b -- c --json -d", "a b c --json -d| verbose=1", kR},
      {"- get", "- get|", kR},
      // Counters count; negation lowers them by one but never below 0.
      {"--json --json --no-json --no-verbose --no-verbose -vvv", "| json=1 verbose=3", kR},
      {"-r --no-read -rr", "| bits=4", kR},
      // Unknown words are dropped (help cannot be negated); a value word after one stays positional.
      {"-i vek.ini get --foo bar --no-help", "vek.ini get bar|", kR},
      {"--jsonx --no-file get", "get|", kR},
      // Numbers in any base, held to the 32-bit gateway's long; a string is the next word whatever it is.
      {"--sensitivity=0X1F -d 010", "| duration=8 sensitivity=31", kR},
      {"--duration=5 --duration=", "|", kR},
      {"-d -5 get --file --json", "get| duration=-5 file=--json", kR},
      {"-d12 --duration=2147483647", "| duration=2147483647", kR},
      {"-vfout.txt", "| verbose=1 file=out.txt", kR},
      {"-vf in.txt -m aa:bb get", "get| verbose=1 file=in.txt mac=aa:bb", kR},
      // A value left over after "=" goes to a later long option without one; a short word replaces it.
      {"--json=1 --duration get", "get| json=1 duration=1", kR},
      {"--verbose=7 x --file", "x| verbose=1 file=7", kR},
      {"--json=on --duration 5", "error: option `--duration` expects an integer value\n", 1},
      // Errors name the form given.
      {"get --duration", "error: option `--duration` requires a value\n", 1},
      {"get -d", "error: option `-d` requires a value\n", 1},
      {"--duration=12x", "error: option `--duration` expects an integer value\n", 1},
      {"--duration=-2147483649", "error: option `--duration` numerical result out of range\n", 1},
      {"-d 0x100000000", "error: option `-d` numerical result out of range\n", 1},
      // Refused when the caller does not ignore them (the help follows: help.t).
      {"-vq", "error: unknown option `-vq`\n", 1, 0}, {"--no-help", "error: unknown option `--no-help`\n", 1, 0},
  };
  for (const auto &c : cases) {
    int status = 0;
    std::string out = parse(c.words, c.flags, &status);
    EXPECT_EQ(c.flags ? out : out.substr(0, out.find('\n') + 1), c.out) << c.words;
    EXPECT_EQ(status, c.status) << c.words;
  }
}

}  // namespace
