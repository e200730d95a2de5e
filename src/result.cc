#include "result.h"

#include <cstdarg>
#include <cstdio>

#include "context.h"

// Texts go between the quotes as they are, without escaping: callers pass
// texts that they know to be safe, and scripts match the raw bytes.

int report_result(int code, const char *format, ...) {
  if (!format) return g_options.json ? printf("{\"return\":%d}\n", code) : 0;
  char detail[512];
  va_list args;
  va_start(args, format);
  vsnprintf(detail, sizeof detail, format, args);
  va_end(args);
  if (g_options.json) return printf("{\"return\":%d,\"detail\":\"%s\"}\n", code, detail);
  return puts(detail);
}

int print_result(int code, const char *text) {
  if (!text) return g_options.json ? printf("{\"return\":%d}\n", code) : 0;
  if (g_options.json) return printf("{\"return\":%d,\"result\":\"%s\"}\n", code, text);
  return puts(text);
}
