// String, number and address helpers: the edge cases the commands cannot all
// reach (JSON members: limiter.t, odd-json.t). Numbers are read as the gateway's
// 32-bit C library reads them, on any build (a 64-bit sscanf would wrap 5000000000).
#include <gtest/gtest.h>

#include <cstring>

#include "groups/frame.h"
#include "sys/host.h"
#include "sys/mac.h"
#include "sys/scan.h"
#include "sys/text.h"

namespace {

// Copies cut to the size, always terminated, nothing touched after the terminator.
TEST(Text, CopiesCutToTheSize) {
  const struct { const char *first, *second; size_t size; const char *out; } copies[] = {
      {"abc", "", 4, "abc"}, {"abc", "", 3, "ab"}, {"ab", "cd", 4, "abc"}, {"ab", "cd", 2, "a"}, {"", "/x", 8, "/x"}};
  for (const auto &c : copies) {
    char out[16];
    memset(out, 'x', sizeof out);
    EXPECT_EQ(c.second[0] ? join_text(out, c.size, c.first, c.second) : copy_text(out, c.size, c.first), out);
    EXPECT_EQ(std::string(out, sizeof out), c.out + std::string(1, '\0') + std::string(15 - strlen(c.out), 'x'));
  }
}

// What scan32 stored, as "count: values"; -1 when the text ends before the first conversion.
TEST(Numbers, Scan32AndArgInt) {
  const struct { const char *text, *format, *result; } scans[] = {
      {"d:qnum: -3\n", "d:qnum:%d", "1: -3 0"}, {"d:qnum:99999999999999999999999999", "d:qnum:%d", "1: 2147483647 0"},
      {"d:qnum:", "d:qnum:%d", "-1: 0 0"}, {"d:qnum:+", "d:qnum:%d", "0: 0 0"}, {"d:qnu", "d:qnum:%d", "0: 0 0"},
      {"j:qoe:[1, 7]", "j:qoe:[%d,%d]", "2: 1 7"}, {"j:qoe:[1 ,7]", "j:qoe:[%d,%d]", "1: 1 0"},
      {"j:qoe:[1]", "j:qoe:[%d,%d]", "1: 1 0"}};
  for (const auto &c : scans) {
    int first = 0, second = 0, stored = scan32(c.text, c.format, &first, &second);
    EXPECT_EQ(std::to_string(stored) + ": " + std::to_string(first) + " " + std::to_string(second), c.result) << c.text;
  }
  // Bytes are held to 32 bits, then the low byte is kept.
  for (auto [text, result] : {std::pair<const char *, const char *>{"300", "1: 44"}, {"4294967340", "1: 255"},
                              {"-1", "1: 255"}, {"x", "0: 0"}, {"", "-1: 0"}}) {
    unsigned char value = 0;
    int stored = scan32(text, "%hhu", &value);
    EXPECT_EQ(std::to_string(stored) + ": " + std::to_string(value), result) << text;
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
  // Positional integers of the shaping groups: base 10 only, no check of what follows.
  for (auto [text, value] : {std::pair<const char *, int>{"  +42", 42}, {"7x", 7}, {"abc", 0}, {"0x10", 0}, {"010", 10}})
    EXPECT_EQ(arg_int(text), value) << '"' << text << '"';
}

TEST(Address, MacAndHostName) {
  const struct { const char *text; int valid; } macs[] = {
      {"aabbccddeeff", 1}, {"AA:bb-CC:dd-EE:ff", 1}, {"9A:fB:0c:De:e1:F2", 1},
      // A stray character before the first separator resets the count after exactly one digit.
      {"ax:abbccddeeff", 1}, {"axx:abbccddeeff", 1}, {"aax:bbccddeeff", 0}, {"x:aabbccddeeff", 0},
      {nullptr, 0}, {"", 0}, {":", 0}, {":aa:bb:cc:dd:ee:ff", 0}, {"aa:bb:cc:dd:ee:ff:", 0}, {"aabb:ccddeeff", 0},
      {"aa:bbccddeeff", 0}, {"aa::bb:cc:dd:ee:ff", 0}, {"aa:bb:cc:dd:ee:fg", 0}, {"aabbccddeef", 0},
      {"aabbccddeeff00", 0}, {"aa.bb.cc.dd.ee.ff", 0}, {"aabbccddeeff ", 0}, {"a-bbccddeeff0", 0}};
  for (const auto &c : macs) EXPECT_EQ(is_valid_mac(c.text), c.valid) << (c.text ? c.text : "null");
  // ss.t shows the rest of the host name rule: letter and digit runs joined by single dots.
  const std::string label63(63, 'a'), most = label63 + "." + label63 + "." + label63 + "." + label63;
  for (auto [text, valid] : {std::pair<std::string, int>{most, 1}, {"A0.b9", 1}, {most + "a", 0}, {"caf\xc3\xa9", 0}, {"a b", 0}})
    EXPECT_EQ(is_valid_host_name(text.c_str()), valid) << text.size();
  EXPECT_EQ(is_valid_host_name(nullptr) + is_valid_ip_address(nullptr), 0);
}

}  // namespace
