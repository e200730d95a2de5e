#include "groups/frame.h"

#include <gtest/gtest.h>

namespace {

// Positional integers of the shaping groups: base 10 only, no check of what
// follows the number, held to int as a 32-bit gateway's strtol holds them.
TEST(ArgInt, ReadsLeadingDecimalAndHoldsToInt) {
  struct Case {
    const char *text;
    int value;
  } cases[] = {
      {"7", 7},
      {"-1", -1},
      {"  +42", 42},
      {"7x", 7},
      {"abc", 0},
      {"", 0},
      {"0x10", 0},  // not hexadecimal
      {"010", 10},  // not octal
      {"2147483647", 2147483647},
      {"2147483648", 2147483647},
      {"99999999999999999999999", 2147483647},
      {"-2147483648", -2147483647 - 1},
      {"-2147483649", -2147483647 - 1},
      {"4294967297", 2147483647},  // held, not wrapped to 1
  };
  for (const Case &c : cases) EXPECT_EQ(arg_int(c.text), c.value) << '"' << c.text << '"';
}

}  // namespace
