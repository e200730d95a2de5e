// Loading vek.ini: any bytes as the file. Every text field of the record must
// stay terminated inside its own size, whatever the values.
#include <cstdlib>
#include <cstring>

#include "config/config.h"
#include "fuzz_common.h"

namespace {

template <size_t N>
void check(const char (&field)[N]) {
  if (!memchr(field, '\0', N)) abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  fuzz_file("/etc/vek/vek.ini", data, size);
  tool_config config;
  // Zeroed as at start-up. A copy past a field would run into the next one,
  // which ASan does not see inside one record: the terminators show it.
  memset(&config, 0, sizeof config);
  if (config_load(&config, "/nowhere", "/etc/vek/vek.ini") != 0) return 0;
  check(config.ini_path); check(config.bin); check(config.lib); check(config.klib);
  check(config.etc); check(config.run); check(config.tmp); check(config.share);
  check(config.var); check(config.var_lib); check(config.var_log); check(config.var_tmp);
  check(config.upstream_port); check(config.downstream_port); check(config.hw_up_if);
  check(config.hw_dw_if); check(config.max_conn_count); check(config.max_db_entries);
  check(config.qos_mode); check(config.socket_file); check(config.skbmark);
  check(config.max_cache_size); check(config.server); check(config.host);
  check(config.product); check(config.auth_id); check(config.auth_pwd);
  check(config.logger_max_db_size); check(config.logd_socket_file);
  if (config.qos != 0 && config.qos != 1) abort();
  if (config.iam != 0 && config.iam != 1) abort();
  if (config.cs != 0 && config.cs != 1) abort();
  return 0;
}
