#include "groups/frame.h"

#include <gtest/gtest.h>

namespace {

// Positional integers of the shaping groups: base 10 only, no check of what
// follows the number, held to int as a 32-bit gateway's strtol holds them.
TEST(Frame, ArgIntReadsLeadingDecimalHeldToInt) {
  const struct { const char *text; int value; } cases[] = {
      {"  +42", 42}, {"-1", -1}, {"7x", 7}, {"abc", 0}, {"0x10", 0}, {"010", 10},
      {"2147483648", 2147483647}, {"-2147483649", -2147483647 - 1}, {"4294967297", 2147483647}};
  for (const auto &c : cases) EXPECT_EQ(arg_int(c.text), c.value) << '"' << c.text << '"';
}

}  // namespace
