// Option parser of the command groups. Options are removed from the vector in
// place; the positional words move to its front, followed by a null.
#include "argparse.h"

// Declares the C library's report of a failed assert in every build.
#undef NDEBUG
#include <assert.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "sys/scan.h"
#include "sys/text.h"

namespace {

// Returned by a callback to have its word treated as an unknown option.
constexpr int kUnknownOption = -2;

enum { OPT_LONG = 1, OPT_UNSET = 2 };

[[noreturn]] void option_error(const argparse_option *opt, const char *reason, int flags) {
  if (flags & OPT_LONG) {
    fprintf(stderr, "error: option `--%s` %s\n", opt->long_name, reason);
  } else {
    fprintf(stderr, "error: option `-%c` %s\n", opt->short_name, reason);
  }
  exit(1);
}

// A record of a kind the parser does not know, but with a place to store into,
// is a broken table: stop the way a failed assert does, also in builds that
// compile asserts out.
[[noreturn]] void bad_kind() {
  // The C library's own report of a failed assert; the program name it
  // prints is looked up only here, not at every start.
  __assert_fail("0", "src/argparse", 134u, "argparse_getvalue");
}

// The value text of a kind that takes one: the pending text after "=" or
// after a short letter, else the next word (whatever it looks like).
const char *take_value_text(argparse *self, const argparse_option *opt, int flags) {
  if (self->optvalue) {
    const char *text = self->optvalue;
    self->optvalue = nullptr;
    return text;
  }
  if (self->argc > 1) {
    self->argc--;
    self->argv++;
    return *self->argv;
  }
  option_error(opt, "requires a value", flags);
}

int argparse_getvalue(argparse *self, const argparse_option *opt, int flags) {
  if (opt->value) {
    switch (opt->type) {
      case ARGPARSE_OPT_BOOLEAN: {
        int *counter = static_cast<int *>(opt->value);
        if (flags & OPT_UNSET) {
          (*counter)--;
        } else {
          (*counter)++;
        }
        if (*counter < 0) *counter = 0;
        break;
      }
      case ARGPARSE_OPT_BIT: {
        int *bits = static_cast<int *>(opt->value);
        if (flags & OPT_UNSET) {
          *bits &= ~static_cast<int>(opt->data);
        } else {
          *bits |= static_cast<int>(opt->data);
        }
        break;
      }
      case ARGPARSE_OPT_STRING:
        *static_cast<const char **>(opt->value) = take_value_text(self, opt, flags);
        break;
      case ARGPARSE_OPT_INTEGER: {
        const char *text = take_value_text(self, opt, flags);
        char *end = nullptr;
        // Held to int as on the 32-bit gateway, whose long is an int: a value
        // past it is a range error there, not a wrapped number.
        errno = 0;
        long number = strtol32(text, &end, 0);
        if (errno == ERANGE) option_error(opt, "numerical result out of range", flags);
        if (*end != '\0') option_error(opt, "expects an integer value", flags);
        *static_cast<int *>(opt->value) = static_cast<int>(number);
        break;
      }
      case ARGPARSE_OPT_UINTEGER: {
        const char *text = take_value_text(self, opt, flags);
        char *end = nullptr;
        errno = 0;
        unsigned long number = strtoul32(text, &end, 0);
        if (errno == ERANGE) option_error(opt, "numerical result out of range", flags);
        if (*end != '\0') option_error(opt, "expects an unsigned integer value", flags);
        *static_cast<unsigned *>(opt->value) = static_cast<unsigned>(number);
        break;
      }
      case ARGPARSE_OPT_FLOAT: {
        const char *text = take_value_text(self, opt, flags);
        char *end = nullptr;
        errno = 0;
        float number = strtof(text, &end);
        if (errno == ERANGE) option_error(opt, "numerical result out of range", flags);
        if (*end != '\0') option_error(opt, "expects a numerical value", flags);
        *static_cast<float *>(opt->value) = number;
        break;
      }
      default:
        bad_kind();
    }
  }
  if (opt->callback) return opt->callback(self, opt);
  return 0;
}

void check_options(const argparse_option *options) {
  for (; options->type != ARGPARSE_OPT_END; options++) {
    if (options->type > ARGPARSE_OPT_STRING) {
      fprintf(stderr, "wrong option type: %d", options->type);
    }
  }
}

// One word after a single dash: the first letter, then every letter left in
// the pending text that the previous option did not take as its value.
int short_opt(argparse *self) {
  const char *word = self->argv[0];
  int letter = static_cast<unsigned char>(word[1]);
  const char *rest = word + 2;
  for (;;) {
    const argparse_option *opt = self->options;
    while (opt->type != ARGPARSE_OPT_END && opt->short_name != letter) opt++;
    if (opt->type == ARGPARSE_OPT_END) return kUnknownOption;
    self->optvalue = *rest ? rest : nullptr;
    int result = argparse_getvalue(self, opt, 0);
    if (result == kUnknownOption) return result;
    if (!self->optvalue) return 0;
    letter = static_cast<unsigned char>(self->optvalue[0]);
    rest = self->optvalue + 1;
  }
}

// One word after a double dash. The pending text is only replaced when the
// word has "=": a long option without one may take a text left over from an
// earlier word.
int long_opt(argparse *self) {
  const char *text = self->argv[0] + 2;
  for (const argparse_option *opt = self->options; opt->type != ARGPARSE_OPT_END; opt++) {
    if (!opt->long_name) continue;
    size_t length = strlen(opt->long_name);
    const char *candidate = nullptr;
    int flags = OPT_LONG;
    if (begins_with(text, opt->long_name)) {
      candidate = text;
    } else if ((opt->type == ARGPARSE_OPT_BOOLEAN || opt->type == ARGPARSE_OPT_BIT) &&
               !(opt->flags & OPT_NONEG) && begins_with(text, "no-") &&
               begins_with(text + 3, opt->long_name)) {
      candidate = text + 3;
      flags |= OPT_UNSET;
    } else {
      continue;
    }
    char after = candidate[length];
    if (after == '=') {
      self->optvalue = candidate + length + 1;
    } else if (after != '\0') {
      continue;  // "--jsonx" is not "--json"
    }
    return argparse_getvalue(self, opt, flags);
  }
  return kUnknownOption;
}

const char *value_suffix(int type) {
  switch (type) {
    case ARGPARSE_OPT_INTEGER: return "=<int>";
    case ARGPARSE_OPT_UINTEGER: return "=<uint>";
    case ARGPARSE_OPT_FLOAT: return "=<flt>";
    case ARGPARSE_OPT_STRING: return "=<str>";
    default: return "";
  }
}

// Characters a record's entry takes in the option column: "-x", ", ",
// "--long" and the value suffix.
size_t option_column_length(const argparse_option *opt) {
  size_t length = 0;
  if (opt->short_name) length += 2;
  if (opt->long_name) length += strlen(opt->long_name) + 2;
  if (opt->short_name && opt->long_name) length += 2;
  return length + strlen(value_suffix(opt->type));
}

}  // namespace

int argparse_init(argparse *self, const argparse_option *options,
                  const char *const *usages, int flags) {
  memset(self, 0, sizeof *self);
  self->options = options;
  self->usages = usages;
  self->flags = flags;
  return 0;
}

void argparse_describe(argparse *self, const char *description, const char *epilog) {
  self->description = description;
  self->epilog = epilog;
}

void argparse_usage_text(argparse *self, const char *text) { self->usage_text = text; }

int argparse_parse(argparse *self, int argc, char **argv) {
  self->argc = argc - 1;
  self->argv = argv + 1;
  self->out = argv;
  self->cpidx = 0;
  check_options(self->options);

  for (; self->argc > 0; self->argc--, self->argv++) {
    const char *word = self->argv[0];
    if (word[0] != '-' || word[1] == '\0') {
      if (self->flags & ARGPARSE_STOP_AT_NON_OPTION) break;
      self->out[self->cpidx++] = self->argv[0];
      continue;
    }
    int result;
    if (word[1] != '-') {
      result = short_opt(self);
    } else if (word[2] == '\0') {
      self->argc--;
      self->argv++;
      break;
    } else {
      result = long_opt(self);
    }
    if (result != kUnknownOption) continue;
    if (self->flags & ARGPARSE_IGNORE_UNKNOWN_ARGS) continue;
    // The cursor may have moved onto a value word taken by the option.
    fprintf(stderr, "error: unknown option `%s`\n", self->argv[0]);
    argparse_usage(self);
    exit(1);
  }

  // Words left after a stop go behind the kept ones; the move may overlap.
  memmove(self->out + self->cpidx, self->argv, static_cast<size_t>(self->argc) * sizeof *self->argv);
  self->out[self->cpidx + self->argc] = nullptr;
  return self->cpidx + self->argc;
}

void argparse_usage(argparse *self) {
  if (self->usage_text && self->usage_text[0]) {
    const char *line = self->usage_text;
    printf("Usage: %s\n", line);
    for (line += strlen(line) + 1; *line; line += strlen(line) + 1) printf("   or: %s\n", line);
  } else if (self->usages && self->usages[0]) {
    const char *const *usage = self->usages;
    printf("Usage: %s\n", *usage++);
    for (; *usage && **usage; usage++) printf("   or: %s\n", *usage);
  } else {
    fputs("Usage:\n", stdout);
  }
  if (self->description) printf("%s\n", self->description);
  fputc('\n', stdout);

  size_t width = 0;
  for (const argparse_option *opt = self->options; opt->type != ARGPARSE_OPT_END; opt++) {
    size_t length = option_column_length(opt);
    length = (length + 3) / 4 * 4;
    if (length > width) width = length;
  }
  width += 4;

  for (const argparse_option *opt = self->options; opt->type != ARGPARSE_OPT_END; opt++) {
    const char *help = opt->help ? opt->help : "";
    if (opt->type == ARGPARSE_OPT_GROUP) {
      printf("\n%s\n", help);
      continue;
    }
    fputs("    ", stdout);
    if (opt->short_name) printf("-%c", opt->short_name);
    if (opt->short_name && opt->long_name) fputs(", ", stdout);
    if (opt->long_name) printf("--%s", opt->long_name);
    fputs(value_suffix(opt->type), stdout);
    // Counted, not taken from printf: output errors are ignored.
    size_t column = 4 + option_column_length(opt);
    size_t padding;
    if (column <= width) {
      padding = width - column;
    } else {
      fputc('\n', stdout);
      padding = width;
    }
    printf("%*s%s\n", static_cast<int>(padding) + 2, "", help);
  }

  if (self->epilog) printf("%s\n", self->epilog);
}

int argparse_help_cb(argparse *self, const argparse_option *option) {
  (void)option;
  argparse_usage(self);
  exit(0);
}
