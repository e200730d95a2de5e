// vektool dev: the engine's device table in /proc/vek/dbdev: the devices it
// has seen, the queue pair each is assigned to, and the default pair.
#include <cstdio>
#include <cstring>

#include "context.h"
#include "engine/interface.h"
#include "groups/frame.h"
#include "groups/groups.h"
#include "result.h"
#include "sys/mac.h"
#include "sys/procfs.h"
#include "sys/text.h"

namespace {

// The engine's JSON text after `tag`, printed as it comes: JSON as a bare
// member without a line end, plain with one.
int print_record(const char *tag) {
  OwnedText line;
  if (!read_record(kDbdev, tag, {"Failed to read file.", "Failed to read file: invalid."}, &line)) return 1;
  return print_json_result_unended(line.get() + strlen(tag));
}

// The MAC argument as the engine gets it: cut to 31 characters, and checked
// in that form.
struct MacCopy {
  char text[32];
  bool valid;
};

MacCopy copy_mac(const char *argument) {
  MacCopy mac;
  snprintf(mac.text, sizeof mac.text, "%s", argument);
  mac.valid = is_valid_mac(mac.text) != 0;
  return mac;
}

int dev_get(int, char **) { return print_record("j:devs:"); }
int dev_get_default_queue(int, char **) { return print_record("j:defq:"); }

// No argument: every device. The word count alone decides.
int dev_delete(int argc, char **argv) {
  if (argc == 1) return write_verb_ok(kDbdev, kDeleteDevices);
  MacCopy mac = copy_mac(argv[1]);
  if (!mac.valid) return wrong_arg_text(mac.text);
  write_proc_line(kDbdev, "%d %s", kDeleteDevice, mac.text);
  return report_ok();
}

int dev_set_default_queue(int argc, char **argv) {
  if (argc < 3) return wrong_arg_number(argc);
  int up = arg_int(argv[1]);
  int down = arg_int(argv[2]);
  if (up < 0) return wrong_arg(up);
  if (down < 0) return wrong_arg(down);
  write_proc_line(kDbdev, "%d %d %d", kSetDefaultQueue, up, down);
  return report_ok();
}

int dev_reset_default_queue(int, char **) { return write_verb_ok(kDbdev, kResetDefaultQueue); }

// The engine judges the queue ids against its queue count.
int dev_set_queue(int argc, char **argv) {
  if (argc < 4) return wrong_arg_number(argc);
  MacCopy mac = copy_mac(argv[1]);
  if (!mac.valid) return wrong_arg_text(mac.text);
  int up = arg_int(argv[2]);
  int down = arg_int(argv[3]);
  if (up < 0) return wrong_arg(up);
  if (down < 0) return wrong_arg(down);
  write_proc_line(kDbdev, "%d %s %d %d", kSetDeviceQueue, mac.text, up, down);
  return report_ok();
}

int dev_reset_queue(int argc, char **argv) {
  if (argc == 1) return write_verb_ok(kDbdev, kResetDeviceQueues);
  MacCopy mac = copy_mac(argv[1]);
  if (!mac.valid) return wrong_arg_text(mac.text);
  write_proc_line(kDbdev, "%d %s", kResetDeviceQueue, mac.text);
  return report_ok();
}

// The default-queue commands are left out of the help on purpose.
const char kUsage[] =
    "vektool dev [options] <command> [args]\0"
    "vektool dev get\0"
    "vektool dev delete                     # delete all devices\0"
    "vektool dev delete <mac>               # delete <mac>\0"
    "vektool dev set-queue <mac> <upqid> <dwqid>\0"
    "vektool dev reset-queue                # reset queue id of all devices\0"
    "vektool dev reset-queue <mac>          # reset queue id of <mac>\0";

constexpr argparse_option kOptions[] = {
    OPT_HELP(),
    OPT_BOOLEAN(0, "json", &g_options.json, ""),
    OPT_END(),
};

constexpr CommandEntry kCommands[] = {
    {"get", dev_get},
    {"delete", dev_delete},
    {"get-default-queue", dev_get_default_queue},
    {"set-default-queue", dev_set_default_queue},
    {"reset-default-queue", dev_reset_default_queue},
    {"set-queue", dev_set_queue},
    {"reset-queue", dev_reset_queue},
};

}  // namespace

constexpr GroupFrame dev_frame = {kUsage, kOptions, kCommands, countof(kCommands),
                                  nullptr, nullptr, false, nullptr};

int dev_main(int argc, char **argv) { return group_run<dev_frame>(argc, argv); }
