#include "groups/groups.h"

const GroupEntry kGroups[] = {
    {"vek", vek_main, &vek_frame},
    {"mon", mon_main, &mon_frame},
    {"xdn", xdn_main, &xdn_frame},
    {"xapp", xapp_main, &xapp_frame},
    {"sid", sid_main, &sid_frame},
};
const size_t kGroupCount = sizeof kGroups / sizeof kGroups[0];
