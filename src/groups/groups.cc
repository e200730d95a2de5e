#include "groups/groups.h"

const GroupEntry kGroups[] = {
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
const size_t kGroupCount = sizeof kGroups / sizeof kGroups[0];
