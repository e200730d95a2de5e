// vektool cloud: the engine's cloud service, switched through the kernel and
// asked for its state over the service socket.
#include <cstdio>

#include "config/service.h"
#include "context.h"
#include "engine/interface.h"
#include "groups/frame.h"
#include "groups/groups.h"
#include "result.h"
#include "sys/procfs.h"
#include "sys/text.h"

namespace {

const char kGetCs[] = "{\"v\":1,\"method\":\"get-cs\"}";

// The service's answer, trimmed, whatever the output mode; no answer at all
// (no socket, refused, silent for 3 s, closed without a byte) is code 53 and
// still exit 0.
int cloud_get(int, char **) {
  OwnedText reply;
  int status = service_request(g_context.config.socket_file, kGetCs, sizeof kGetCs - 1, &reply, nullptr);
  if (status != SERVICE_OK || !reply) {
    report_result(RESULT_SOCKET, "Failed to read socket.");
    return 0;
  }
  printf("%s\n", trim(reply.get()));
  return 0;
}

int cloud_on(int, char **) { return write_verb_ok(kFcCtrl, "enable-cloud"); }
int cloud_off(int, char **) { return write_verb_ok(kFcCtrl, "disable-cloud"); }

const char kUsage[] =
    "vektool cloud [options] <command> [args]\0"
    "vektool cloud get\0"
    "vektool cloud on\0"
    "vektool cloud off\0";

// No --json here: only the global pre-scan sets JSON output for this group.
constexpr argparse_option kOptions[] = {
    OPT_HELP(),
    OPT_END(),
};

constexpr CommandEntry kCommands[] = {
    {"get", cloud_get},
    {"on", cloud_on},
    {"off", cloud_off},
};

}  // namespace

constexpr GroupFrame cloud_frame = {kUsage, kOptions, kCommands, countof(kCommands),
                                    "\nBrief:", "\n", false, nullptr};

int cloud_main(int argc, char **argv) { return group_run<cloud_frame>(argc, argv); }
