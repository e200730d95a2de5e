// The frame every command group follows: parse the group's options, look the
// command word up in the group's table, run its handler.
#pragma once

#include <cstddef>

#include "argparse.h"
#include "sys/text.h"

// Handlers get the command word as element 0 and its positional arguments
// after it (options already removed); the result is the exit status.
typedef int command_handler(int argc, char **argv);

// The name is held in the row itself: a pointer to it would be one more
// relocation for the dynamic loader at every start.
struct CommandEntry {
  char name[32];
  command_handler *handler;
};

struct GroupFrame {
  const char *usage;                // lines each ended by "\0" (argparse_usage_text)
  const argparse_option *options;   // ended by OPT_END(), help first
  const CommandEntry *commands;
  size_t command_count;
  const char *description;          // null: none
  const char *epilog;               // null: none
  bool describe_after_parse;        // attach description/epilog only after parsing
  // Runs after parsing and before the lookup (the vek group applies its
  // options to the configuration here). Null: nothing.
  void (*after_parse)();
};

template <size_t N>
constexpr size_t countof(const CommandEntry (&)[N]) { return N; }

// Parses (unknown options are dropped), then runs the first command whose name
// matches exactly. No command word or no match: 1, with no output.
int group_run(const GroupFrame &frame, int argc, char **argv);

// Success: code 0 without a detail; returns 0. Verbs written to the engine
// are not checked, so a command that wrote them reports this whatever the
// engine made of them.
int report_ok();
// Writes one verb to a control file and reports success, whatever the
// engine made of it; returns 0.
int write_verb_ok(const char *path, const char *verb);
// The same for a numbered verb without arguments ("510").
int write_verb_ok(const char *path, int verb);

// Uniform argument errors: report code 1 with the detail, return 1.
int wrong_arg_number(int argc);  // "Wrong arg number: %d"

// Arguments of the traffic-shaping groups (qos, dev, limiter).
// A positional integer: strtol base 10 with no further check, held to the
// range of int as on the 32-bit gateways ("abc" is 0).
int arg_int(const char *text);
int wrong_arg(int value);               // "Wrong arg: %d", returns 1
int wrong_arg_text(const char *text);   // "Wrong arg: %s", returns 1
// Argument errors and control-file reads of the policy and service groups
// (iam, gc, ss, cloud, diag, dt).
int invalid_arg(const char *text);  // "invalid arg: %s", returns 1
int failed_to_read();               // "Failed to read.", returns 1
// A JSON text (from the engine, or built by the command) as the result:
// JSON mode prints it as the bare member {"return":0,"result":<text>} and a
// line end, plain mode the text and a line end. Returns 0.
int print_json_result(const char *text);
// The same without the line end in JSON mode, as the qos and dev commands
// have always answered.
int print_json_result_unended(const char *text);
// What a command reports when the record it reads cannot be had: the
// control file could not be read, or no line of it carries the tag.
struct RecordFailures {
  const char *unreadable;
  const char *missing;
};
// The line of `path` tagged `tag`, trimmed; false after reporting the
// matching failure with code 1.
bool read_record(const char *path, const char *tag, const RecordFailures &failures, OwnedText *line);

// Prints the whole text of a control file as the result with code 0 (none
// when the file is empty; trimmed first when asked) and returns 0; a file
// that cannot be opened is "Failed to read." and 1.
int print_proc_text(const char *path, bool trimmed);
