#include "sys/mac.h"

namespace {

bool is_hex_digit(char c) {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

}  // namespace

// Walks the text once, counting hex digits and the separators accepted so far.
// A separator is accepted only right after the first, second, ... pair. Any
// other character sets the separator count to -1; a separator after exactly
// one digit then sets it back to 0, so "ax:abbccddeeff" passes. Callers rely
// on this rule as it is.
int is_valid_mac(const char *text) {
  if (!text || !text[0]) return 0;
  int digits = 0;
  int separators = 0;
  for (const char *p = text; *p; ++p) {
    if (is_hex_digit(*p)) {
      ++digits;
    } else if (*p == '-' || *p == ':') {
      if (digits == 0) return 0;
      int pairs = digits / 2;
      if (pairs - 1 != separators) break;
      separators = pairs;
    } else {
      separators = -1;
    }
  }
  return digits == 12 && (separators == 0 || separators == 5) ? 1 : 0;
}
