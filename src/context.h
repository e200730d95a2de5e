// The two process-wide records of a run: the global options found on the
// command line and the installation paths with the loaded configuration.
#pragma once

#include "config/config.h"

struct GlobalOptions {
  int json;              // non-zero: results are printed as JSON
  const char *log_file;  // after -l / --log
  const char *ini_file;  // after -i / --ini
};

struct GlobalContext {
  char exe_dir[128];     // directory of the running executable
  char root_dir[128];    // its parent: the installation root
  tool_config config;
};

extern GlobalOptions g_options;
extern GlobalContext g_context;
