// Option parser of the command groups: walks an argument vector against a
// table of option records, stores values, removes the options and leaves the
// positional words at the front of the vector. Also prints a group's help.
#pragma once

#include <cstdint>

struct argparse;
struct argparse_option;

typedef int argparse_callback(argparse *self, const argparse_option *option);

enum argparse_option_type {
  ARGPARSE_OPT_END = 0,
  ARGPARSE_OPT_GROUP = 1,
  ARGPARSE_OPT_BOOLEAN = 2,
  ARGPARSE_OPT_BIT = 3,
  ARGPARSE_OPT_INTEGER = 4,
  ARGPARSE_OPT_UINTEGER = 5,
  ARGPARSE_OPT_FLOAT = 6,
  ARGPARSE_OPT_STRING = 7,
};

// Parser flags.
enum {
  ARGPARSE_STOP_AT_NON_OPTION = 1,
  ARGPARSE_IGNORE_UNKNOWN_ARGS = 2,
};

// Option flags.
enum {
  OPT_NONEG = 1,  // no "--no-" form
};

struct argparse_option {
  int type;
  int short_name;         // 0: none
  const char *long_name;  // null: none
  void *value;            // may be null
  const char *help;
  argparse_callback *callback;
  intptr_t data;          // bit mask of the bit kind
  int flags;
};

struct argparse {
  const argparse_option *options;
  const char *const *usages;  // ended by a null or an empty entry
  const char *usage_text;     // or the lines in one text, each ended by "\0"
  int flags;
  const char *description;
  const char *epilog;
  int argc;                   // words not yet looked at
  char **argv;                // cursor
  char **out;                 // the vector being rewritten (the input itself)
  int cpidx;                  // positional words kept so far
  const char *optvalue;       // value text pending for the current option
};

int argparse_init(argparse *self, const argparse_option *options,
                  const char *const *usages, int flags);
void argparse_describe(argparse *self, const char *description, const char *epilog);
// Gives the usage lines as one text instead (each line ended by "\0", the
// text's own terminator ending the list): a table of pointers would cost a
// relocation each at every start, for a text only help prints.
void argparse_usage_text(argparse *self, const char *text);
// Returns the number of words left at the front of argv (a null follows them).
// Element 0 (the group word) is skipped and overwritten.
int argparse_parse(argparse *self, int argc, char **argv);
void argparse_usage(argparse *self);
// Prints the help and ends the process with status 0.
int argparse_help_cb(argparse *self, const argparse_option *option);

// Table builders. An empty help text is kept as a null, which the help
// prints the same: a pointer costs a relocation at every start.
constexpr const char *opt_help(const char *help) { return help && help[0] ? help : nullptr; }
constexpr argparse_option OPT_END() { return {ARGPARSE_OPT_END, 0, nullptr, nullptr, nullptr, nullptr, 0, 0}; }
constexpr argparse_option OPT_HELP() {
  return {ARGPARSE_OPT_BOOLEAN, 'h', "help", nullptr, "show this help message and exit",
          argparse_help_cb, 0, OPT_NONEG};
}
constexpr argparse_option OPT_GROUP(const char *heading) {
  return {ARGPARSE_OPT_GROUP, 0, nullptr, nullptr, heading, nullptr, 0, 0};
}
constexpr argparse_option OPT_BOOLEAN(int s, const char *l, int *v, const char *help) {
  return {ARGPARSE_OPT_BOOLEAN, s, l, v, opt_help(help), nullptr, 0, 0};
}
constexpr argparse_option OPT_BIT(int s, const char *l, int *v, const char *help, intptr_t mask) {
  return {ARGPARSE_OPT_BIT, s, l, v, opt_help(help), nullptr, mask, 0};
}
constexpr argparse_option OPT_INTEGER(int s, const char *l, int *v, const char *help) {
  return {ARGPARSE_OPT_INTEGER, s, l, v, opt_help(help), nullptr, 0, 0};
}
constexpr argparse_option OPT_UINTEGER(int s, const char *l, unsigned *v, const char *help) {
  return {ARGPARSE_OPT_UINTEGER, s, l, v, opt_help(help), nullptr, 0, 0};
}
constexpr argparse_option OPT_FLOAT(int s, const char *l, float *v, const char *help) {
  return {ARGPARSE_OPT_FLOAT, s, l, v, opt_help(help), nullptr, 0, 0};
}
constexpr argparse_option OPT_STRING(int s, const char *l, const char **v, const char *help) {
  return {ARGPARSE_OPT_STRING, s, l, v, opt_help(help), nullptr, 0, 0};
}
