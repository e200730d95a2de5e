#include "sys/mac.h"

#include <gtest/gtest.h>

namespace {

TEST(Mac, TwelveHexDigitsWithNoneOrFiveSeparators) {
  const struct { const char *text; int valid; } cases[] = {
      {"aabbccddeeff", 1}, {"AA:bb-CC:dd-EE:ff", 1}, {"9A:fB:0c:De:e1:F2", 1},
      // A stray character before the first separator resets the count after exactly one digit.
      {"ax:abbccddeeff", 1}, {"axx:abbccddeeff", 1}, {"aax:bbccddeeff", 0}, {"x:aabbccddeeff", 0},
      {nullptr, 0}, {"", 0}, {":", 0}, {":aa:bb:cc:dd:ee:ff", 0}, {"aa:bb:cc:dd:ee:ff:", 0}, {"aabb:ccddeeff", 0},
      {"aa:bbccddeeff", 0}, {"aa::bb:cc:dd:ee:ff", 0}, {"aa:bb:cc:dd:ee:fg", 0}, {"aabbccddeef", 0},
      {"aabbccddeeff00", 0}, {"aa.bb.cc.dd.ee.ff", 0}, {"aabbccddeeff ", 0}, {"a-bbccddeeff0", 0}};
  for (const auto &c : cases) EXPECT_EQ(is_valid_mac(c.text), c.valid) << (c.text ? c.text : "null");
}

}  // namespace
