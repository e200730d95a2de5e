// The 32-bit readers: the answers a gateway's 32-bit C library gives, on any
// build. A 64-bit sscanf("%d") would wrap 5000000000 to 705032704.
#include "sys/scan.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>

namespace {

TEST(Scan32, NumbersOfEngineRecords) {
  const struct { const char *text, *format; int stored, first, second; } cases[] = {
      {"d:qnum: -3\n", "d:qnum:%d", 1, -3, 0},
      {"d:qnum:4294967304", "d:qnum:%d", 1, 2147483647, 0},  // not 8
      {"d:qnum:-5000000000", "d:qnum:%d", 1, -2147483647 - 1, 0},
      {"d:qnum:99999999999999999999999999", "d:qnum:%d", 1, 2147483647, 0},
      {"d:qnum:", "d:qnum:%d", -1, 0, 0},
      {"d:qnum:+", "d:qnum:%d", 0, 0, 0},
      {"d:qnu", "d:qnum:%d", 0, 0, 0},
      {"j:qoe:[1, 7]", "j:qoe:[%d,%d]", 2, 1, 7},
      {"j:qoe:[1 ,7]", "j:qoe:[%d,%d]", 1, 1, 0},
      {"j:qoe:[1]", "j:qoe:[%d,%d]", 1, 1, 0},
  };
  for (const auto &c : cases) {
    int first = 0, second = 0;
    EXPECT_EQ(scan32(c.text, c.format, &first, &second), c.stored) << c.text;
    EXPECT_EQ(std::to_string(first) + "," + std::to_string(second), std::to_string(c.first) + "," + std::to_string(c.second)) << c.text;
  }
}

TEST(Scan32, BytesWideTextAndSuppressed) {
  const struct { const char *text; int stored; unsigned value; } bytes[] = {
      {"300", 1, 44}, {"4294967340", 1, 255}, {"-1", 1, 255}, {"x", 0, 0}, {"", -1, 0}};  // held to 32 bits, then the low byte
  for (const auto &c : bytes) {
    unsigned char value = 0;
    EXPECT_EQ(scan32(c.text, "%hhu", &value), c.stored) << c.text;
    EXPECT_EQ(value, c.value) << c.text;
  }
  unsigned long long epoch = 0;
  EXPECT_EQ(scan32("writable: 0\nsize: 9\nepoch: 18446744073709551615", "writable: %*d\nsize: %*d\nepoch: %llu", &epoch), 1);
  EXPECT_EQ(epoch, 18446744073709551615ull);
  char word[4] = "zzz", name[32];
  int category = 0, other = 0;
  EXPECT_EQ(scan32("j:pfs:abcdef", "j:pfs:%3s", word), 1);
  EXPECT_STREQ(word, "abc");
  EXPECT_EQ(scan32("#300,1,video x", "#%d,%d,%31s", &category, &other, name), 3);
  EXPECT_STREQ(name, "video");
}

TEST(Scan32, StrtolHeldToTheGatewaysLong) {
  const struct { const char *text; int base; long value; bool range; size_t used; } cases[] = {
      {"3000000000", 10, 2147483647, true, 10}, {"-3000000000", 10, -2147483647 - 1, true, 11},
      {"0x7fffffff", 0, 2147483647, false, 10}, {"12ab", 10, 12, false, 2},
      {"0XaF", 0, 175, false, 4}, {" +017", 0, 15, false, 5}, {"zZ", 36, 1295, false, 2}};
  for (const auto &c : cases) {
    char *end = nullptr;
    errno = 0;
    EXPECT_EQ(strtol32(c.text, &end, c.base), c.value) << c.text;
    EXPECT_EQ(errno == ERANGE, c.range) << c.text;
    EXPECT_EQ(static_cast<size_t>(end - c.text), c.used) << c.text;
  }
  const struct { const char *text; unsigned long value; bool range; } unsigned_cases[] = {
      {"4294967295", 4294967295ul, false}, {"4294967296", 4294967295ul, true}, {"-1", 4294967295ul, false},
      {"-4294967295", 1, false},           {"-4294967296", 4294967295ul, true}};
  for (const auto &c : unsigned_cases) {
    errno = 0;
    EXPECT_EQ(strtoul32(c.text, nullptr, 0), c.value) << c.text;
    EXPECT_EQ(errno == ERANGE, c.range) << c.text;
  }
}

}  // namespace
