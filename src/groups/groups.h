// The command groups: the one table the entry dispatches from (and the build
// generates the shell completion from). Each group defines its frame (usages,
// options, commands) and its entry, which runs that frame.
#pragma once

#include "groups/frame.h"

struct GroupEntry {
  const char *name;
  int (*main)(int argc, char **argv);  // called with the vector from the group word
  const GroupFrame *frame;
};

// In the engine's fixed order: vek, qos, iam, dev, mon, gc, ss, dt, xdn, xapp,
// sid, diag, limiter, cloud. A group whose commands are not built yet is not
// in the table, and so answers as an unknown group.
extern const GroupEntry kGroups[];
extern const size_t kGroupCount;

extern const GroupFrame vek_frame;
int vek_main(int argc, char **argv);
extern const GroupFrame mon_frame;
int mon_main(int argc, char **argv);
extern const GroupFrame xdn_frame;
int xdn_main(int argc, char **argv);
extern const GroupFrame xapp_frame;
int xapp_main(int argc, char **argv);
extern const GroupFrame sid_frame;
int sid_main(int argc, char **argv);
