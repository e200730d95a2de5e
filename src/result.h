// The one way a command prints its result: a JSON object whose first member
// is "return" when the caller asked for JSON, else the human text or nothing.
#pragma once

// Result codes that the tool reports.
enum {
  RESULT_OK = 0,
  RESULT_FAILED = 1,
  RESULT_UNKNOWN_GROUP = 3,
  RESULT_NO_FILE = 4,
  RESULT_NO_MEMORY = 5,
  RESULT_FILE_MISSING = 20,
  RESULT_COPY_FAILED = 21,
  RESULT_SOCKET = 53,
  RESULT_NO_CONFIG = 60,
  RESULT_ENGINE_INFO = 71,
  RESULT_NO_SERVICE = 102,
  RESULT_NO_ENGINE = 103,
};

// JSON: {"return":N} or {"return":N,"detail":"<text>"}; plain: the text or
// nothing. The detail is formatted into 512 bytes and never escaped.
int report_result(int code, const char *format, ...) __attribute__((format(printf, 2, 3)));
// As report_result, with a ready text under the member "result".
int print_result(int code, const char *text);
