// Whatever the kernel modules and the daemons leave in their files: the first
// byte picks a file and the commands that read it, the rest is its content
// (tagged records, JSON, text; NUL bytes, no line end, any length). Each
// command runs in plain and in JSON mode and must end with one of its
// statuses; ASan and UBSan watch the parsing, the copies and the printing.
#include <cstdlib>
#include <string>
#include <vector>

#include "fuzz_common.h"

namespace {

struct Scene {
  const char *file;
  std::vector<std::vector<std::string>> commands;
};

const std::vector<Scene> &scenes() {
  static const std::vector<Scene> table = {
      {"/proc/vek/qos_ctrl",
       {{"qos", "get-algo"}, {"qos", "get-qoe-active"}, {"qos", "get-qoe-profile"},
        {"qos", "get-hyqos-active"}, {"qos", "get-hw-queue-num"},
        {"qos", "set-hyqos-queue", "1", "3", "100"},
        {"qos", "set-hyqos-queues", "[[[\"a\",10]],[[\"b\",20]]]"},
        {"qos", "add-hyqos-devs", "[[\"00:11:22:33:44:55\",1,2]]"}}},
      {"/proc/vek/qoe_config", {{"qos", "get-qoe-profile-settings"}, {"qos", "get-hyqos-queues"}}},
      {"/proc/vek/qos_mode", {{"qos", "get"}}},
      {"/proc/vek/qoe_optimization", {{"qos", "get-qoe-optimization"}}},
      {"/proc/vek/qoe_config2", {{"qos", "get-qoe-bwctl"}}},
      {"/proc/vek/conn_ctx", {{"qos", "get-dscp"}}},
      {"/proc/vek/dbdev", {{"qos", "get-hyqos-devs"}, {"dev", "get"}, {"dev", "get-default-queue"}}},
      {"/proc/vek/monitor",
       {{"mon", "get-conn-count", "block"}, {"mon", "get-conn-count", "category"},
        {"mon", "get-conn-count", "priority"}}},
      {"/proc/vek/limiter_ctrl", {{"limiter", "get"}}},
      {"/proc/vek/gc", {{"gc", "get"}}},
      {"/proc/vek/ss", {{"ss", "get"}}},
      {"/proc/vek/iam_ctrl", {{"iam", "get"}}},
      {"/proc/vek/pc_rule_export", {{"iam", "get-rules"}}},
      {"/tmp/bs/bs.json", {{"dt", "get"}}},
      // The engine's own status and settings.
      {"/proc/vek/version", {{"vek", "status"}}},
      {"/proc/vek/fc_ctrl", {{"vek", "status"}}},
      {"/proc/vek/qos_traffic", {{"vek", "stats"}}},
      {"/proc/vek/malnet_mode", {{"vek", "get-mode"}}},
      {"/proc/vek/dst_ctrl", {{"vek", "get-cache-status"}}},
      // The signature modules' information records.
      {"/proc/kmod_xdn/grpxdb_info", {{"xdn", "get"}, {"vek", "status"}}},
      {"/proc/kmod_xdn/sidxdb_info", {{"xapp", "getxdb"}}},
      {"/proc/kmod_xapp/xr_info", {{"xapp", "getxr"}}},
  };
  return table;
}

void boot() {
  static bool done = false;
  if (done) return;
  done = true;
  fuzz_file("/proc/vek/qos_ctrl", "d:algorithm:1\nj:qoe:[1,1]\nj:hyqos:[0]\nd:qnum:8\n");
  for (const Scene &scene : scenes()) fuzz_file(scene.file, "");
  fuzz_file("/proc/vek/qos_ctrl", "d:algorithm:1\nj:qoe:[1,1]\nj:hyqos:[0]\nd:qnum:8\n");
  // Running service and topology daemon, as /proc lists them.
  fuzz_file("/proc/1021/comm", "vek_service\n");
  fuzz_file("/proc/1187/comm", "dt_srv\n");
  fuzz_file("/usr/vek/bin/dt_srv", "");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  if (size < 1) return 0;
  boot();
  const Scene &scene = scenes()[data[0] % scenes().size()];
  fuzz_file(scene.file, data + 1, size - 1);
  for (const std::vector<std::string> &command : scene.commands) {
    for (int json : {0, 1}) {
      int status = fuzz_run(command, json);
      // Statuses these commands end with; 255 for a group not built here.
      if (status != 0 && status != 1 && status != 71 && status != 255) abort();
    }
  }
  // Restore the queue count that the setters read.
  if (scene.file == std::string("/proc/vek/qos_ctrl"))
    fuzz_file("/proc/vek/qos_ctrl", "d:algorithm:1\nj:qoe:[1,1]\nj:hyqos:[0]\nd:qnum:8\n");
  return 0;
}
