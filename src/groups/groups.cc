#include "groups/groups.h"

#include <utility>

constexpr GroupEntry kGroups[] = {
    {"vek", vek_main, &vek_frame},
    {"qos", qos_main, &qos_frame},
    {"iam", iam_main, &iam_frame},
    {"dev", dev_main, &dev_frame},
    {"mon", mon_main, &mon_frame},
    {"gc", gc_main, &gc_frame},
    {"ss", ss_main, &ss_frame},
    {"dt", dt_main, &dt_frame},
    {"xdn", xdn_main, &xdn_frame},
    {"xapp", xapp_main, &xapp_frame},
    {"sid", sid_main, &sid_frame},
    {"diag", diag_main, &diag_frame},
    {"limiter", limiter_main, &limiter_frame},
    {"cloud", cloud_main, &cloud_frame},
};
constexpr size_t kGroupCount = sizeof kGroups / sizeof kGroups[0];

namespace {

constexpr NameTable<kGroupCount, sizeof(GroupEntry::name)> kGroupNames =
    name_table<kGroupCount, sizeof(GroupEntry::name)>(kGroups);

template <size_t... I>
bool run_entry(size_t index, int argc, char **argv, int *status, std::index_sequence<I...>) {
  return ((index == I && (*status = kGroups[I].main(argc, argv), true)) || ...);
}

}  // namespace

bool run_group(const char *word, int argc, char **argv, int *status) {
  size_t index = name_index(kGroupNames.name, kGroupCount, word);
  return run_entry(index, argc, argv, status, std::make_index_sequence<kGroupCount>());
}
