#include "config/config.h"

#include <cstdio>
#include <memory>

#include <iniparser.h>

#include "sys/scan.h"
#include "sys/shell.h"
#include "sys/sysroot.h"
#include "sys/text.h"

namespace {

struct DictionaryDeleter {
  void operator()(dictionary *d) const { iniparser_freedict(d); }
};
using Dictionary = std::unique_ptr<dictionary, DictionaryDeleter>;

// The INI file is written by the installation and trusted, but a value never
// runs past its field: it is cut to the field's size.
template <size_t N>
void copy_string(const dictionary *ini, const char *key, char (&field)[N]) {
  const char *value = iniparser_getstring(ini, key, nullptr);
  if (value) copy_text(field, N, value);
}


}  // namespace

int config_parse_file(tool_config *config, const char *path) {
  Dictionary ini(iniparser_load(SysPath(path)));
  if (!ini) return 1;
  const dictionary *d = ini.get();

  copy_text(config->ini_path, sizeof config->ini_path, path);
  // A boolean that is neither yes nor no counts as absent: on.
  config->qos = iniparser_getboolean(d, "vek:qos", 1);
  config->iam = iniparser_getboolean(d, "vek:iam", 1);
  config->cs = iniparser_getboolean(d, "vek:cs", 1);
  // iniparser_getint stores strtol's long into an int: read the text and hold
  // it to int as the 32-bit gateway's strtol does.
  const char *level = iniparser_getstring(d, "vek:log_level", nullptr);
  config->log_level = level ? static_cast<int32_t>(strtol32(level, nullptr, 0)) : 3;

  copy_string(d, "vek:bin", config->bin);
  copy_string(d, "vek:lib", config->lib);
  copy_string(d, "vek:klib", config->klib);
  copy_string(d, "vek:etc", config->etc);
  copy_string(d, "vek:run", config->run);
  copy_string(d, "vek:tmp", config->tmp);
  copy_string(d, "vek:share", config->share);
  copy_string(d, "vek:var", config->var);
  copy_string(d, "vek:var_lib", config->var_lib);
  copy_string(d, "vek:var_log", config->var_log);
  copy_string(d, "vek:var_tmp", config->var_tmp);
  copy_string(d, "vek:upstream_port", config->upstream_port);
  copy_string(d, "vek:downstream_port", config->downstream_port);
  copy_string(d, "vek:hw_up_if", config->hw_up_if);
  copy_string(d, "vek:hw_dw_if", config->hw_dw_if);
  copy_string(d, "vek:max_conn_count", config->max_conn_count);
  copy_string(d, "vek:max_db_entries", config->max_db_entries);
  copy_string(d, "vek:qos_mode", config->qos_mode);
  copy_string(d, "vek:skbmark", config->skbmark);
  copy_string(d, "vek:max_cache_size", config->max_cache_size);
  copy_string(d, "vek:server", config->server);
  copy_string(d, "vek:host", config->host);
  copy_string(d, "vek:product", config->product);
  copy_string(d, "vek:auth_id", config->auth_id);
  copy_string(d, "vek:auth_pwd", config->auth_pwd);
  copy_string(d, "logger:max_db_size", config->logger_max_db_size);

  join_text(config->socket_file, sizeof config->socket_file, config->run, "/vek.sock");
  join_text(config->logd_socket_file, sizeof config->logd_socket_file, config->run,
            "/veklogd.sock");
  return 0;
}

namespace {

// The candidate is `dir` followed by `name`, cut to 256 bytes.
int try_candidate(tool_config *config, const char *dir, const char *name) {
  char path[256];
  join_text(path, sizeof path, dir, name);
  if (!file_exists(path)) return 1;
  return config_parse_file(config, path);
}

}  // namespace

int config_load(tool_config *config, const char *exe_dir, const char *ini_file) {
  // An explicit file that is missing or broken falls back to the search.
  if (ini_file && config && try_candidate(config, ini_file, "") == 0) return 0;
  if (!exe_dir) return 1;
  // The installation's places, in the order the engine's scripts install
  // them. /usr/vek and /usr/vek/vek are tried twice; the second try is kept.
  const char *const dirs[] = {exe_dir,        "/usr/vek",     "/usr/vek/vek",
                              "/usr/vek",     "/usr/vek/vek", "/usr/vek/etc",
                              "/usr/vek/etc/vek", "/etc/vek"};
  for (const char *dir : dirs) {
    if (try_candidate(config, dir, "/vek.ini") == 0) return 0;
  }
  return 1;
}
