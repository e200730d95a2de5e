#include "groups/frame.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "context.h"
#include "result.h"
#include "sys/procfs.h"
#include "sys/scan.h"
#include "sys/text.h"

int group_parse(const GroupFrame &frame, int argc, char **argv) {
  argparse parser;
  argparse_init(&parser, frame.options, nullptr, ARGPARSE_IGNORE_UNKNOWN_ARGS);
  argparse_usage_text(&parser, frame.usage);
  if (!frame.describe_after_parse && (frame.description || frame.epilog)) {
    argparse_describe(&parser, frame.description, frame.epilog);
  }
  argc = argparse_parse(&parser, argc, argv);
  if (frame.describe_after_parse) argparse_describe(&parser, frame.description, frame.epilog);
  if (argc >= 1 && frame.after_parse) frame.after_parse();
  return argc;
}

int report_ok() {
  report_result(RESULT_OK, nullptr);
  return 0;
}

int write_verb_ok(const char *path, const char *verb) {
  write_proc_line(path, "%s", verb);
  return report_ok();
}

int write_verb_ok(const char *path, int verb) {
  write_proc_line(path, "%d", verb);
  return report_ok();
}

int wrong_arg_number(int argc) {
  report_result(RESULT_FAILED, "Wrong arg number: %d", argc);
  return 1;
}

int arg_int(const char *text) {
  return static_cast<int>(strtol32(text, nullptr, 10));
}

int wrong_arg(int value) {
  report_result(RESULT_FAILED, "Wrong arg: %d", value);
  return 1;
}

int wrong_arg_text(const char *text) {
  report_result(RESULT_FAILED, "Wrong arg: %s", text);
  return 1;
}

int invalid_arg(const char *text) {
  report_result(RESULT_FAILED, "invalid arg: %s", text);
  return 1;
}

int failed_to_read() {
  report_result(RESULT_FAILED, "Failed to read.");
  return 1;
}

namespace {

int print_json_result_ending(const char *text, const char *json_end) {
  if (g_options.json) {
    printf("{\"return\":0,\"result\":%s}%s", text, json_end);
  } else {
    printf("%s\n", text);
  }
  return 0;
}

}  // namespace

int print_json_result(const char *text) { return print_json_result_ending(text, "\n"); }

int print_json_result_unended(const char *text) { return print_json_result_ending(text, ""); }

bool read_record(const char *path, const char *tag, const RecordFailures &failures, OwnedText *line) {
  const char *failure = nullptr;
  if (find_record(path, tag, line) != 0) {
    failure = failures.unreadable;
  } else if (!*line) {
    failure = failures.missing;
  }
  if (failure) {
    report_result(RESULT_FAILED, "%s", failure);
    return false;
  }
  trim(line->get());
  return true;
}

int print_proc_text(const char *path, bool trimmed) {
  OwnedText text;
  if (read_proc_file(path, &text, nullptr) != 0) return failed_to_read();
  if (trimmed) trim(text.get());
  print_result(RESULT_OK, text.get());
  return 0;
}
