#include "groups/groups.h"

const GroupEntry kGroups[] = {
    {"qos", qos_main, &qos_frame},
    {"dev", dev_main, &dev_frame},
    {"mon", mon_main, &mon_frame},
    {"limiter", limiter_main, &limiter_frame},
};
const size_t kGroupCount = sizeof kGroups / sizeof kGroups[0];
