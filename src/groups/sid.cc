// vektool sid: the application-id file (app.id) in the data directory, which
// the engine takes its application categories from.
#include <cstdio>

#include "context.h"
#include "db/database.h"
#include "engine/interface.h"
#include "groups/frame.h"
#include "groups/groups.h"
#include "result.h"
#include "sys/replace.h"
#include "sys/shell.h"

namespace {

const char *g_file;  // -f: the new application-id file for load

int get(int, char **) {
  char path[300];
  data_file_path(g_context.config.var, kAppIdFile, path, sizeof path);
  if (file_exists(path)) {
    printf("{\"return\":0,\"appid_path\":\"%s\"}", path);
  } else {
    report_result(RESULT_FILE_MISSING, nullptr);
  }
  return 0;
}

// Only stores the file: the engine takes the categories at the next
// reset-to-default.
int load(int, char **) {
  if (!g_context.config.var[0]) {
    report_result(RESULT_NO_CONFIG, nullptr);
    return 0;
  }
  char destination[300];
  data_file_path(g_context.config.var, kAppIdFile, destination, sizeof destination);
  if (!g_file) {
    report_result(RESULT_NO_CONFIG, nullptr);
    return 0;
  }
  char source[256];
  snprintf(source, sizeof source, "%s", g_file);
  if (replace_file(destination, source) < 1) {
    report_result(RESULT_COPY_FAILED, nullptr);
  } else {
    printf("{\"return\":0,\"appid_path\":\"%s\"}", destination);
  }
  return 0;
}

const char kUsage[] =
    "vektool sid [options] <command> [args]\0"
    "vektool sid get\0"
    "vektool sid load -f <sid_file>\0";

constexpr argparse_option kOptions[] = {
    OPT_HELP(),
    OPT_STRING('f', nullptr, &g_file, ""),
    OPT_END(),
};

constexpr CommandEntry kCommands[] = {
    {"get", get},
    {"load", load},
};

}  // namespace

constexpr GroupFrame sid_frame = {kUsage, kOptions, kCommands, countof(kCommands),
                                  "\nBrief:", "\n", false, nullptr};

int sid_main(int argc, char **argv) {
  g_file = nullptr;
  return group_run<sid_frame>(argc, argv);
}
