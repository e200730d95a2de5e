// vektool qos: the engine's traffic shaper: on/off and mode, the algorithm
// (none, QoE, HyQoS), the QoE profile and its settings, bandwidth control,
// optimisation, DSCP tagging, and the HyQoS queues and devices.
#include <cjson/cJSON.h>

#include <cstdio>
#include <cstring>
#include <initializer_list>

#include "config/json.h"
#include "context.h"
#include "engine/interface.h"
#include "engine/state.h"
#include "groups/frame.h"
#include "groups/groups.h"
#include "result.h"
#include "sys/mac.h"
#include "sys/procfs.h"
#include "sys/scan.h"
#include "sys/text.h"

namespace {

// The index of a name is what the engine reads and writes.
// Names in rows of their own rather than pointers to them: no addresses for
// the dynamic loader to relocate at every start.
typedef char Name[10];
const Name kAlgorithms[] = {"none", "qoe", "hyqos"};
const Name kProfiles[] = {"none", "ai", "gaming", "wfh", "streaming", "office", "ai2", "custom"};
const int kAlgorithmCount = 3;
const int kProfileCount = 8;

// The engine takes at most this many devices in one add-hyqos-devs.
const int kMaxDevices = 64;

// Option values, reset before every parse.
int g_sensitivity;
int g_intensity;
const char *g_mode;

// Reports a failure with a fixed detail; returns 1.
int fail(const char *detail) {
  report_result(RESULT_FAILED, "%s", detail);
  return 1;
}

// A command argument that is not the JSON the command takes; returns 1.
int wrong_json(const char *text) {
  report_result(RESULT_FAILED, "Wrong json format: %s", text);
  return 1;
}

// How the qos commands name a record they cannot have: the older commands
// speak of the file, the HyQoS and QoE flags of the proc entry.
const RecordFailures kFileFailures = {"Failed to read file.", "Failed to read file: null."};
const RecordFailures kProcFailures = {"Failed to operate proc.", "Failed to operate proc: data null."};

// A number the engine reported: JSON as a bare member, no line end; returns 0.
int print_number(int value) {
  if (g_options.json) {
    printf("{\"return\":0,\"result\":%d}", value);
  } else {
    printf("%d\n", value);
  }
  return 0;
}

// Index of `name` in `names`, by exact comparison; -1 when absent.
int find_name(const Name *names, int count, const char *name) {
  for (int i = 0; i < count; i++) {
    if (str_equal(names[i], name) == 0) return i;
  }
  return -1;
}

int profile_index(const char *name) {
  int index = find_name(kProfiles, kProfileCount, name);
  if (index < 0) report_result(RESULT_FAILED, "Wrong profile: %s. (none, ai, gaming, wfh, streaming, office)", name);
  return index;
}

// ---- shaper switch and mode

int qos_on(int, char **) { return write_verb_ok(kQosEnabled, "1"); }
int qos_off(int, char **) { return write_verb_ok(kQosEnabled, "0"); }

// The web page parses this one line in either mode.
int qos_get(int, char **) {
  char mode[512] = "";
  read_file_into(kQosMode, mode, sizeof mode);
  printf("{\"return\":0,\"qosmode\":\"%s\"}", trim(mode));
  return 0;
}

int qos_set(int, char **) {
  if (!g_mode || !g_mode[0]) {
    report_result(RESULT_FAILED, nullptr);
    return 0;
  }
  write_proc_line(kQosMode, "%s", g_mode);
  return report_ok();
}

// ---- algorithm

int set_algo(int argc, char **argv) {
  if (argc < 2) return wrong_arg_number(argc);
  int index = find_name(kAlgorithms, kAlgorithmCount, argv[1]);
  if (index < 0) {
    report_result(RESULT_FAILED, "Wrong algorithm: %s. (none, qoe, hyqos)", argv[1]);
    return 1;
  }
  write_proc_line(kQosCtrl, "d:algorithm:%d", index);
  return report_ok();
}

int get_algo(int, char **) {
  OwnedText line;
  if (!read_record(kQosCtrl, "d:algorithm:", kFileFailures, &line)) return 1;
  int index = 0;
  if (scan32(line.get(), "d:algorithm:%d", &index) != 1) {
    return fail("Failed to read file: no algorithm field.");
  }
  // Unsigned, so that a negative number is refused as well.
  if (static_cast<unsigned>(index) > 2) {
    report_result(RESULT_FAILED, "Failed to read file: algorithm(%d) is invalid.", index);
    return 1;
  }
  print_result(RESULT_OK, kAlgorithms[index]);
  return 0;
}

// ---- QoE active flag and profile

int get_qoe_active(int, char **) {
  OwnedText line;
  if (!read_record(kQosCtrl, "j:qoe:", kProcFailures, &line)) return 1;
  int active = 0, profile = 0;
  if (scan32(line.get(), "j:qoe:[%d,%d]", &active, &profile) != 2) {
    return fail("Failed to read file: no queue number field.");
  }
  return print_number(active);
}

int set_qoe_active(int argc, char **argv) {
  if (argc < 2) return wrong_arg_number(argc);
  write_proc_line(kQoeConfig, "%d %d", kSetQoeActive, arg_int(argv[1]));
  return report_ok();
}

int get_qoe_profile(int, char **) {
  OwnedText line;
  if (!read_record(kQosCtrl, "j:qoe:", kFileFailures, &line)) return 1;
  int active = 0, profile = 0;
  // The engine reports 0 to 7; anything else is answered like a record that
  // does not parse rather than read past the list.
  if (scan32(line.get(), "j:qoe:[%d,%d]", &active, &profile) != 2 ||
      static_cast<unsigned>(profile) >= static_cast<unsigned>(kProfileCount)) {
    report_result(RESULT_FAILED, "Failed to operate proc: %s", line.get());
    return 1;
  }
  char name[32];
  snprintf(name, sizeof name, "%s", kProfiles[profile]);
  print_result(RESULT_OK, name);
  return 0;
}

int set_qoe_profile(int argc, char **argv) {
  if (argc < 2) return wrong_arg_number(argc);
  int index = profile_index(argv[1]);
  if (index < 0) return 1;
  write_proc_line(kQoeConfig, "%d %d", kSetQoeProfile, index);
  return report_ok();
}

// ---- QoE profile settings

int get_qoe_profile_settings(int, char **) {
  OwnedText line;
  if (!read_record(kQoeConfig, "j:pfs:", kFileFailures, &line)) return 1;
  char settings[256];
  if (scan32(line.get(), "j:pfs:%255s", settings) != 1) {
    return fail("Failed to read file: no algorithm field.");
  }
  print_result(RESULT_OK, settings);
  return 0;
}

int set_qoe_profile_setting(int argc, char **argv) {
  if (argc < 2) return wrong_arg_number(argc);
  int index = profile_index(argv[1]);
  if (index < 0) return 1;
  write_proc_line(kQoeConfig, "%d %d %d %d", kSetProfileSetting, index, g_sensitivity, g_intensity);
  return report_ok();
}

// [[sensitivity, intensity], ...], one pair per profile in index order. A
// bad pair stops the run where it stands: the pairs before it are written.
int set_qoe_profile_settings(int argc, char **argv) {
  if (argc < 2) return wrong_arg_number(argc);
  JsonTree settings(cJSON_Parse(argv[1]));
  if (!cJSON_IsArray(settings.get())) return wrong_json(argv[1]);
  int count = cJSON_GetArraySize(settings.get());
  if (count > kProfileCount) {
    report_result(RESULT_FAILED, "Invalid input: %d, %s", count, argv[1]);
    return 1;
  }
  int index = 0;
  for (const cJSON *pair = settings->child; pair; pair = pair->next, index++) {
    if (!cJSON_IsArray(pair) || cJSON_GetArraySize(pair) != 2) return 1;
    int32_t sensitivity = 0, intensity = 0;
    json_get_int(pair, "0", &sensitivity);
    json_get_int(pair, "1", &intensity);
    write_proc_line(kQoeConfig, "%d %d %d %d", kSetProfileSetting, index, sensitivity, intensity);
  }
  return report_ok();
}

// ---- optimisation and bandwidth control: whole files of engine JSON

int print_whole_file(const char *path) {
  OwnedText text;
  int length = 0;
  if (read_proc_file(path, &text, &length) != 0) return fail("Failed to read file.");
  if (!text || length == 0) return fail("Failed to read file: invalid.");
  return print_json_result_unended(trim(text.get()));
}

int get_qoe_optimization(int, char **) { return print_whole_file(kQoeOptimization); }
int enable_qoe_bwctl(int, char **) { return write_verb_ok(kQoeConfig2, "set-para {\"enabled\":1}"); }
int disable_qoe_bwctl(int, char **) { return write_verb_ok(kQoeConfig2, "set-para {\"enabled\":0}"); }
int get_qoe_bwctl(int, char **) { return print_whole_file(kQoeConfig2); }

int set_qoe_bwctl(int argc, char **argv) {
  if (argc < 2) return wrong_arg_number(argc);
  JsonTree settings(cJSON_Parse(argv[1]));
  if (!cJSON_IsObject(settings.get())) return wrong_json(argv[1]);
  write_proc_line(kQoeConfig2, "set-para %s", argv[1]);
  return report_ok();
}

// ---- DSCP

int get_dscp(int argc, char **argv) {
  OwnedText text;
  int length = 0;
  if (read_proc_file(kConnCtx, &text, &length) != 0 || !text || length == 0) return 1;
  JsonTree context(cJSON_Parse(trim(text.get())));
  if (!context) {
    // The message names the command's argument, not the file; without one
    // it reads "(null)", as the C library prints a missing text.
    wrong_json(argc > 1 ? argv[1] : "(null)");
    return 0;
  }
  const cJSON *dscp = cJSON_GetObjectItem(context.get(), "dscp");
  OwnedText printed(dscp ? cJSON_PrintUnformatted(dscp) : nullptr);
  if (!printed) {
    report_result(RESULT_FAILED, "Unsupported");
    return 0;
  }
  return print_json_result(printed.get());
}

int enable_dscp(int, char **) { return write_verb_ok(kConnCtx, "set-dscp-tagging 1"); }
int disable_dscp(int, char **) { return write_verb_ok(kConnCtx, "set-dscp-tagging 0"); }

int set_dscp_mapping(int argc, char **argv) {
  if (argc < 2) return wrong_arg_number(argc);
  JsonTree mapping(cJSON_Parse(argv[1]));
  if (!mapping) return wrong_json(argv[1]);
  write_proc_line(kConnCtx, "set-dscp-mapping %s", argv[1]);
  return report_ok();
}

// ---- HyQoS: active flag and queues. Direction 0 is upstream, 1 downstream;
// queue ids run from 0 to the hardware queue count, read afresh each time.

int get_hyqos_active(int, char **) {
  OwnedText line;
  if (!read_record(kQosCtrl, "j:hyqos:", kProcFailures, &line)) return 1;
  int active = 0;
  if (scan32(line.get(), "j:hyqos:[%d]", &active) != 1) {
    report_result(RESULT_FAILED, "Failed to read information from: %s", line.get());
    return 1;
  }
  return print_number(active);
}

int set_hyqos_active(int argc, char **argv) {
  if (argc < 2) return wrong_arg_number(argc);
  write_proc_line(kQoeConfig, "%d %d", kSetHyqosActive, arg_int(argv[1]));
  return report_ok();
}

int get_hyqos_queues(int, char **) {
  OwnedText rates;
  if (read_hyqos_rate(&rates) != 0) return fail("Failed to read file.");
  if (!rates) return fail("Failed to read file: invalid.");
  return print_json_result_unended(rates.get());
}

// The hardware queue count; "Failed to read file." when it cannot be read.
bool queue_count(int *count) {
  if (read_queue_number(count) == 0) return true;
  fail("Failed to read file.");
  return false;
}

int set_hyqos_queue(int argc, char **argv) {
  if (argc <= 3) return wrong_arg_number(argc);
  int direction = arg_int(argv[1]);
  int queue = arg_int(argv[2]);
  int rate = arg_int(argv[3]);
  if (static_cast<unsigned>(direction) > 1) return wrong_arg(direction);
  if (queue < 0) return wrong_arg(queue);
  if (rate < 0) return wrong_arg_text(argv[3]);
  int count = 0;
  if (!queue_count(&count)) return 1;
  if (queue >= count) return wrong_arg(queue);
  write_proc_line(kQoeConfig, "%d %d %d %d", kSetQueueRate, direction, queue, rate);
  return report_ok();
}

// [[[text, rate], ...], [[text, rate], ...]]: upstream first, one entry per
// hardware queue. The entry counts are checked before anything is written;
// a bad entry stops the run where it stands.
int set_hyqos_queues(int argc, char **argv) {
  if (argc < 2) return wrong_arg_number(argc);
  JsonTree queues(cJSON_Parse(argv[1]));
  if (!cJSON_IsArray(queues.get())) return wrong_json(argv[1]);
  int count = 0;
  if (!queue_count(&count)) return 1;
  if (cJSON_GetArraySize(queues.get()) > 2) {
    report_result(RESULT_FAILED, "Invalid input: %s", argv[1]);
    return 1;
  }
  for (const cJSON *direction = queues->child; direction; direction = direction->next) {
    if (!cJSON_IsArray(direction) || cJSON_GetArraySize(direction) != count) return 1;
  }
  int d = 0;
  for (const cJSON *direction = queues->child; direction; direction = direction->next, d++) {
    int q = 0;
    for (const cJSON *entry = direction->child; entry; entry = entry->next, q++) {
      if (!cJSON_IsArray(entry) || cJSON_GetArraySize(entry) != 2) return 1;
      const char *text = cJSON_GetStringValue(cJSON_GetArrayItem(entry, 0));
      if (!text) return 1;
      int32_t rate = 0;
      json_get_int(entry, "1", &rate);
      write_proc_line(kQoeConfig, "%d %d %d %d %s", kSetQueueRate, d, q, rate, text);
    }
  }
  return report_ok();
}

int reset_hyqos_queue(int argc, char **argv) {
  if (argc == 1) return write_verb_ok(kQoeConfig, kResetQueues);
  if (argc == 2) return wrong_arg_number(argc);
  int direction = arg_int(argv[1]);
  int queue = arg_int(argv[2]);
  if (direction < 0) return wrong_arg(direction);
  if (queue < 0) return wrong_arg(queue);
  write_proc_line(kQoeConfig, "%d %d %d", kResetQueue, direction, queue);
  return report_ok();
}

// Exits 1 in plain mode although it printed the count: scripts rely on it.
int get_hw_queue_num(int, char **) {
  OwnedText line;
  if (!read_record(kQosCtrl, "d:qnum:", kFileFailures, &line)) return 1;
  int count = 0;
  if (scan32(line.get(), "d:qnum:%d", &count) != 1) {
    return fail("Failed to read file: no queue number field.");
  }
  if (count < 0) {
    report_result(RESULT_FAILED, "Failed to read file: queue number(%d) is invalid.", count);
    return 1;
  }
  print_number(count);
  return g_options.json ? 0 : 1;
}

// ---- HyQoS devices, in the engine's device table

// The failure is reported with code 0 and exits 1; callers test the status.
int get_hyqos_devs(int, char **) {
  OwnedText devices;
  if (read_dbdev(&devices) != 0 || !devices) {
    report_result(RESULT_OK, "Failed to read file.");
    return 1;
  }
  return print_json_result_unended(devices.get());
}

// Checks one [mac, upqid, dwqid] entry; false after reporting why not (or,
// for a wrong item count, silently).
bool check_device(const cJSON *entry, int count) {
  if (!cJSON_IsArray(entry) || cJSON_GetArraySize(entry) != 3) return false;
  const char *mac = cJSON_GetStringValue(cJSON_GetArrayItem(entry, 0));
  if (!mac || !is_valid_mac(mac)) {
    report_result(RESULT_FAILED, "Invalid mac: %s", mac ? mac : "null");
    return false;
  }
  for (const char *key : {"1", "2"}) {
    int32_t queue = 0;
    json_get_int(entry, key, &queue);
    if (queue < 0 || queue >= count) {
      report_result(RESULT_FAILED, "Invalid queue id: %d", queue);
      return false;
    }
  }
  return true;
}

// Every entry is checked before the first is written. The checks after the
// parse report 1 but exit 0.
int add_hyqos_devs(int argc, char **argv) {
  if (argc < 2) return wrong_arg_number(argc);
  JsonTree devices(cJSON_Parse(argv[1]));
  if (!devices) return wrong_json(argv[1]);
  int count = 0;
  if (!queue_count(&count)) return 0;
  if (!cJSON_IsArray(devices.get())) {
    wrong_json(argv[1]);
    return 0;
  }
  int size = cJSON_GetArraySize(devices.get());
  if (size > kMaxDevices) {
    report_result(RESULT_FAILED, "Can not support devices number: %d", size);
    return 0;
  }
  for (const cJSON *entry = devices->child; entry; entry = entry->next) {
    if (!check_device(entry, count)) return 0;
  }
  for (const cJSON *entry = devices->child; entry; entry = entry->next) {
    int32_t up = 0, down = 0;
    json_get_int(entry, "1", &up);
    json_get_int(entry, "2", &down);
    write_proc_line(kDbdev, "%d %s %d %d", kSetDeviceQueue, cJSON_GetStringValue(cJSON_GetArrayItem(entry, 0)),
                    up, down);
  }
  return report_ok();
}

// No argument deletes every device. Otherwise each MAC is checked and
// deleted in turn: a bad one stops the run with the earlier ones deleted.
int del_hyqos_devs(int argc, char **argv) {
  if (argc < 2) return write_verb_ok(kDbdev, kDeleteDevices);
  JsonTree macs(cJSON_Parse(argv[1]));
  if (!macs) return wrong_json(argv[1]);
  if (!cJSON_IsArray(macs.get())) {
    wrong_json(argv[1]);
    return 0;
  }
  for (const cJSON *entry = macs->child; entry; entry = entry->next) {
    const char *mac = cJSON_GetStringValue(entry);
    if (!mac || !is_valid_mac(mac)) {
      report_result(RESULT_FAILED, "Invalid mac: %s", mac ? mac : "null");
      return 0;
    }
    write_proc_line(kDbdev, "%d %s", kDeleteDevice, mac);
  }
  return report_ok();
}

const char kUsage[] =
    "vektool qos [options] <command> [args]\0"
    "vektool qos get-qoe-active\0"
    "vektool qos set-qoe-active <active>\0"
    "vektool qos get-hyqos-active\0"
    "vektool qos set-hyqos-active <active>\0"
    "vektool qos get-algo\0"
    "vektool qos set-algo <algorithm>\0"
    "vektool qos get-qoe-profile\0"
    "vektool qos set-qoe-profile <profile>      # ai, gaming, streaming, wfh, office\0"
    "vektool qos get-qoe-profile-settings\0"
    "vektool qos set-qoe-profile-setting <profile>\0"
    "vektool qos set-qoe-profile-settings <json_settings>\0"
    "vektool qos get-qoe-optimization\0"
    "vektool qos enable-qoe-bwctl\0"
    "vektool qos disable-qoe-bwctl\0"
    "vektool qos get-qoe-bwctl\0"
    "vektool qos set-qoe-bwctl <bwctl_settings>\0"
    "vektool qos get-hyqos-queues\0"
    "vektool qos set-hyqos-queue <dir> <qid> <rate_mbps>\0"
    "vektool qos set-hyqos-queues <json_queues>     # [[<up_rate>, ...],[<dw_rate>, ...]]\0"
    "vektool qos reset-hyqos-queue                  # reset all queues\0"
    "vektool qos reset-hyqos-queue <dir> <qid>      # reset <dir> <qid>\0"
    "vektool qos get-hyqos-devs\0"
    "vektool qos add-hyqos-devs <json_devs>     # [[<mac>, <upqid>, <dwqid>], ...]\0"
    "vektool qos del-hyqos-devs <json_devs>     # [<mac>, ...]\0"
    "vektool qos get-hw-queue-num\0"
    "vektool qos get-dscp\0"
    "vektool qos enable-dscp\0"
    "vektool qos disable-dscp\0"
    "vektool qos set-dscp-mapping <dscp_class_mapping>\0";

constexpr argparse_option kOptions[] = {
    OPT_HELP(),
    OPT_INTEGER(0, "sensitivity", &g_sensitivity, "The sensitivity of profile setting."),
    OPT_INTEGER(0, "intensity", &g_intensity, "The intensity of profile setting."),
    OPT_BOOLEAN(0, "json", &g_options.json, ""),
    OPT_STRING('m', nullptr, &g_mode, ""),
    OPT_END(),
};

constexpr CommandEntry kCommands[] = {
    {"on", qos_on},
    {"off", qos_off},
    {"get", qos_get},
    {"set", qos_set},
    {"set-algo", set_algo},
    {"get-algo", get_algo},
    {"get-qoe-active", get_qoe_active},
    {"set-qoe-active", set_qoe_active},
    {"get-qoe-profile", get_qoe_profile},
    {"set-qoe-profile", set_qoe_profile},
    {"get-qoe-profile-settings", get_qoe_profile_settings},
    {"set-qoe-profile-setting", set_qoe_profile_setting},
    {"set-qoe-profile-settings", set_qoe_profile_settings},
    {"get-qoe-optimization", get_qoe_optimization},
    {"enable-qoe-bwctl", enable_qoe_bwctl},
    {"disable-qoe-bwctl", disable_qoe_bwctl},
    {"get-qoe-bwctl", get_qoe_bwctl},
    {"set-qoe-bwctl", set_qoe_bwctl},
    {"get-hyqos-active", get_hyqos_active},
    {"set-hyqos-active", set_hyqos_active},
    {"get-hyqos-queues", get_hyqos_queues},
    {"set-hyqos-queue", set_hyqos_queue},
    {"set-hyqos-queues", set_hyqos_queues},
    {"reset-hyqos-queue", reset_hyqos_queue},
    {"get-hw-queue-num", get_hw_queue_num},
    {"get-hyqos-devs", get_hyqos_devs},
    {"add-hyqos-devs", add_hyqos_devs},
    {"del-hyqos-devs", del_hyqos_devs},
    {"get-dscp", get_dscp},
    {"enable-dscp", enable_dscp},
    {"disable-dscp", disable_dscp},
    {"set-dscp-mapping", set_dscp_mapping},
};

}  // namespace

constexpr GroupFrame qos_frame = {kUsage, kOptions, kCommands, countof(kCommands),
                                  nullptr, nullptr, false, nullptr};

int qos_main(int argc, char **argv) {
  g_sensitivity = 0;
  g_intensity = 0;
  g_mode = nullptr;
  return group_run<qos_frame>(argc, argv);
}
