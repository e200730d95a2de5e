#include "sys/host.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(Host, NamesAreLetterAndDigitRunsJoinedBySingleDots) {
  const std::string label63(63, 'a'), most = label63 + "." + label63 + "." + label63 + "." + label63;
  const struct { std::string text; int valid; } cases[] = {
      {"a", 1}, {"A1.b2.C3", 1}, {"10.0.0.1", 1}, {most, 1},  // 255 characters is the most
      {most + "a", 0}, {"", 0}, {".", 0}, {"a.", 0}, {".a", 0}, {"a..b", 0}, {"a-b", 0}, {"a b", 0},
      {"caf\xc3\xa9", 0}, {"*.lan", 0}};
  for (const auto &c : cases) EXPECT_EQ(is_valid_host_name(c.text.c_str()), c.valid) << "[" << c.text << "]";
  EXPECT_EQ(is_valid_host_name(nullptr), 0);
}

TEST(Host, AddressIsIpv4OrIpv6) {
  const struct { const char *text; int valid; } cases[] = {
      {"10.0.0.1", 1}, {"::1", 1}, {"2001:db8::10.0.0.1", 1}, {"256.0.0.1", 0}, {"localhost", 0}, {"", 0}};
  for (const auto &c : cases) EXPECT_EQ(is_valid_ip_address(c.text), c.valid) << c.text;
  EXPECT_EQ(is_valid_ip_address(nullptr), 0);
}

}  // namespace
