// vektool dt (its usage says "bs"): the topology daemon dt_srv, started and
// stopped through the shell, and its topology file wrapped into one answer
// with the daemon's state.
#include <cstdio>
#include <cstring>

#include "context.h"
#include "engine/interface.h"
#include "groups/frame.h"
#include "groups/groups.h"
#include "result.h"
#include "sys/procfs.h"
#include "sys/shell.h"
#include "sys/text.h"

namespace {

const char kEmptyTopology[] = "{\"bands\":[],\"stas\":[]}";

bool daemon_running() { return find_pid_by_name(kTopologyDaemon) >= 0; }

// The daemon as installed: "<root>/bin/dt_srv".
void daemon_path(char *out, size_t size) {
  snprintf(out, size, "%s/bin/%s", g_context.root_dir, kTopologyDaemon);
}

// Success is reported also when the daemon already ran; the shell's status is
// not looked at.
int dt_start(int, char **) {
  if (!daemon_running()) {
    char path[300];
    char word[512];
    daemon_path(path, sizeof path);
    run_command("%s", shell_path(word, sizeof word, path));
  }
  return report_ok();
}

int dt_stop(int, char **) {
  run_command("killall %s", kTopologyDaemon);
  return report_ok();
}

// {"state":<0|1>,"topology":<the file, or the empty topology>}. The file is
// read only while the daemon runs, and inserted without a check that it is
// JSON. A running daemon without a readable file gives code -1.
int dt_get(int, char **) {
  bool running = daemon_running();
  int status = 0;
  OwnedText topology;
  if (running) {
    status = read_daemon_file(kTopologyFile, &topology, nullptr);
    trim(topology.get());
  }
  TextBuffer answer;
  text_buffer_appendf(&answer, "{\"state\":%d", running ? 1 : 0);
  text_buffer_appendf(&answer, ",\"topology\":");
  if (topology && topology.get()[0] != '\0') {
    text_buffer_append(&answer, topology.get(), static_cast<unsigned int>(strlen(topology.get())));
  } else {
    text_buffer_appendf(&answer, "%s", kEmptyTopology);
  }
  text_buffer_appendf(&answer, "}");
  if (!answer.data) {
    report_result(RESULT_FAILED, nullptr);
    return 0;
  }
  print_result(status, answer.data);
  return 0;
}

const char kUsage[] =
    "vektool bs <command> [options] [args]\0"
    "vektool bs start\0"
    "vektool bs stop\0"
    "vektool bs get\0";

constexpr argparse_option kOptions[] = {
    OPT_HELP(),
    OPT_BOOLEAN(0, "json", &g_options.json, ""),
    OPT_END(),
};

constexpr CommandEntry kCommands[] = {
    {"start", dt_start},
    {"stop", dt_stop},
    {"get", dt_get},
};

}  // namespace

constexpr GroupFrame dt_frame = {kUsage, kOptions, kCommands, countof(kCommands),
                                 "\nBrief:", "\n", false, nullptr};

// Without its daemon installed the group answers "not support" to anything,
// --help included, before the command line is parsed.
int dt_main(int argc, char **argv) {
  char path[300];
  daemon_path(path, sizeof path);
  if (!file_exists(path)) {
    print_result(RESULT_FAILED, "not support");
    return 0;
  }
  return group_run<dt_frame>(argc, argv);
}
