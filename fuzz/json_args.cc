// Every handler that parses a JSON argument: the first byte picks the
// command, the rest is the argument (up to a NUL, as on a command line). The
// engine reports eight hardware queues.
#include <cstdlib>
#include <string>
#include <vector>

#include "fuzz_common.h"

namespace {

const std::vector<std::vector<std::string>> kCommands = {
    {"qos", "set-qoe-profile-settings"}, {"qos", "set-hyqos-queues"},
    {"qos", "add-hyqos-devs"},           {"qos", "del-hyqos-devs"},
    {"qos", "set-qoe-bwctl"},            {"qos", "set-dscp-mapping"},
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  if (size < 1) return 0;
  static bool booted = false;
  if (!booted) {
    booted = true;
    for (const char *file : {"/proc/vek/qoe_config", "/proc/vek/dbdev", "/proc/vek/qoe_config2",
                             "/proc/vek/conn_ctx"})
      fuzz_file(file, "");
  }
  fuzz_file("/proc/vek/qos_ctrl", "d:algorithm:2\nj:qoe:[1,1]\nj:hyqos:[1]\nd:qnum:8\n");
  std::vector<std::string> words = kCommands[data[0] % kCommands.size()];
  words.push_back(std::string(reinterpret_cast<const char *>(data + 1), size - 1).c_str());
  for (int json : {0, 1}) {
    int status = fuzz_run(words, json);
    if (status != 0 && status != 1) abort();
  }
  return 0;
}
