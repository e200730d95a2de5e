#include "sys/host.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct HostCase {
  std::string text;
  int valid;
};

TEST(HostName, RunsOfLettersAndDigitsJoinedBySingleDots) {
  const std::string label63(63, 'a');
  const HostCase cases[] = {
      {"a", 1}, {"a.b", 1}, {"A1.b2.C3", 1}, {"10.0.0.1", 1}, {"x" + std::string(254, '1'), 1},  // 255 characters
      {"", 0}, {".", 0}, {"a.", 0}, {".a", 0}, {"a..b", 0}, {"..", 0}, {"a-b", 0}, {"a_b", 0}, {"a b", 0},
      {"a.b\n", 0}, {"a\tb", 0}, {"caf\xc3\xa9", 0}, {"a/b", 0}, {"a:b", 0}, {"*.lan", 0},
      {std::string(256, 'a'), 0}, {label63 + "." + label63 + "." + label63 + "." + label63, 1},  // 255 is the most
      {label63 + "." + label63 + "." + label63 + "." + label63 + ".a", 0},
  };
  for (const HostCase &c : cases) EXPECT_EQ(is_valid_host_name(c.text.c_str()), c.valid) << "[" << c.text << "]";
  EXPECT_EQ(is_valid_host_name(nullptr), 0);
}

TEST(IpAddress, Ipv4ThenIpv6PresentationForms) {
  const HostCase cases[] = {
      {"10.0.0.1", 1}, {"0.0.0.0", 1}, {"255.255.255.255", 1}, {"::", 1}, {"::1", 1}, {"fe80::1", 1},
      {"1:2:3:4:5:6:7:8", 1}, {"2001:DB8::a", 1}, {"2001:db8::10.0.0.1", 1}, {"::ffff:192.168.1.1", 1},
      {"", 0}, {"256.0.0.1", 0}, {"10.0.0", 0}, {"10.0.0.1.2", 0}, {" 10.0.0.1", 0}, {"10.0.0.1 ", 0},
      {"0x0a.0.0.1", 0}, {"fe80:::1", 0}, {"1:2:3:4:5:6:7:8:9", 0}, {"fe80::1%eth0", 0}, {"::g", 0},
      {"localhost", 0}, {"10.0.0.1/24", 0},
  };
  for (const HostCase &c : cases) EXPECT_EQ(is_valid_ip_address(c.text.c_str()), c.valid) << "[" << c.text << "]";
  EXPECT_EQ(is_valid_ip_address(nullptr), 0);
}

}  // namespace
