// The INI configuration file vek.ini and the record it is loaded into.
#pragma once

#include <cstdint>

struct tool_config {
  char ini_path[256];        // the file that was loaded, as the gateway sees it
  char bin[256];             // vek:bin
  char lib[256];             // vek:lib
  char klib[256];            // vek:klib, kernel modules
  char etc[256];             // vek:etc
  char run[256];             // vek:run, sockets
  char tmp[256];             // vek:tmp
  char share[256];           // vek:share
  char var[256];             // vek:var, signature databases and app.id
  char var_lib[256];         // vek:var_lib
  char var_log[256];         // vek:var_log
  char var_tmp[256];         // vek:var_tmp
  int32_t qos;               // vek:qos, boolean, default 1
  int32_t iam;               // vek:iam, boolean, default 1
  int32_t cs;                // vek:cs, boolean (cloud service), default 1
  char upstream_port[64];    // vek:upstream_port, WAN interface
  char downstream_port[64];  // vek:downstream_port, LAN interface
  char hw_up_if[64];         // vek:hw_up_if
  char hw_dw_if[64];         // vek:hw_dw_if
  char max_conn_count[64];   // vek:max_conn_count, decimal text
  char max_db_entries[64];   // vek:max_db_entries, decimal text
  char qos_mode[64];         // vek:qos_mode, decimal text
  char socket_file[512];     // "<run>/vek.sock"
  char skbmark[64];          // vek:skbmark
  char log_file[64];         // --log / -l only
  char max_cache_size[96];   // vek:max_cache_size, decimal text
  char server[64];           // vek:server, cloud login
  char host[64];             // vek:host
  char product[64];          // vek:product
  char auth_id[64];          // vek:auth_id
  char auth_pwd[64];         // vek:auth_pwd
  char logger_max_db_size[256];  // logger:max_db_size
  char logd_socket_file[512];    // "<run>/veklogd.sock"
  int32_t log_level;         // vek:log_level, default 3
};

// Searches for vek.ini (the explicit path first, then the installation's
// places) and loads the first file that parses. 0 when one was loaded, else 1.
int config_load(tool_config *config, const char *exe_dir, const char *ini_file);
// Loads one file into the record. 0, or 1 (record untouched) when iniparser
// cannot load it.
int config_parse_file(tool_config *config, const char *path);
