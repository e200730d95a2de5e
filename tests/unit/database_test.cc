#include "db/database.h"

#include <gtest/gtest.h>

TEST(DbInfoParser, ValidOnlyWhenAllThreeFieldsConvert) {
  const struct {
    const char *text;
    bool valid;
    db_info info;
  } cases[] = {
      {"writable: 1\nsize: 0\nepoch: 0\n", true, {1, 0, 0}},
      {"writable: 0\nsize: 1536\nepoch: 1700000000\n", true, {0, 1536, 1700000000ULL}},
      {"writable: 0\nsize: -5\nepoch: 18446744073709551615", true, {0, -5, 18446744073709551615ULL}},
      // The line ends of the format match any white space, or none.
      {"writable: 0 size: 7 epoch: 9", true, {0, 7, 9}},
      {"writable:0\nsize:7\nepoch:9", true, {0, 7, 9}},
      // Anything after the epoch is not looked at.
      {"writable: 1\nsize: 2\nepoch: 3\nextra: 4\n", true, {1, 2, 3}},
      {"writable: 1\nsize: 2\n", false, {}},
      {"writable: 1\nsize: x\nepoch: 3\n", false, {}},
      {"Writable: 1\nsize: 2\nepoch: 3\n", false, {}},
      {"size: 2\nwritable: 1\nepoch: 3\n", false, {}},
      {"writable: \nsize: 2\nepoch: 3\n", false, {}},
      {"", false, {}},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.text);
    db_info info = {-9, -9, 99};
    EXPECT_EQ(db_info_parse(c.text, &info), c.valid);
    const db_info expected = c.valid ? c.info : db_info{-9, -9, 99};  // untouched when invalid
    EXPECT_EQ(info.writable, expected.writable);
    EXPECT_EQ(info.size, expected.size);
    EXPECT_EQ(info.epoch, expected.epoch);
  }
  EXPECT_FALSE(db_info_parse(nullptr, nullptr));
}
