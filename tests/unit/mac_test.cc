#include "sys/mac.h"

#include <gtest/gtest.h>

namespace {

struct MacCase {
  const char *text;
  int valid;
};

class Mac : public ::testing::TestWithParam<MacCase> {};

TEST_P(Mac, Check) { EXPECT_EQ(is_valid_mac(GetParam().text), GetParam().valid) << GetParam().text; }

INSTANTIATE_TEST_SUITE_P(
    Valid, Mac,
    ::testing::Values(MacCase{"aabbccddeeff", 1}, MacCase{"AABBCCDDEEFF", 1}, MacCase{"aa:bb:cc:dd:ee:ff", 1},
                      MacCase{"aa-bb-cc-dd-ee-ff", 1}, MacCase{"AA:bb-CC:dd-EE:ff", 1},
                      MacCase{"00:11:22:33:44:55", 1}, MacCase{"9A:fB:0c:De:e1:F2", 1},
                      // A stray character before the first separator resets the
                      // count when exactly one digit precedes it.
                      MacCase{"ax:abbccddeeff", 1}, MacCase{"a?-abbccddeeff", 1}, MacCase{"axx:abbccddeeff", 1},
                      MacCase{"aax:bbccddeeff", 0}, MacCase{"x:aabbccddeeff", 0}));

INSTANTIATE_TEST_SUITE_P(
    Invalid, Mac,
    ::testing::Values(MacCase{nullptr, 0}, MacCase{"", 0}, MacCase{"aa:bb:cc:dd:ee:ff:", 0},
                      MacCase{"aabb:ccddeeff", 0}, MacCase{"aa:bb:cc:dd:ee:f", 0},
                      MacCase{"aa:bb:cc:dd:ee:fg", 0}, MacCase{":aa:bb:cc:dd:ee:ff", 0},
                      MacCase{"-aabbccddeeff", 0}, MacCase{"aabbccddeef", 0}, MacCase{"aabbccddeeff00", 0},
                      MacCase{"aa:bbccddeeff", 0}, MacCase{"aa:bb:cc:dd:eeff", 0},
                      MacCase{"aa::bb:cc:dd:ee:ff", 0}, MacCase{"aa.bb.cc.dd.ee.ff", 0},
                      MacCase{"aa bb cc dd ee ff", 0}, MacCase{"aabbccddeeff ", 0},
                      MacCase{" aabbccddeeff", 0}, MacCase{"a:abbccddeeff", 0},
                      MacCase{"aa:bb:cc:dd:ee:ff:00", 0}, MacCase{"gg:bb:cc:dd:ee:ff", 0},
                      MacCase{":", 0}, MacCase{"a-bbccddeeff0", 0}, MacCase{"aa:bb:cc:dd:ee:ff\n", 0}));

}  // namespace
