// The frame every command group follows: parse the group's options, look the
// command word up in the group's table, run its handler.
#pragma once

#include <cstddef>
#include <utility>

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

// The frames, their option records and command rows are constants
// (constexpr): the tool reads them while it compiles, so that it carries no
// table of addresses for the dynamic loader to relocate at every start (one
// relocation for each address, some 13 instructions each, for all fourteen
// groups while one runs). group_run<frame> copies the records of the group
// that runs into the parser's array and calls the handlers directly; the
// frames themselves stay for programs that walk them (kGroups).

// Names copied out of rows that hold them ({"name", ...}): text only, nothing
// to relocate. Made while compiling.
template <size_t N, size_t Width>
struct NameTable {
  char name[N][Width];
};

template <size_t N, size_t Width, typename Row>
constexpr NameTable<N, Width> name_table(const Row *rows) {
  NameTable<N, Width> table{};
  for (size_t i = 0; i < N; i++) {
    for (size_t j = 0; j < Width; j++) table.name[i][j] = rows[i].name[j];
  }
  return table;
}

// The first of `count` names that is exactly `word`; `count` when none is.
template <size_t Width>
size_t name_index(const char (*names)[Width], size_t count, const char *word) {
  for (size_t i = 0; i < count; i++) {
    const char *name = names[i];
    size_t j = 0;
    while (j < Width && name[j] != '\0' && name[j] == word[j]) j++;
    if (j < Width && name[j] == word[j]) return i;
  }
  return count;
}

// Parses the options of `frame` (whose records are the parser's) and runs
// its hook: the number of positional words, the command word first.
int group_parse(const GroupFrame &frame, int argc, char **argv);

namespace frame_detail {

constexpr size_t record_count(const argparse_option *options) {
  size_t count = 1;
  while (options[count - 1].type != ARGPARSE_OPT_END) count++;
  return count;
}

// Field by field: a whole record would be copied from a relocated image of it.
template <const GroupFrame &F, size_t I>
void copy_record(argparse_option &out) {
  constexpr const argparse_option &in = F.options[I];
  out.type = in.type;
  out.short_name = in.short_name;
  out.long_name = in.long_name;
  out.value = in.value;
  out.help = in.help;
  out.callback = in.callback;
  out.data = in.data;
  out.flags = in.flags;
}

template <const GroupFrame &F, size_t... I>
void copy_records(argparse_option *out, std::index_sequence<I...>) {
  (copy_record<F, I>(out[I]), ...);
}

template <const GroupFrame &F, size_t... I>
int run_command(size_t index, int argc, char **argv, std::index_sequence<I...>) {
  int status = 1;
  (void)((index == I && (status = F.commands[I].handler(argc, argv), true)) || ...);
  return status;
}

template <const GroupFrame &F>
inline constexpr NameTable<F.command_count, sizeof(CommandEntry::name)> kCommandNames =
    name_table<F.command_count, sizeof(CommandEntry::name)>(F.commands);

}  // namespace frame_detail

// Parses (unknown options are dropped), then runs the first command whose name
// matches exactly. No command word or no match: 1, with no output.
template <const GroupFrame &F>
int group_run(int argc, char **argv) {
  constexpr size_t kRecords = frame_detail::record_count(F.options);
  argparse_option records[kRecords];
  frame_detail::copy_records<F>(records, std::make_index_sequence<kRecords>());
  GroupFrame frame = {};
  frame.usage = F.usage;
  frame.options = records;
  frame.description = F.description;
  frame.epilog = F.epilog;
  frame.describe_after_parse = F.describe_after_parse;
  frame.after_parse = F.after_parse;
  argc = group_parse(frame, argc, argv);
  if (argc < 1) return 1;
  const auto &names = frame_detail::kCommandNames<F>;
  size_t index = name_index(names.name, F.command_count, argv[0]);
  return frame_detail::run_command<F>(index, argc, argv,
                                      std::make_index_sequence<F.command_count>());
}

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
