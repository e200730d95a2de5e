// The command groups: the one table the entry dispatches from (and the build
// generates the shell completion from). Each group defines its frame (usages,
// options, commands) and its entry, which runs that frame.
#pragma once

#include "groups/frame.h"

struct GroupEntry {
  char name[8];  // in the row: no relocation at start
  int (*main)(int argc, char **argv);  // called with the vector from the group word
  const GroupFrame *frame;
};

// In the engine's fixed order: vek, qos, iam, dev, mon, gc, ss, dt, xdn, xapp,
// sid, diag, limiter, cloud. A group whose commands are not built yet is not
// in the table, and so answers as an unknown group.
extern const GroupEntry kGroups[];
extern const size_t kGroupCount;

// Runs the group named `word` with the vector from the group word, as
// kGroups[i].main does, and stores its result; false when no group has that
// name. Reads the table while compiling: the tool itself carries no relocated
// copy of it.
bool run_group(const char *word, int argc, char **argv, int *status);

extern const GroupFrame vek_frame;
int vek_main(int argc, char **argv);
extern const GroupFrame qos_frame;
int qos_main(int argc, char **argv);
extern const GroupFrame iam_frame;
int iam_main(int argc, char **argv);
extern const GroupFrame dev_frame;
int dev_main(int argc, char **argv);
extern const GroupFrame mon_frame;
int mon_main(int argc, char **argv);
extern const GroupFrame gc_frame;
int gc_main(int argc, char **argv);
extern const GroupFrame ss_frame;
int ss_main(int argc, char **argv);
extern const GroupFrame dt_frame;
int dt_main(int argc, char **argv);
extern const GroupFrame xdn_frame;
int xdn_main(int argc, char **argv);
extern const GroupFrame xapp_frame;
int xapp_main(int argc, char **argv);
extern const GroupFrame sid_frame;
int sid_main(int argc, char **argv);
extern const GroupFrame diag_frame;
int diag_main(int argc, char **argv);
extern const GroupFrame limiter_frame;
int limiter_main(int argc, char **argv);
extern const GroupFrame cloud_frame;
int cloud_main(int argc, char **argv);
