// vektool ss: the engine's ss feature, its mode, the list of devices it
// applies to (by MAC, with an optional name) and the list of host names with
// their addresses. Every command is one verb to, or one read of, /proc/vek/ss.
#include <cstdio>
#include <cstring>

#include "context.h"
#include "engine/interface.h"
#include "groups/frame.h"
#include "groups/groups.h"
#include "result.h"
#include "sys/host.h"
#include "sys/mac.h"
#include "sys/procfs.h"
#include "sys/text.h"

namespace {

const size_t kDeviceNameMax = 31;

int ss_enable(int, char **) { return write_verb_ok(kSs, "enable"); }
int ss_disable(int, char **) { return write_verb_ok(kSs, "disable"); }

// The state text goes out as the engine wrote it, line end included.
int ss_get(int, char **) { return print_proc_text(kSs, false); }

int ss_add(int argc, char **argv) {
  if (argc < 3) return wrong_arg_number(argc);
  if (!is_valid_host_name(argv[1])) return invalid_arg(argv[1]);
  if (!is_valid_ip_address(argv[2])) return invalid_arg(argv[2]);
  write_proc_line(kSs, "add %s %s", argv[1], argv[2]);
  return report_ok();
}

// Either mode in any case; the text goes to the engine as typed.
int ss_set_mode(int argc, char **argv) {
  if (argc < 2) return wrong_arg_number(argc);
  if (str_equal_nocase(argv[1], "all_device") != 0 && str_equal_nocase(argv[1], "by_device") != 0)
    return invalid_arg(argv[1]);
  write_proc_line(kSs, "set-mode %s", argv[1]);
  return report_ok();
}

int ss_add_dev(int argc, char **argv) {
  if (argc < 2) return wrong_arg_number(argc);
  if (!is_valid_mac(argv[1])) return invalid_arg(argv[1]);
  if (argc == 2) {
    write_proc_line(kSs, "add-device %s", argv[1]);
    return report_ok();
  }
  if (strlen(argv[2]) > kDeviceNameMax) {
    report_result(RESULT_FAILED, "invalid arg: %s. Max length=31.", argv[2]);
    return 1;
  }
  write_proc_line(kSs, "add-device %s %s", argv[1], argv[2]);
  return report_ok();
}

// Alone it empties the device list.
int ss_del_dev(int argc, char **argv) {
  if (argc == 1) return write_verb_ok(kSs, "clear-device");
  if (!is_valid_mac(argv[1])) return invalid_arg(argv[1]);
  write_proc_line(kSs, "del-device %s", argv[1]);
  return report_ok();
}

int device_switch(int argc, char **argv, const char *verb) {
  if (argc < 2) return wrong_arg_number(argc);
  if (!is_valid_mac(argv[1])) return invalid_arg(argv[1]);
  write_proc_line(kSs, "%s %s", verb, argv[1]);
  return report_ok();
}

int ss_set_dev_enable(int argc, char **argv) { return device_switch(argc, argv, "enable-device"); }
int ss_set_dev_disable(int argc, char **argv) { return device_switch(argc, argv, "disable-device"); }

// Alone, or with "all" in any case, it empties the host list.
int ss_delete(int argc, char **argv) {
  if (argc == 1 || str_equal_nocase(argv[1], "all") == 0) return write_verb_ok(kSs, "clear");
  if (!is_valid_host_name(argv[1])) return invalid_arg(argv[1]);
  write_proc_line(kSs, "delete %s", argv[1]);
  return report_ok();
}

// The usage names get-dev, which the table does not have: callers have always
// met it as an unknown command, so both stay as they are.
const char kUsage[] =
    "vektool ss [options] <command> [args]\0"
    "vektool ss enable\0"
    "vektool ss disable\0"
    "vektool ss set-mode <mode>\0"
    "vektool ss get-dev\0"
    "vektool ss add-dev <mac> [<name>]\0"
    "vektool ss del-dev [<mac>]\0"
    "vektool ss set-dev-enable <mac>\0"
    "vektool ss set-dev-disable <mac>\0";

constexpr argparse_option kOptions[] = {
    OPT_HELP(),
    OPT_BOOLEAN(0, "json", &g_options.json, ""),
    OPT_END(),
};

constexpr CommandEntry kCommands[] = {
    {"enable", ss_enable},
    {"disable", ss_disable},
    {"get", ss_get},
    {"add", ss_add},
    {"set-mode", ss_set_mode},
    {"add-dev", ss_add_dev},
    {"del-dev", ss_del_dev},
    {"set-dev-enable", ss_set_dev_enable},
    {"set-dev-disable", ss_set_dev_disable},
    {"delete", ss_delete},
};

}  // namespace

constexpr GroupFrame ss_frame = {kUsage, kOptions, kCommands, countof(kCommands),
                                 "\nBrief:", "\n<mode>: mode name. ex. all_device, by_device",
                                 false, nullptr};

int ss_main(int argc, char **argv) { return group_run<ss_frame>(argc, argv); }
