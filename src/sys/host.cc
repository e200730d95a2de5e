#include "sys/host.h"

#include <arpa/inet.h>
#include <netinet/in.h>

#include <cstring>

namespace {

const size_t kHostNameMax = 256;  // exclusive

bool is_alnum(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'); }

}  // namespace

int is_valid_host_name(const char *text) {
  if (!text || text[0] == '\0' || strnlen(text, kHostNameMax) >= kHostNameMax) return 0;
  int run = 0;  // letters and digits since the last dot
  for (const char *p = text; *p; ++p) {
    if (is_alnum(*p)) {
      run++;
    } else if (*p == '.' && run != 0) {
      run = 0;
    } else {
      return 0;
    }
  }
  return run != 0 ? 1 : 0;
}

int is_valid_ip_address(const char *text) {
  if (!text) return 0;
  struct in_addr v4;
  if (inet_pton(AF_INET, text, &v4) == 1) return 1;
  struct in6_addr v6;
  return inet_pton(AF_INET6, text, &v6) == 1 ? 1 : 0;
}
