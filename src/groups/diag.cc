// vektool diag: the service's diagnostic report, asked over its socket. The
// modes are the other way round from the rest of the tool: JSON output gives
// the service's whole reply, plain output only its "result" member.
#include <cstdio>

#include <cjson/cJSON.h>

#include "config/json.h"
#include "config/service.h"
#include "context.h"
#include "groups/frame.h"
#include "groups/groups.h"
#include "result.h"
#include "sys/text.h"

namespace {

const char kGetDiag[] = "{\"v\":1,\"method\":\"get-diag\"}";

// Plain mode prints the member unformatted and without a line end; a reply
// that does not parse or has no "result" prints nothing.
void print_result_member(const char *reply) {
  JsonTree tree(cJSON_Parse(reply));
  cJSON *member = nullptr;
  if (!tree || json_get_item(tree.get(), "result", &member) != JSON_OK || !member) return;
  char *text = cJSON_PrintUnformatted(member);
  if (!text) return;
  printf("%s", text);
  cJSON_free(text);
}

int diag_get(int, char **) {
  OwnedText reply;
  int status = service_request(g_context.config.socket_file, kGetDiag, sizeof kGetDiag - 1, &reply, nullptr);
  if (status != SERVICE_OK || !reply) {
    report_result(RESULT_SOCKET, "Failed to read socket.");
    return 0;
  }
  trim(reply.get());
  if (g_options.json) {
    printf("%s\n", reply.get());
  } else {
    print_result_member(reply.get());
  }
  return 0;
}

const char kUsage[] =
    "vektool diag [options] <command> [args]\0"
    "vektool diag get\0";

constexpr argparse_option kOptions[] = {
    OPT_HELP(),
    OPT_BOOLEAN(0, "json", &g_options.json, ""),
    OPT_END(),
};

constexpr CommandEntry kCommands[] = {
    {"get", diag_get},
};

}  // namespace

constexpr GroupFrame diag_frame = {kUsage, kOptions, kCommands, countof(kCommands),
                                   nullptr, nullptr, false, nullptr};

int diag_main(int argc, char **argv) { return group_run<diag_frame>(argc, argv); }
