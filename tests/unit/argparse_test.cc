// Option parser: values stored per kind, words kept and their order, the exact
// error lines, statuses and help text. Runs that end the process are made in
// a child whose standard output and error go to files.
#include "argparse.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <functional>
#include <initializer_list>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace {

// ---------------------------------------------------------------- harness

std::string read_all(FILE *file) {
  std::string text;
  rewind(file);
  char chunk[4096];
  size_t count;
  while ((count = fread(chunk, 1, sizeof chunk, file)) > 0) text.append(chunk, count);
  return text;
}

struct FileCloser {
  void operator()(FILE *file) const { fclose(file); }
};
using OwnedFile = std::unique_ptr<FILE, FileCloser>;

struct Outcome {
  int status = 0;      // exit status, or minus the signal number
  std::string out;     // standard output
  std::string err;     // standard error
  std::string report;  // what the body wrote to its report file
};

// Marks a child whose body came back instead of ending the process.
constexpr int kReturned = 99;

// Every parse runs in a child: a parser that ends the process or loops where
// it should not fails one case instead of the whole run.
Outcome run_in_child(const std::function<void(FILE *report)> &body) {
  OwnedFile out(tmpfile());
  OwnedFile err(tmpfile());
  OwnedFile report(tmpfile());
  fflush(stdout);
  fflush(stderr);
  pid_t pid = fork();
  if (pid == 0) {
    alarm(5);
    dup2(fileno(out.get()), 1);
    dup2(fileno(err.get()), 2);
    body(report.get());
    fflush(nullptr);
    _exit(kReturned);
  }
  Outcome outcome;
  int wait_status = 0;
  waitpid(pid, &wait_status, 0);
  if (WIFEXITED(wait_status)) {
    outcome.status = WEXITSTATUS(wait_status);
  } else if (WIFSIGNALED(wait_status)) {
    outcome.status = -WTERMSIG(wait_status);
  }
  outcome.out = read_all(out.get());
  outcome.err = read_all(err.get());
  outcome.report = read_all(report.get());
  return outcome;
}

// A writable argument vector as main gets it: the words, then a null.
struct Args {
  std::vector<std::string> words;
  std::vector<char *> vector;

  explicit Args(const std::vector<const char *> &list) : words(list.begin(), list.end()) {
    for (std::string &word : words) vector.push_back(&word[0]);
    vector.push_back(nullptr);
  }
  int count() const { return static_cast<int>(words.size()); }
  char **data() { return vector.data(); }
  // True when `text` points into one of the words.
  bool owns(const char *text) const {
    for (const std::string &word : words) {
      if (text >= word.data() && text <= word.data() + word.size()) return true;
    }
    return false;
  }
};

// ------------------------------------------------------ the common table

struct Values {
  int json = 0;
  int verbose = 0;
  int perms = 0;
  int duration = 0;
  unsigned up = 0;
  float scale = 0;
  const char *file = nullptr;
  const char *mac = nullptr;

  Values &set_json(int v) { json = v; return *this; }
  Values &set_verbose(int v) { verbose = v; return *this; }
  Values &set_perms(int v) { perms = v; return *this; }
  Values &set_duration(int v) { duration = v; return *this; }
  Values &set_up(unsigned v) { up = v; return *this; }
  Values &set_scale(float v) { scale = v; return *this; }
  Values &set_file(const char *v) { file = v; return *this; }
  Values &set_mac(const char *v) { mac = v; return *this; }
};

Values V() { return Values(); }

// One line naming every value, the same for what a child stored and what a
// case expects.
std::string describe(const Values &v) {
  char line[512];
  snprintf(line, sizeof line, "json=%d verbose=%d perms=%d duration=%d up=%u scale=%g file=%s mac=%s",
           v.json, v.verbose, v.perms, v.duration, v.up, static_cast<double>(v.scale),
           v.file ? v.file : "(null)", v.mac ? v.mac : "(null)");
  return line;
}

// The words the parser left at the front and whether a null follows them.
std::string describe_words(char *const *words, int left) {
  std::string text = "left=" + std::to_string(left) + " words=";
  for (int i = 0; i < left; i++) text += std::string("[") + words[i] + "]";
  text += words[left] == nullptr ? " null-ended" : " not-null-ended";
  return text;
}

Values g_values;

const argparse_option kOptions[] = {
    OPT_HELP(),
    OPT_BOOLEAN(0, "json", &g_values.json, ""),
    OPT_BOOLEAN('v', "verbose", &g_values.verbose, "Print more."),
    OPT_BIT('r', "read", &g_values.perms, "Allow reading.", 4),
    OPT_BIT('w', "write", &g_values.perms, "Allow writing.", 2),
    OPT_INTEGER('d', "duration", &g_values.duration, "The duration in minutes."),
    OPT_UINTEGER('u', "up", &g_values.up, "Upstream rate."),
    OPT_FLOAT('s', "scale", &g_values.scale, "Scale factor."),
    OPT_STRING('f', "file", &g_values.file, "Input file."),
    OPT_STRING('m', nullptr, &g_values.mac, ""),
    OPT_END(),
};

const char *const kUsages[] = {
    "vektool tst [options] <command> [args]",
    "vektool tst get",
    "vektool tst set <value>",
    nullptr,
};

// Column width 24: the widest entry, "-d, --duration=<int>" (20), plus 4.
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

constexpr int kIgnore = ARGPARSE_IGNORE_UNKNOWN_ARGS;

// Test names come from the `name` member of each case.
template <typename Case>
std::string case_name(const ::testing::TestParamInfo<Case> &param) {
  return param.param.name;
}
constexpr int kStop = ARGPARSE_STOP_AT_NON_OPTION;

// ------------------------------------------------ parses that come back

struct ParseCase {
  const char *name;
  std::vector<const char *> args;  // element 0 is the group word
  int flags;
  Values initial;
  std::vector<std::string> kept;
  Values expected;
};

void PrintTo(const ParseCase &c, std::ostream *os) { *os << c.name; }

class ArgparseParseTest : public ::testing::TestWithParam<ParseCase> {};

TEST_P(ArgparseParseTest, KeepsWordsAndStoresValues) {
  const ParseCase &c = GetParam();
  Outcome outcome = run_in_child([&c](FILE *report) {
    g_values = c.initial;
    Args args(c.args);
    argparse parser;
    argparse_init(&parser, kOptions, kUsages, c.flags);
    int left = argparse_parse(&parser, args.count(), args.data());
    fprintf(report, "%s\n%s\n", describe_words(args.data(), left).c_str(),
            describe(g_values).c_str());
    // String values point into the vector; they are not copies.
    if (g_values.file) fprintf(report, "file in vector: %d\n", args.owns(g_values.file));
  });

  std::vector<char *> kept;
  for (const std::string &word : c.kept) kept.push_back(const_cast<char *>(word.c_str()));
  kept.push_back(nullptr);
  std::string expected = describe_words(kept.data(), static_cast<int>(c.kept.size())) + "\n" +
                         describe(c.expected) + "\n";
  if (c.expected.file) expected += "file in vector: 1\n";

  EXPECT_EQ(outcome.status, kReturned);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(outcome.report, expected);
}

const ParseCase kParseCases[] = {
    {"positional_words_only", {"grp", "get", "a", "b"}, kIgnore, V(), {"get", "a", "b"}, V()},
    {"nothing_after_group", {"grp"}, kIgnore, V(), {}, V()},
    {"options_anywhere",
     {"grp", "--json", "get", "-v", "a", "--duration", "5"}, kIgnore, V(), {"get", "a"},
     V().set_json(1).set_verbose(1).set_duration(5)},
    {"double_dash_ends_options", {"grp", "x", "--", "--json", "y"}, kIgnore, V(),
     {"x", "--json", "y"}, V()},
    {"words_after_double_dash_follow_kept_ones",
     {"grp", "a", "-v", "b", "--", "c", "-d"}, kIgnore, V(), {"a", "b", "c", "-d"},
     V().set_verbose(1)},
    {"lone_dash_is_positional", {"grp", "-", "get"}, kIgnore, V(), {"-", "get"}, V()},
    {"boolean_counts", {"grp", "--json", "--json", "-vvv"}, kIgnore, V(), {},
     V().set_json(2).set_verbose(3)},
    {"negation_lowers_counter", {"grp", "--json", "--json", "--no-json"}, kIgnore, V(), {},
     V().set_json(1)},
    {"negation_stops_at_zero", {"grp", "--no-json", "--no-json"}, kIgnore, V().set_json(1), {},
     V()},
    {"bits_set_and_cleared", {"grp", "-rw", "--no-read"}, kIgnore, V().set_perms(1), {},
     V().set_perms(3)},
    {"clearing_unset_bit_keeps_it_clear", {"grp", "--no-read"}, kIgnore, V().set_perms(1), {},
     V().set_perms(1)},
    {"bit_long_form", {"grp", "--write", "--read"}, kIgnore, V(), {}, V().set_perms(6)},
    {"longer_word_is_not_the_option", {"grp", "--jsonx", "get"}, kIgnore, V(), {"get"}, V()},
    {"unknown_long_dropped_value_stays", {"grp", "get", "--foo", "bar"}, kIgnore, V(),
     {"get", "bar"}, V()},
    {"unknown_short_dropped_value_stays", {"grp", "-i", "vek.ini", "get", "--log", "x.log"},
     kIgnore, V(), {"vek.ini", "get", "x.log"}, V()},
    {"string_cannot_be_negated", {"grp", "--no-file", "x"}, kIgnore, V(), {"x"}, V()},
    {"integer_decimal", {"grp", "--duration=42"}, kIgnore, V(), {}, V().set_duration(42)},
    {"integer_hex", {"grp", "--duration=0x10"}, kIgnore, V(), {}, V().set_duration(16)},
    {"integer_octal", {"grp", "--duration=010"}, kIgnore, V(), {}, V().set_duration(8)},
    {"integer_empty_is_zero", {"grp", "--duration="}, kIgnore, V().set_duration(7), {},
     V().set_duration(0)},
    {"integer_negative_next_word", {"grp", "-d", "-5", "get"}, kIgnore, V(), {"get"},
     V().set_duration(-5)},
    {"integer_attached_to_letter", {"grp", "-d12"}, kIgnore, V(), {}, V().set_duration(12)},
    {"unsigned_hex", {"grp", "--up=0x10"}, kIgnore, V(), {}, V().set_up(16)},
    {"unsigned_minus_one_wraps", {"grp", "--up=-1"}, kIgnore, V(), {}, V().set_up(4294967295u)},
    {"unsigned_next_word", {"grp", "-u", "300"}, kIgnore, V(), {}, V().set_up(300)},
    {"float_value", {"grp", "--scale=2.5"}, kIgnore, V(), {}, V().set_scale(2.5f)},
    {"float_short_next_word", {"grp", "-s", "0.125"}, kIgnore, V(), {}, V().set_scale(0.125f)},
    {"float_empty_is_zero", {"grp", "--scale="}, kIgnore, V().set_scale(3.0f), {}, V()},
    {"string_next_word_taken_whatever_it_is", {"grp", "--file", "--json", "get"}, kIgnore, V(),
     {"get"}, V().set_file("--json")},
    {"string_after_equals_keeps_equals", {"grp", "--file=a=b"}, kIgnore, V(), {},
     V().set_file("a=b")},
    {"string_attached_to_letter", {"grp", "-fpath", "get"}, kIgnore, V(), {"get"},
     V().set_file("path")},
    {"string_letter_takes_rest_even_an_option_letter", {"grp", "-fv"}, kIgnore, V(), {},
     V().set_file("v")},
    {"letters_before_string_letter", {"grp", "-vrfout.txt"}, kIgnore, V(), {},
     V().set_verbose(1).set_perms(4).set_file("out.txt")},
    {"string_letter_then_next_word", {"grp", "-vf", "in.txt"}, kIgnore, V(), {},
     V().set_verbose(1).set_file("in.txt")},
    {"short_only_string", {"grp", "-m", "aa:bb:cc:dd:ee:ff", "get"}, kIgnore, V(), {"get"},
     V().set_mac("aa:bb:cc:dd:ee:ff")},
    {"leftover_long_value_taken_later", {"grp", "--json=1", "--duration", "get"}, kIgnore, V(),
     {"get"}, V().set_json(1).set_duration(1)},
    {"leftover_long_value_survives_positional", {"grp", "--verbose=7", "x", "--file"}, kIgnore,
     V(), {"x"}, V().set_verbose(1).set_file("7")},
    {"short_word_clears_leftover_value", {"grp", "--json=1", "-v", "--duration", "3"}, kIgnore,
     V(), {}, V().set_json(1).set_verbose(1).set_duration(3)},
    {"stop_at_first_word", {"grp", "--json", "get", "--verbose", "x"}, kStop | kIgnore, V(),
     {"get", "--verbose", "x"}, V().set_json(1)},
    {"stop_at_lone_dash", {"grp", "-v", "-", "-v"}, kStop | kIgnore, V(), {"-", "-v"},
     V().set_verbose(1)},
    {"stop_keeps_double_dash_after_word", {"grp", "a", "--", "b"}, kStop | kIgnore, V(),
     {"a", "--", "b"}, V()},
    {"stop_flag_double_dash_first", {"grp", "-v", "--", "-v"}, kStop | kIgnore, V(), {"-v"},
     V().set_verbose(1)},
    {"known_options_without_ignore_flag", {"grp", "set", "-d", "3", "x"}, 0, V(), {"set", "x"},
     V().set_duration(3)},
};

INSTANTIATE_TEST_SUITE_P(Table, ArgparseParseTest, ::testing::ValuesIn(kParseCases),
                         case_name<ParseCase>);

// ------------------------------------------------ parses that end the run

struct ExitCase {
  const char *name;
  std::vector<const char *> args;
  int flags;
  int status;
  std::string out;
  std::string err;
};

void PrintTo(const ExitCase &c, std::ostream *os) { *os << c.name; }

class ArgparseExitTest : public ::testing::TestWithParam<ExitCase> {};

TEST_P(ArgparseExitTest, EndsWithExactOutputAndStatus) {
  const ExitCase &c = GetParam();
  Outcome outcome = run_in_child([&c](FILE *) {
    g_values = Values();
    Args args(c.args);
    argparse parser;
    argparse_init(&parser, kOptions, kUsages, c.flags);
    argparse_parse(&parser, args.count(), args.data());
  });
  EXPECT_EQ(outcome.status, c.status);
  EXPECT_EQ(outcome.out, c.out);
  EXPECT_EQ(outcome.err, c.err);
}

const ExitCase kExitCases[] = {
    {"short_help", {"grp", "-h"}, kIgnore, 0, kHelp, ""},
    {"long_help_after_other_words", {"grp", "get", "--json", "--help", "x"}, kIgnore, 0, kHelp,
     ""},
    {"help_with_value_text", {"grp", "--help=x"}, kIgnore, 0, kHelp, ""},
    {"help_grouped_after_letter", {"grp", "-vh"}, kIgnore, 0, kHelp, ""},
    {"help_cannot_be_negated", {"grp", "--no-help"}, 0, 1, kHelp,
     "error: unknown option `--no-help`\n"},
    {"unknown_long", {"grp", "get", "--bogus", "x"}, 0, 1, kHelp,
     "error: unknown option `--bogus`\n"},
    {"unknown_letter_in_group_names_whole_word", {"grp", "-vq"}, 0, 1, kHelp,
     "error: unknown option `-vq`\n"},
    {"longer_word_unknown", {"grp", "--jsonx"}, 0, 1, kHelp, "error: unknown option `--jsonx`\n"},
    {"long_requires_value", {"grp", "get", "--duration"}, kIgnore, 1, "",
     "error: option `--duration` requires a value\n"},
    {"short_requires_value", {"grp", "-d"}, kIgnore, 1, "",
     "error: option `-d` requires a value\n"},
    {"string_requires_value", {"grp", "--file"}, kIgnore, 1, "",
     "error: option `--file` requires a value\n"},
    {"short_only_requires_value", {"grp", "get", "-m"}, kIgnore, 1, "",
     "error: option `-m` requires a value\n"},
    {"integer_trailing_text", {"grp", "--duration=12x"}, kIgnore, 1, "",
     "error: option `--duration` expects an integer value\n"},
    {"integer_trailing_text_short", {"grp", "-d12x"}, kIgnore, 1, "",
     "error: option `-d` expects an integer value\n"},
    {"integer_next_word_not_a_number", {"grp", "--duration", "abc"}, kIgnore, 1, "",
     "error: option `--duration` expects an integer value\n"},
    {"integer_out_of_range", {"grp", "--duration=99999999999999999999"}, kIgnore, 1, "",
     "error: option `--duration` numerical result out of range\n"},
    {"unsigned_trailing_text", {"grp", "--up=5k"}, kIgnore, 1, "",
     "error: option `--up` expects an unsigned integer value\n"},
    {"unsigned_out_of_range", {"grp", "-u", "99999999999999999999999"}, kIgnore, 1, "",
     "error: option `-u` numerical result out of range\n"},
    {"float_trailing_text", {"grp", "--scale=1.5x"}, kIgnore, 1, "",
     "error: option `--scale` expects a numerical value\n"},
    {"float_out_of_range", {"grp", "--scale=1e999"}, kIgnore, 1, "",
     "error: option `--scale` numerical result out of range\n"},
    {"float_beyond_float_range", {"grp", "--scale=1e39"}, kIgnore, 1, "",
     "error: option `--scale` numerical result out of range\n"},
    {"leftover_value_checked_as_number", {"grp", "--json=on", "--duration", "5"}, kIgnore, 1, "",
     "error: option `--duration` expects an integer value\n"},
};

INSTANTIATE_TEST_SUITE_P(Table, ArgparseExitTest, ::testing::ValuesIn(kExitCases),
                         case_name<ExitCase>);

// ------------------------------------------------------------ help text

int g_sensitivity, g_intensity, g_json;
const char *g_mac;

const argparse_option kQosLike[] = {
    OPT_HELP(),
    OPT_INTEGER(0, "sensitivity", &g_sensitivity, "The sensitivity of profile setting."),
    OPT_INTEGER(0, "intensity", &g_intensity, "The intensity of profile setting."),
    OPT_BOOLEAN(0, "json", &g_json, ""),
    OPT_STRING('m', nullptr, &g_mac, ""),
    OPT_END(),
};

const argparse_option kWithHeading[] = {
    OPT_HELP(),
    OPT_GROUP("Basic options"),
    OPT_BOOLEAN(0, "negative", &g_json, "The offset value is negative."),
    OPT_END(),
};

const char *const kQosUsages[] = {"vektool qos [options] <command> [args]", "vektool qos on",
                                  nullptr};
const char *const kCutUsages[] = {"first", "second", "", "never", nullptr};

struct UsageCase {
  const char *name;
  const argparse_option *options;
  const char *const *usages;
  const char *description;
  const char *epilog;
  std::string expected;
};

void PrintTo(const UsageCase &c, std::ostream *os) { *os << c.name; }

class ArgparseUsageTest : public ::testing::TestWithParam<UsageCase> {};

TEST_P(ArgparseUsageTest, PrintsExactText) {
  const UsageCase &c = GetParam();
  Outcome outcome = run_in_child([&c](FILE *) {
    argparse parser;
    argparse_init(&parser, c.options, c.usages, kIgnore);
    argparse_describe(&parser, c.description, c.epilog);
    argparse_usage(&parser);
  });
  EXPECT_EQ(outcome.status, kReturned);
  EXPECT_EQ(outcome.out, c.expected);
  EXPECT_EQ(outcome.err, "");
}

// kQosLike: entries 10, 19, 17, 6, 8 wide, rounded to 12, 20, 20, 8, 8: width 24.
const std::string kQosOptions =
    "    -h, --help" + std::string(12, ' ') + "show this help message and exit\n"
    "    --sensitivity=<int>" + std::string(3, ' ') + "The sensitivity of profile setting.\n"
    "    --intensity=<int>" + std::string(5, ' ') + "The intensity of profile setting.\n"
    "    --json" + std::string(16, ' ') + "\n"
    "    -m=<str>" + std::string(14, ' ') + "\n";

// kWithHeading: entries 10 and 10 wide, rounded to 12: width 16.
const std::string kHeadingOptions =
    "    -h, --help" + std::string(4, ' ') + "show this help message and exit\n"
    "\nBasic options\n"
    "    --negative" + std::string(4, ' ') + "The offset value is negative.\n";

const UsageCase kUsageCases[] = {
    {"usage_lines_and_options", kQosLike, kQosUsages, nullptr, nullptr,
     "Usage: vektool qos [options] <command> [args]\n"
     "   or: vektool qos on\n"
     "\n" + kQosOptions},
    {"description_and_epilog", kQosLike, kQosUsages, "\nBrief:", "\n<mode>: mode name.",
     "Usage: vektool qos [options] <command> [args]\n"
     "   or: vektool qos on\n"
     "\nBrief:\n"
     "\n" + kQosOptions + "\n<mode>: mode name.\n"},
    {"no_usage_list", kQosLike, nullptr, nullptr, nullptr, "Usage:\n\n" + kQosOptions},
    {"empty_usage_ends_list", kWithHeading, kCutUsages, nullptr, nullptr,
     "Usage: first\n   or: second\n\n" + kHeadingOptions},
    {"group_heading", kWithHeading, kQosUsages, nullptr, "\n",
     "Usage: vektool qos [options] <command> [args]\n"
     "   or: vektool qos on\n"
     "\n" + kHeadingOptions + "\n\n"},
};

INSTANTIATE_TEST_SUITE_P(Table, ArgparseUsageTest, ::testing::ValuesIn(kUsageCases),
                         case_name<UsageCase>);

// ------------------------------------------------------------- callbacks

int g_level;
int g_seen_level;
int g_flag;
int g_calls;

int remember_level(argparse *, const argparse_option *option) {
  g_calls++;
  g_seen_level = *static_cast<int *>(option->value);
  return 0;
}

int refuse(argparse *, const argparse_option *) {
  g_calls++;
  return -2;
}

const argparse_option kCallbacks[] = {
    {ARGPARSE_OPT_INTEGER, 'l', "level", &g_level, "", remember_level, 0, 0},
    {ARGPARSE_OPT_BOOLEAN, 'k', "keep", nullptr, "", refuse, 0, 0},
    OPT_BOOLEAN('a', "all", &g_flag, ""),
    OPT_END(),
};

TEST(ArgparseCallback, RunsAfterValueIsStored) {
  Outcome outcome = run_in_child([](FILE *report) {
    Args args({"grp", "--level=3", "get", "-l", "9"});
    argparse parser;
    argparse_init(&parser, kCallbacks, nullptr, kIgnore);
    int left = argparse_parse(&parser, args.count(), args.data());
    fprintf(report, "%s calls=%d seen=%d level=%d\n", describe_words(args.data(), left).c_str(),
            g_calls, g_seen_level, g_level);
  });
  EXPECT_EQ(outcome.status, kReturned);
  EXPECT_EQ(outcome.report, "left=1 words=[get] null-ended calls=2 seen=9 level=9\n");
}

TEST(ArgparseCallback, RefusalDropsWholeWordWhenIgnoring) {
  Outcome outcome = run_in_child([](FILE *report) {
    Args args({"grp", "-ka", "get", "--keep", "x"});
    argparse parser;
    argparse_init(&parser, kCallbacks, nullptr, kIgnore);
    int left = argparse_parse(&parser, args.count(), args.data());
    // Letters after a refused one are not taken: `all` stays 0.
    fprintf(report, "%s calls=%d all=%d\n", describe_words(args.data(), left).c_str(), g_calls,
            g_flag);
  });
  EXPECT_EQ(outcome.status, kReturned);
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(outcome.report, "left=2 words=[get][x] null-ended calls=2 all=0\n");
}

TEST(ArgparseCallback, RefusalIsUnknownOptionOtherwise) {
  Outcome outcome = run_in_child([](FILE *) {
    Args args({"grp", "--keep"});
    argparse parser;
    argparse_init(&parser, kCallbacks, nullptr, 0);
    argparse_parse(&parser, args.count(), args.data());
  });
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "error: unknown option `--keep`\n");
  EXPECT_EQ(outcome.out, "Usage:\n\n"
                         "    -l, --level=<int>     \n"
                         "    -k, --keep" + std::string(12, ' ') + "\n"
                         "    -a, --all" + std::string(13, ' ') + "\n");
}

// ------------------------------------------------------ broken tables

int g_odd;

const argparse_option kOddKindNoValue[] = {
    OPT_BOOLEAN('v', "verbose", &g_flag, ""),
    {9, 'x', "odd", nullptr, "", nullptr, 0, 0},
    {12, 0, nullptr, nullptr, "", nullptr, 0, 0},
    OPT_END(),
};

const argparse_option kOddKindWithValue[] = {
    {9, 'x', "odd", &g_odd, "", nullptr, 0, 0},
    OPT_END(),
};

TEST(ArgparseTable, UnknownKindIsReportedAndParsingGoesOn) {
  Outcome outcome = run_in_child([](FILE *report) {
    Args args({"grp", "--odd", "get", "-v"});
    argparse parser;
    argparse_init(&parser, kOddKindNoValue, nullptr, 0);
    int left = argparse_parse(&parser, args.count(), args.data());
    fprintf(report, "%s verbose=%d\n", describe_words(args.data(), left).c_str(), g_flag);
  });
  EXPECT_EQ(outcome.status, kReturned);
  EXPECT_EQ(outcome.err, "wrong option type: 9wrong option type: 12");
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.report, "left=1 words=[get] null-ended verbose=1\n");
}

TEST(ArgparseTable, UnknownKindWithValueAborts) {
  Outcome outcome = run_in_child([](FILE *) {
    Args args({"grp", "-x"});
    argparse parser;
    argparse_init(&parser, kOddKindWithValue, nullptr, 0);
    argparse_parse(&parser, args.count(), args.data());
  });
  EXPECT_EQ(outcome.status, -SIGABRT);
  EXPECT_EQ(outcome.err, std::string("wrong option type: 9") + program_invocation_short_name +
                             ": src/argparse:134: argparse_getvalue: Assertion `0' failed.\n");
}

}  // namespace
