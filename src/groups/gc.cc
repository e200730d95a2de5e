// vektool gc: per-device priority adjustment. The tool checks the command
// line, turns priority names into the engine's numbers and writes one verb per
// step to /proc/vek/gc; the kernel keeps each device's state and expiry clock.
#include <cstdio>
#include <cstdlib>

#include "context.h"
#include "engine/interface.h"
#include "groups/frame.h"
#include "groups/groups.h"
#include "result.h"
#include "sys/mac.h"
#include "sys/procfs.h"
#include "sys/scan.h"
#include "sys/text.h"

namespace {

// The index is the number the engine takes. "l2l" is taken although the help
// lists only the first five.
// Names in rows of their own: no addresses to relocate at every start.
const char kPriorities[][8] = {"pass", "highest", "high", "medium", "low", "l2l"};

int g_duration;  // --duration, minutes; 0 is permanent
int g_negative;  // --negative, read by set-relative only

// Index of an exactly matching priority name (same bytes, same case), or -1.
int priority_index(const char *name) {
  for (size_t i = 0; i < sizeof kPriorities / sizeof kPriorities[0]; i++)
    if (str_equal(name, kPriorities[i]) == 0) return static_cast<int>(i);
  return -1;
}

// Offsets need leading digits ("3x" is 3); anything else is refused.
bool scan_offset(const char *text, int *offset) { return scan32(text, "%d", offset) == 1; }

// Minutes and amounts are taken as they come: text that is not a number is 0.
int plain_number(const char *text) { return arg_int(text); }

// The negated offset wraps as the engine's 32-bit arithmetic does.
int negated(int offset) { return static_cast<int>(0u - static_cast<unsigned int>(offset)); }

int enable_device(const char *mac) {
  write_proc_line(kGc, "set-enable %s %d", mac, 1);
  return report_ok();
}

// The offset steps: relative shift, the duration, and the device switched on.
int shift(const char *mac, int offset) {
  write_proc_line(kGc, "set-relative %s %d", mac, offset);
  write_proc_line(kGc, "set-duration %s %d", mac, g_duration);
  return enable_device(mac);
}

int gc_get(int, char **) { return print_proc_text(kGc, true); }

int gc_map(int argc, char **argv) {
  if (argc < 4) return wrong_arg_number(argc);
  if (!is_valid_mac(argv[1])) return invalid_arg(argv[1]);
  int from = priority_index(argv[2]);
  if (from < 0) return invalid_arg(argv[2]);
  int to = priority_index(argv[3]);
  if (to < 0) return invalid_arg(argv[3]);
  write_proc_line(kGc, "map %s %d %d", argv[1], from, to);
  return enable_device(argv[1]);
}

int gc_enable(int, char **) { return write_verb_ok(kGc, "enable"); }
int gc_disable(int, char **) { return write_verb_ok(kGc, "disable"); }

int gc_set_absolute(int argc, char **argv) {
  if (argc < 3) return wrong_arg_number(argc);
  if (!is_valid_mac(argv[1])) return invalid_arg(argv[1]);
  int priority = priority_index(argv[2]);
  if (priority < 0) return invalid_arg(argv[2]);
  write_proc_line(kGc, "set-absolute %s %d", argv[1], priority);
  write_proc_line(kGc, "set-duration %s %d", argv[1], g_duration);
  return enable_device(argv[1]);
}

// The three offset commands share their checks; `sign` is +1 or -1, and 0
// lets --negative choose.
int offset_command(int argc, char **argv, int sign) {
  if (argc < 3) return wrong_arg_number(argc);
  if (!is_valid_mac(argv[1])) return invalid_arg(argv[1]);
  int offset = 0;
  if (!scan_offset(argv[2], &offset)) return invalid_arg(argv[2]);
  bool negate = sign < 0 || (sign == 0 && g_negative);
  return shift(argv[1], negate ? negated(offset) : offset);
}

int gc_set_relative(int argc, char **argv) { return offset_command(argc, argv, 0); }
int gc_set_upgrade(int argc, char **argv) { return offset_command(argc, argv, 1); }
int gc_set_downgrade(int argc, char **argv) { return offset_command(argc, argv, -1); }

int gc_set_duration(int argc, char **argv) {
  if (argc < 3) return wrong_arg_number(argc);
  if (!is_valid_mac(argv[1])) return invalid_arg(argv[1]);
  write_proc_line(kGc, "set-duration %s %d", argv[1], plain_number(argv[2]));
  return enable_device(argv[1]);
}

int gc_raise(int argc, char **argv) {
  if (argc < 4) return wrong_arg_number(argc);
  if (!is_valid_mac(argv[1])) return invalid_arg(argv[1]);
  int priority = priority_index(argv[2]);
  if (priority < 0) return invalid_arg(argv[2]);
  write_proc_line(kGc, "raise %s %d %d", argv[1], priority, plain_number(argv[3]));
  return enable_device(argv[1]);
}

// Alone it clears every device; with a MAC it deletes that one.
int gc_delete(int argc, char **argv) {
  if (argc == 1) {
    write_proc_line(kGc, "clear");
  } else {
    if (!is_valid_mac(argv[1])) return invalid_arg(argv[1]);
    write_proc_line(kGc, "delete %s", argv[1]);
  }
  return report_ok();
}

const char kUsage[] =
    "vektool gc [options] <command> [args]\0"
    "vektool gc get\0"
    "vektool gc map <mac> <from_priority> <to_priority>\0"
    "vektool gc set-absolute <mac> <to_priority>\0"
    "vektool gc set-relative <mac> <offset> [--duration 0]\0"
    "vektool gc set-upgrade <mac> <offset> [--duration 0]\0"
    "vektool gc set-downgrade <mac> <offset> [--duration 0]\0"
    "vektool gc set-duration <mac> <duration>\0"
    "vektool gc delete [<mac>]\0";

constexpr argparse_option kOptions[] = {
    OPT_HELP(),
    OPT_INTEGER(0, "duration", &g_duration, "The duration in minutes."),
    OPT_BOOLEAN(0, "negative", &g_negative, "The offset value is negative."),
    OPT_BOOLEAN(0, "json", &g_options.json, ""),
    OPT_END(),
};

constexpr CommandEntry kCommands[] = {
    {"get", gc_get},
    {"map", gc_map},
    {"enable", gc_enable},
    {"disable", gc_disable},
    {"set-absolute", gc_set_absolute},
    {"set-relative", gc_set_relative},
    {"set-upgrade", gc_set_upgrade},
    {"set-downgrade", gc_set_downgrade},
    {"set-duration", gc_set_duration},
    {"raise", gc_raise},
    {"delete", gc_delete},
};

}  // namespace

constexpr GroupFrame gc_frame = {kUsage,
                                 kOptions,
                                 kCommands,
                                 countof(kCommands),
                                 "\nBrief:",
                                 "\n<priority>: pass,highest,high,medium,low.\n"
                                 "<duration>: in minutes. Expired time = now + duration * 60,\n"
                                 "            which 0 means that permanent.",
                                 false,
                                 nullptr};

// The option values start from 0 on every run of the entry.
int gc_main(int argc, char **argv) {
  g_duration = 0;
  g_negative = 0;
  return group_run<gc_frame>(argc, argv);
}
