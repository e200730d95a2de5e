#include "sys/scan.h"

#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdint>
#include <cstdlib>

#include "sys/text.h"

namespace {

const char *skip_space(const char *p) {
  while (is_space(*p)) p++;
  return p;
}

// The value of a digit in the bases up to 36 (letters in either case), 36
// for any other character.
unsigned digit_value(char c) {
  if (c >= '0' && c <= '9') return static_cast<unsigned>(c - '0');
  if (c >= 'a' && c <= 'z') return static_cast<unsigned>(c - 'a' + 10);
  if (c >= 'A' && c <= 'Z') return static_cast<unsigned>(c - 'A' + 10);
  return 36;
}

// Digits of `base`: the magnitude, held at UINT64_MAX when it runs past it.
// Null when there is no digit.
const char *read_digits(const char *p, unsigned base, uint64_t *magnitude, bool *huge) {
  *huge = false;
  *magnitude = 0;
  if (digit_value(*p) >= base) return nullptr;
  for (unsigned digit; (digit = digit_value(*p)) < base; p++) {
    if (*magnitude > (UINT64_MAX - digit) / base) {
      *huge = true;
      *magnitude = UINT64_MAX;
    } else if (!*huge) {
      *magnitude = *magnitude * base + digit;
    }
  }
  return p;
}

const char *read_sign(const char *p, bool *negative) {
  *negative = *p == '-';
  return *p == '+' || *p == '-' ? p + 1 : p;
}

// A sign and decimal digits. Null when there is no digit.
const char *read_decimal(const char *p, bool *negative, uint64_t *magnitude, bool *huge) {
  return read_digits(read_sign(p, negative), 10, magnitude, huge);
}

// What strtoll and strtoull read in the C locale: white space, a sign, "0x"
// with base 16 or 0 (base 0 reads a leading 0 as octal, else decimal), the
// digits. Returns the end: after the digits; with none, the text itself, or
// the "x" of a "0x" that no hex digit follows. Read here because the C
// library's readers cost a symbol lookup at every start (vek.ini's log level).
const char *read_number(const char *text, unsigned base, bool *negative, uint64_t *magnitude) {
  const char *p = read_sign(skip_space(text), negative);
  bool prefixed = (base == 0 || base == 16) && p[0] == '0' && (p[1] == 'x' || p[1] == 'X');
  if (prefixed) {
    p += 2;
    base = 16;
  } else if (base == 0) {
    base = p[0] == '0' ? 8 : 10;
  }
  bool huge;
  const char *end = read_digits(p, base, magnitude, &huge);
  if (end) return end;
  return prefixed ? p - 1 : text;
}

// strtol's bases: 0 (by prefix) and 2 to 36.
bool valid_base(int base) { return base == 0 || (base >= 2 && base <= 36); }

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
    if (is_space(*format)) {
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
    while (digit_value(*format) < 10) width = width * 10 + static_cast<size_t>(*format++ - '0');
    p = skip_space(p);
    if (*p == '\0') {
      va_end(args);
      return converted ? stored : -1;
    }
    bool negative, huge;
    uint64_t magnitude;
    if (begins_with(format, "hhu")) {
      format += 3;
      const char *after = read_decimal(p, &negative, &magnitude, &huge);
      if (!after) break;
      p = after;
      if (!suppress) *va_arg(args, unsigned char *) = static_cast<unsigned char>(hold_unsigned(negative, magnitude));
    } else if (begins_with(format, "llu")) {
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
      for (; *p && !is_space(*p) && n < width; p++, n++) {
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

namespace {

// What strtol32 and strtoul32 share: the base check (EINVAL), the digits
// and where they end. False for a base strtol refuses. As strtol, errno is
// left alone unless there is an error (so vek.ini's log level is read
// without the C library's errno location, a symbol lookup at every start).
bool read_for_strto(const char *text, char **end, int base, bool *negative, uint64_t *magnitude) {
  if (!valid_base(base)) {
    errno = EINVAL;
    return false;
  }
  const char *stop = read_number(text, static_cast<unsigned>(base), negative, magnitude);
  if (end) *end = const_cast<char *>(stop);
  return true;
}

}  // namespace

long strtol32(const char *text, char **end, int base) {
  bool negative;
  uint64_t magnitude;
  if (!read_for_strto(text, end, base, &negative, &magnitude)) return 0;
  const uint64_t limit = negative ? uint64_t{INT32_MAX} + 1 : uint64_t{INT32_MAX};
  if (magnitude > limit) errno = ERANGE;
  return hold_signed(negative, magnitude);
}

// The gateway negates the magnitude of a "-" text in 32 bits, and refuses a
// magnitude past them.
unsigned long strtoul32(const char *text, char **end, int base) {
  bool negative;
  uint64_t magnitude;
  if (!read_for_strto(text, end, base, &negative, &magnitude)) return 0;
  if (magnitude > UINT32_MAX) errno = ERANGE;
  return hold_unsigned(negative, magnitude);
}
