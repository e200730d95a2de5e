// The argument checks: MAC texts, host names and addresses, the limiter's
// IPv4 subnets and numeric ids, and the 32-bit number readers. Each answer is
// held against the rule it implements, written here the other way round.
#include <arpa/inet.h>

#include <cctype>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <string>

#include "fuzz_common.h"
#include "groups/frame.h"
#include "sys/host.h"
#include "sys/mac.h"
#include "sys/scan.h"

namespace {

bool is_hex(char c) { return isxdigit(static_cast<unsigned char>(c)) != 0; }

// Whatever the walk lets through holds twelve hexadecimal digits at least:
// the rule stops at a separator out of place and judges what it has counted.
bool mac_shape(const std::string &t) {
  size_t digits = 0;
  for (char c : t) digits += is_hex(c);
  return digits >= 12;
}

bool host_rule(const std::string &t) {
  if (t.empty() || t.size() >= 256 || t.front() == '.' || t.back() == '.') return false;
  if (t.find("..") != std::string::npos) return false;
  for (char c : t)
    if (!(isalnum(static_cast<unsigned char>(c)) && static_cast<unsigned char>(c) < 128) && c != '.')
      return false;
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  fuzz_root();
  std::string text(reinterpret_cast<const char *>(data), size);
  const char *t = text.c_str();  // up to the first NUL, as an argument would be

  std::string word(t);
  if (is_valid_mac(t) && !mac_shape(word)) abort();
  if ((is_valid_host_name(t) != 0) != host_rule(word)) abort();
  unsigned char address[16];
  bool parses = inet_pton(AF_INET, t, address) == 1 || inet_pton(AF_INET6, t, address) == 1;
  if ((is_valid_ip_address(t) != 0) != parses) abort();

  // The readers hold to the 32-bit range what strtoll reads in 64 bits.
  errno = 0;
  char *end64 = nullptr, *end32 = nullptr;
  long long wide = strtoll(t, &end64, 0);
  bool wide_range = errno == ERANGE;
  long narrow = strtol32(t, &end32, 0);
  bool narrow_range = errno == ERANGE;
  if (end32 != end64) abort();
  long long held = wide > INT_MAX ? INT_MAX : wide < INT_MIN ? INT_MIN : wide;
  if (narrow != held) abort();
  if (narrow_range != (wide_range || held != wide)) abort();
  strtoul32(t, nullptr, 0);
  int arg = arg_int(t);
  (void)arg;

  int a = 0, b = 0;
  unsigned char byte = 0;
  unsigned long long epoch = 0;
  char name[32];
  scan32(t, "j:qoe:[%d,%d]", &a, &b);
  scan32(t, "%hhu", &byte);
  scan32(t, "writable: %d\nsize: %d\nepoch: %llu", &a, &b, &epoch);
  if (scan32(t, "#%d,%d,%31s", &a, &b, name) == 3 && strlen(name) > 31) abort();

  // The limiter's targets, through its entry: refused (1) or written (0).
  for (const char *type : {"0", "1", "2", "3"}) {
    int status = fuzz_run({"limiter", "set", word, "--type", type}, 1);
    if (status != 0 && status != 1) abort();
  }
  return 0;
}
