#include "sys/scan.h"

#include <cctype>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

const char *skip_space(const char *p) {
  while (isspace(static_cast<unsigned char>(*p))) p++;
  return p;
}

// A sign and decimal digits: the magnitude, held at UINT64_MAX when it runs
// past it. Null when there is no digit.
const char *read_decimal(const char *p, bool *negative, uint64_t *magnitude, bool *huge) {
  *negative = false;
  *huge = false;
  *magnitude = 0;
  if (*p == '+' || *p == '-') {
    *negative = *p == '-';
    p++;
  }
  if (!isdigit(static_cast<unsigned char>(*p))) return nullptr;
  for (; isdigit(static_cast<unsigned char>(*p)); p++) {
    unsigned digit = static_cast<unsigned>(*p - '0');
    if (*magnitude > (UINT64_MAX - digit) / 10) {
      *huge = true;
      *magnitude = UINT64_MAX;
    } else if (!*huge) {
      *magnitude = *magnitude * 10 + digit;
    }
  }
  return p;
}

// What a 32-bit strtol makes of a sign and a magnitude.
int32_t hold_signed(bool negative, uint64_t magnitude) {
  if (negative) {
    if (magnitude >= static_cast<uint64_t>(INT32_MAX) + 1) return INT32_MIN;
    return -static_cast<int32_t>(magnitude);
  }
  if (magnitude > static_cast<uint64_t>(INT32_MAX)) return INT32_MAX;
  return static_cast<int32_t>(magnitude);
}

// What a 32-bit strtoul makes of them: a negative text is negated in the
// unsigned type, a magnitude past the type gives its largest value.
uint32_t hold_unsigned(bool negative, uint64_t magnitude) {
  if (magnitude > UINT32_MAX) return UINT32_MAX;
  uint32_t value = static_cast<uint32_t>(magnitude);
  return negative ? 0u - value : value;
}

}  // namespace

int scan32(const char *text, const char *format, ...) {
  va_list args;
  va_start(args, format);
  const char *p = text;
  int stored = 0;
  bool converted = false;
  while (*format) {
    if (isspace(static_cast<unsigned char>(*format))) {
      p = skip_space(p);
      format++;
      continue;
    }
    if (*format != '%') {
      if (*p != *format) break;
      p++;
      format++;
      continue;
    }
    format++;
    bool suppress = *format == '*';
    if (suppress) format++;
    size_t width = 0;
    while (isdigit(static_cast<unsigned char>(*format))) width = width * 10 + static_cast<size_t>(*format++ - '0');
    p = skip_space(p);
    if (*p == '\0') {
      va_end(args);
      return converted ? stored : -1;
    }
    bool negative, huge;
    uint64_t magnitude;
    if (strncmp(format, "hhu", 3) == 0) {
      format += 3;
      const char *after = read_decimal(p, &negative, &magnitude, &huge);
      if (!after) break;
      p = after;
      if (!suppress) *va_arg(args, unsigned char *) = static_cast<unsigned char>(hold_unsigned(negative, magnitude));
    } else if (strncmp(format, "llu", 3) == 0) {
      format += 3;
      const char *after = read_decimal(p, &negative, &magnitude, &huge);
      if (!after) break;
      p = after;
      if (!suppress) *va_arg(args, unsigned long long *) = negative ? 0ull - magnitude : magnitude;
    } else if (*format == 'd') {
      format++;
      const char *after = read_decimal(p, &negative, &magnitude, &huge);
      if (!after) break;
      p = after;
      if (!suppress) *va_arg(args, int *) = hold_signed(negative, magnitude);
    } else if (*format == 's' && width > 0) {
      format++;
      char *out = suppress ? nullptr : va_arg(args, char *);
      size_t n = 0;
      for (; *p && !isspace(static_cast<unsigned char>(*p)) && n < width; p++, n++) {
        if (out) out[n] = *p;
      }
      if (out) out[n] = '\0';
    } else {
      break;  // a conversion the tool does not use
    }
    converted = true;
    if (!suppress) stored++;
  }
  va_end(args);
  return stored;
}

long strtol32(const char *text, char **end, int base) {
  errno = 0;
  long long value = strtoll(text, end, base);
  if (value > INT32_MAX) {
    errno = ERANGE;
    return INT32_MAX;
  }
  if (value < INT32_MIN) {
    errno = ERANGE;
    return INT32_MIN;
  }
  return static_cast<long>(value);
}

unsigned long strtoul32(const char *text, char **end, int base) {
  errno = 0;
  // strtoull negates a "-" text in 64 bits; the gateway negates the
  // magnitude in 32 bits, and refuses a magnitude past them.
  const char *p = skip_space(text);
  bool negative = *p == '-';
  unsigned long long value = strtoull(text, end, base);
  if (errno == ERANGE) return UINT32_MAX;
  unsigned long long magnitude = negative ? 0ull - value : value;
  if (magnitude > UINT32_MAX) {
    errno = ERANGE;
    return UINT32_MAX;
  }
  uint32_t low = static_cast<uint32_t>(magnitude);
  return negative ? 0u - low : low;
}
