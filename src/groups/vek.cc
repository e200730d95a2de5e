// vektool vek: the engine as a whole: start and stop it, switch it on and
// off, read its state and statistics, change its settings, and put every
// setting of vek.ini back into it.
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <cjson/cJSON.h>

#include "config/json.h"
#include "context.h"
#include "db/appid.h"
#include "db/database.h"
#include "engine/interface.h"
#include "engine/state.h"
#include "groups/frame.h"
#include "groups/groups.h"
#include "result.h"
#include "sys/lock.h"
#include "sys/procfs.h"
#include "sys/scan.h"
#include "sys/shell.h"
#include "sys/sysroot.h"
#include "sys/text.h"

namespace {

// The group's options; they overwrite tool_config for this run.
struct VekOptions {
  int help;
  const char *wanif;
  const char *lanif;
  const char *hwwanif;
  const char *hwlanif;
  const char *qos;
  const char *iam;
  const char *cloud;
  const char *log_level;
  const char *log;
  const char *flow_count;
  const char *data_cache_count;
  const char *socket_file;
  int only_kernel;
  int only_user;
  int for_container;
};
VekOptions g_vek;

// Shell words for a command line: a plain word stays as it is.
struct Word {
  char text[SYSROOT_PATH_MAX + 8];
};

// ---- lifecycle ------------------------------------------------------------

int start(int, char **) {
  const tool_config &config = g_context.config;
  TextBuffer command;
  Word word;
  text_buffer_appendf(&command, "%s vek on", kControlProgram);
  if (config.upstream_port[0])
    text_buffer_appendf(&command, " --wan %s",
                        shell_word(word.text, sizeof word.text, config.upstream_port));
  if (config.downstream_port[0])
    text_buffer_appendf(&command, " --lan %s",
                        shell_word(word.text, sizeof word.text, config.downstream_port));
  // The control program's errors go to our standard output; its own output
  // is discarded.
  text_buffer_appendf(&command, " 2>&1 > /dev/null");
  if (!command.data) return RESULT_NO_MEMORY;
  int status = run_command("%s", command.data);
  if (status != 0) return RESULT_NO_ENGINE;
  return report_ok();
}

int stop(int, char **) {
  TextBuffer command;
  text_buffer_appendf(&command, "%s vek off", kControlProgram);
  if (!command.data) return RESULT_NO_MEMORY;
  int status = run_command("%s", command.data);
  report_result(status, nullptr);
  return status != 0 ? RESULT_NO_ENGINE : 0;
}

int run_veklog(const char *verb) {
  const tool_config &config = g_context.config;
  char program[300];
  snprintf(program, sizeof program, "%s/%s", config.bin, kLogProgram);
  Word program_word, ini_word;
  return run_command("%s %s --conf %s > /dev/null 2>&1",
                     shell_path(program_word.text, sizeof program_word.text, program), verb,
                     shell_path(ini_word.text, sizeof ini_word.text, config.ini_path));
}

// The kernel side first, then the log program.
int enable(int, char **) {
  write_proc_line(kKctrl, "enable");
  report_result(run_veklog("enable") != 0 ? RESULT_NO_SERVICE : RESULT_OK, nullptr);
  return 0;
}

// The log program first; the kernel side only when that went well.
int disable(int, char **) {
  if (run_veklog("disable") != 0) {
    report_result(RESULT_NO_SERVICE, nullptr);
    return 0;
  }
  write_proc_line(kKctrl, "disable");
  return report_ok();
}

// ---- status and statistics ------------------------------------------------

// A control file read whole into 512 bytes and trimmed.
struct SmallFile {
  char text[512];
  explicit SmallFile(const char *path) {
    read_file_into(path, text, sizeof text);
    trim(text);
  }
  long number() const { return strtol32(text, nullptr, 10); }
};

void add_record_text(cJSON *object, const char *key, const char *path, const char *tag) {
  OwnedText line;
  if (find_record(path, tag, &line) != 0 || !line) return;
  char *value = line.get() + strlen(tag);
  trim(value);
  cJSON_AddItemToObject(object, key, cJSON_CreateString(value));
}

unsigned long long database_epoch(const char *info_path) {
  unsigned long long epoch = 0;
  OwnedText text;
  if (read_proc_file(info_path, &text, nullptr) == 0 && text)
    scan32(text.get(), "writable: %*d\nsize: %*d\nepoch: %llu", &epoch);
  return epoch;
}

int status(int, char **) {
  long pid = service_pid();
  if (pid < 0) {
    report_result(RESULT_NO_SERVICE, nullptr);
    return 0;
  }
  if (!engine_loaded()) {
    report_result(RESULT_NO_ENGINE, nullptr);
    return 0;
  }
  JsonTree root(cJSON_CreateObject());
  if (!root) {
    report_result(RESULT_FAILED, nullptr);
    return 0;
  }
  cJSON_AddItemToObject(root.get(), "return", cJSON_CreateNumber(0));
  cJSON *state = cJSON_CreateObject();
  cJSON_AddItemToObject(root.get(), "status", state);

  add_record_text(state, "version", kEngineVersion, "s:major:");
  add_record_text(state, "tag", kEngineVersion, "s:minor:");
  cJSON_AddNumberToObject(state, "service_pid", static_cast<double>(pid));
  cJSON_AddNumberToObject(state, "qos", SmallFile(kQosEnabled).number() != 0);
  cJSON_AddNumberToObject(state, "parental control",
                          SmallFile(kIamEnabled).number() != 0);
  {
    SmallFile fc(kFcCtrl);
    JsonTree tree(cJSON_Parse(fc.text));
    if (tree) {
      int32_t enabled = 0;
      json_get_int(tree.get(), "ec", &enabled);
      cJSON_AddNumberToObject(state, "cloud", enabled != 0);
    }
  }
  cJSON_AddNumberToObject(state, "flows_limitation", SmallFile(kConnMax).number());
  cJSON_AddStringToObject(state, "cache0_max_size", SmallFile(kDbcfMaxSize).text);
  cJSON_AddNumberToObject(state, "cache0_limitation", SmallFile(kDbcfMaxCount).number());
  cJSON_AddStringToObject(state, "qos_mode", SmallFile(kQosMode).text);
  cJSON_AddStringToObject(state, "upstream_port", SmallFile(kMalnetUp).text);
  cJSON_AddStringToObject(state, "downstream_port", SmallFile(kMalnetDw).text);
  cJSON_AddNumberToObject(state, "vek_xdb_date",
                          static_cast<double>(database_epoch(kGroupDatabase.info_path)));
  cJSON_AddNumberToObject(state, "app_xdb_date",
                          static_cast<double>(database_epoch(kAppDatabase.info_path)));
  cJSON_AddNumberToObject(state, "vek_xr_date",
                          static_cast<double>(database_epoch(kRuleDatabase.info_path)));

  OwnedText printed(cJSON_PrintUnformatted(root.get()));
  if (printed) puts(printed.get());
  return 0;
}

int stats(int, char **) {
  OwnedText text;
  if (read_proc_file(kQosTraffic, &text, nullptr) != 0 || !text) {
    report_result(RESULT_ENGINE_INFO, nullptr);
    return 0;
  }
  trim(text.get());
  printf("{\"return\":0,\"statistics\":%s}", text.get());
  return 0;
}

int get_mode(int, char **) {
  const char tag[] = "s:mode:";
  OwnedText line;
  if (!read_record(kMalnetMode, tag, {"Failed to read file.", "Failed to read file: invalid."}, &line)) return 1;
  return print_json_result_unended(line.get() + strlen(tag));
}

int get_cache_status(int, char **) {
  enum { kSlots = 8 };
  int rules[kSlots][2] = {};
  int enable_ttl = 0;
  OwnedText text;
  if (read_proc_file(kDstCtrl, &text, nullptr) == 0 && text) {
    JsonTree tree(cJSON_Parse(text.get()));
    cJSON *ttl = cJSON_GetObjectItem(tree.get(), "et");
    if (cJSON_IsNumber(ttl)) enable_ttl = json_to_int32(ttl);
    // Room for eight rules; an engine that lists more is not heard beyond them.
    cJSON *list = cJSON_GetObjectItem(tree.get(), "dr");
    int count = cJSON_GetArraySize(list);
    for (int i = 0; i < count && i < kSlots; i++) {
      cJSON *pair = cJSON_GetArrayItem(list, i);
      for (int j = 0; j < 2; j++) {
        cJSON *value = cJSON_GetArrayItem(pair, j);
        if (cJSON_IsNumber(value)) rules[i][j] = json_to_int32(value);
      }
    }
  }
  JsonTree root(cJSON_CreateObject());
  cJSON *cache = cJSON_CreateObject();
  cJSON_AddItemToObject(root.get(), "cache", cache);
  cJSON_AddNumberToObject(cache, "enable_ttl", enable_ttl);
  cJSON *list = cJSON_CreateArray();
  cJSON_AddItemToObject(cache, "delete_rules", list);
  for (auto &rule : rules) cJSON_AddItemToArray(list, cJSON_CreateIntArray(rule, 2));

  OwnedText printed(cJSON_PrintUnformatted(root.get()));
  const char *out = printed ? printed.get() : "{}";
  return print_json_result(out);
}

// ---- settings -------------------------------------------------------------

void write_entry_verb(const char *const *files, const char *verb, int value) {
  for (const char *const *file = files; *file; file++) write_proc_line(*file, "%s %d", verb, value);
}

const char *const kCountFiles[] = {kFcCtrl, kDstCtrl, kNeighborCtrl, nullptr};
const char *const kCacheFiles[] = {kFcCtrl, kDstCtrl, kNeighborCtrl, kMacCtrl, nullptr};
const char *const kRuleFiles[] = {kFcCtrl, kDstCtrl, kMacCtrl, kConnCtx, nullptr};

// Counts come from -f/-d of this command line, not from vek.ini.
int config_cmd(int, char **) {
  if (g_vek.flow_count && strtol32(g_vek.flow_count, nullptr, 10) > 0)
    write_proc_line(kConnMax, "%s", g_vek.flow_count);
  if (g_vek.data_cache_count) {
    write_proc_line(kDbcfMaxCount, "%s", g_vek.data_cache_count);
    int count = 0;
    if (scan32(g_vek.data_cache_count, "%d", &count) == 1 && count > 0)
      write_entry_verb(kCountFiles, "set-entry-count", count);
  }
  return report_ok();
}

int set_mode(int argc, char **argv) {
  if (argc < 2) return wrong_arg_number(argc);
  const char *mode = argv[1];
  int value;
  size_t length = strlen(mode);
  if (length == 7 && strcasecmp(mode, "gateway") == 0) {
    value = 0;
  } else if (length == 6 && strcasecmp(mode, "bridge") == 0) {
    value = 1;
  } else {
    report_result(RESULT_FAILED, "invalid arg: %s", mode);
    return 1;
  }
  write_proc_line(kPppoeFilter, "%d", value);
  write_proc_line(kMalnetMode, "%d", value);
  return report_ok();
}

int enable_c6y_acc(int, char **) { return write_verb_ok(kKctrl, "enable-c6y-acc"); }
int disable_c6y_acc(int, char **) { return write_verb_ok(kKctrl, "disable-c6y-acc"); }

// A rule that does not give three numbers is passed over in silence.
int set_cache_delete_rule(int argc, char **argv) {
  for (int i = 1; i < argc; i++) {
    int id = 0, threshold = 0, timeout = 0;
    if (scan32(argv[i], "%d,%d,%d", &id, &threshold, &timeout) != 3) continue;
    for (const char *const *file = kRuleFiles; *file; file++)
      write_proc_line(*file, "set-delete-rule %d %d %d", id, threshold, timeout);
  }
  return report_ok();
}

int enable_cache_ttl(int argc, char **argv) {
  int value = 1;
  if (argc > 1) scan32(argv[1], "%d", &value);
  write_proc_line(kDstCtrl, "enable-ttl-delete %d", value != 0 ? 1 : 0);
  return report_ok();
}

// Puts every setting of vek.ini back into the engine and reloads the
// categories and the three databases. No write is checked: the engine takes
// what it can.
int reset_to_default(int, char **) {
  const tool_config &config = g_context.config;
  write_proc_line(kQosEnabled, "%s", config.qos ? "1" : "0");
  write_proc_line(kIamEnabled, "%s", config.iam ? "1" : "0");
  write_proc_line(kFcCtrl, "%s", config.cs ? "enable-cloud" : "disable-cloud");
  write_proc_line(kConnMax, "%s", config.max_conn_count);
  write_proc_line(kDbcfMaxSize, "%s", config.max_cache_size);
  write_proc_line(kDbcfMaxCount, "%s", config.max_db_entries);
  write_proc_line(kQosMode, "%s", config.qos_mode);
  int value = 0;
  if (scan32(config.max_cache_size, "%d", &value) == 1 && value > 0)
    write_entry_verb(kCacheFiles, "set-entry-mbytes", value);
  value = 0;
  if (scan32(config.max_db_entries, "%d", &value) == 1 && value > 0)
    write_entry_verb(kCacheFiles, "set-entry-count", value);
  if (config.skbmark[0]) {
    char mark[128];
    snprintf(mark, sizeof mark, "j:skb:%s", config.skbmark);
    write_proc_line(kRtk, "%s", mark);
  }
  // The category table and the three imports are multi-step changes: one
  // caller at a time, all four under one hold of the lock, so that two
  // resets never mix their tables either. A caller that cannot have the lock
  // finds the engine not ready for them, which reset never reports.
  EngineLock lock;
  if (lock.take(config.run)) {
    write_proc_line(kKctrl, "reset-appid-c6y");
    char app_id[300];
    data_file_path(config.var, kAppIdFile, app_id, sizeof app_id);
    app_c6y_push(app_id, kKctrl);
    db_reload_default(kGroupDatabase, config.var);
    db_reload_default(kAppDatabase, config.var);
    db_reload_default(kRuleDatabase, config.var);
  }
  return report_ok();
}

// ---- the group --------------------------------------------------------------

void copy_option(char *field, size_t size, const char *value) {
  if (value) snprintf(field, size, "%s", value);
}

// "on" and "off" exactly; any other word leaves the switch as loaded.
void apply_switch(int32_t *field, const char *value) {
  if (!value) return;
  if (strcmp(value, "on") == 0) *field = 1;
  if (strcmp(value, "off") == 0) *field = 0;
}

void apply_options() {
  tool_config &config = g_context.config;
  copy_option(config.upstream_port, sizeof config.upstream_port, g_vek.wanif);
  copy_option(config.downstream_port, sizeof config.downstream_port, g_vek.lanif);
  copy_option(config.hw_up_if, sizeof config.hw_up_if, g_vek.hwwanif);
  copy_option(config.hw_dw_if, sizeof config.hw_dw_if, g_vek.hwlanif);
  copy_option(config.max_conn_count, sizeof config.max_conn_count, g_vek.flow_count);
  copy_option(config.max_cache_size, sizeof config.max_cache_size, g_vek.data_cache_count);
  copy_option(config.socket_file, sizeof config.socket_file, g_vek.socket_file);
  if (g_vek.log_level) config.log_level = static_cast<int32_t>(strtol32(g_vek.log_level, nullptr, 10));
  copy_option(config.log_file, sizeof config.log_file, g_vek.log);
  apply_switch(&config.qos, g_vek.qos);
  apply_switch(&config.iam, g_vek.iam);
  apply_switch(&config.cs, g_vek.cloud);
}

const char kUsage[] =
    "vektool vek [options] <command> [args]\0"
    "vektool vek enable\0"
    "vektool vek disable\0"
    "vektool vek start [--only-kernel] [--only-user] [--for-container]\0"
    "vektool vek start --wanif ppp0\0"
    "vektool vek stop [--only-kernel] [--only-user] [--for-container]\0"
    "vektool vek get-mode\0"
    "vektool vek set-mode <mode>\0"
    "vektool vek enable-c6y-acc\0"
    "vektool vek disable-c6y-acc\0"
    "vektool vek reset-to-default\0"
    "vektool vek get-cache-status\0"
    "vektool vek set-cache-delete-rule <id>,<threshold>,<timeout> [<id>,<threshold>,<timeout> ...]\0"
    "vektool vek enable-cache-ttl [0|1]\0"
    "vektool vek config -d <db entries> -f <flow entries>\0";

constexpr argparse_option kOptions[] = {
    OPT_HELP(),
    OPT_STRING('w', "wanif", &g_vek.wanif, ""),
    OPT_STRING('b', "lanif", &g_vek.lanif, ""),
    OPT_STRING(0, "hwwanif", &g_vek.hwwanif, ""),
    OPT_STRING(0, "hwlanif", &g_vek.hwlanif, ""),
    OPT_STRING(0, "qos", &g_vek.qos, ""),
    OPT_STRING(0, "iam", &g_vek.iam, ""),
    OPT_STRING(0, "cloud", &g_vek.cloud, ""),
    OPT_STRING(0, "log-level", &g_vek.log_level, ""),
    OPT_STRING('l', "log", &g_vek.log, ""),
    OPT_STRING('f', "flow-count", &g_vek.flow_count, ""),
    OPT_STRING('d', "data-cache-count", &g_vek.data_cache_count, ""),
    OPT_STRING(0, "socket-file", &g_vek.socket_file, ""),
    OPT_BOOLEAN(0, "only-kernel", &g_vek.only_kernel, "Start VEK with kernel space only."),
    OPT_BOOLEAN(0, "only-user", &g_vek.only_user, "Start VEK with user space only."),
    OPT_BOOLEAN(0, "for-container", &g_vek.for_container, "Start VEK with container (user space)."),
    OPT_BOOLEAN(0, "json", &g_options.json, ""),
    OPT_END(),
};

// "disable" is listed twice; the second row is never reached.
constexpr CommandEntry kCommands[] = {
    {"on", start},
    {"off", stop},
    {"start", start},
    {"stop", stop},
    {"stats", stats},
    {"status", status},
    {"enable", enable},
    {"disable", disable},
    {"get-mode", get_mode},
    {"set-mode", set_mode},
    {"disable", disable},
    {"enable-c6y-acc", enable_c6y_acc},
    {"disable-c6y-acc", disable_c6y_acc},
    {"reset-to-default", reset_to_default},
    {"get-cache-status", get_cache_status},
    {"set-cache-delete-rule", set_cache_delete_rule},
    {"enable-cache-ttl", enable_cache_ttl},
    {"config", config_cmd},
};

}  // namespace

constexpr GroupFrame vek_frame = {kUsage, kOptions, kCommands, countof(kCommands),
                                  "\nBrief:", "\n<mode>: mode name. ex. gateway, bridge", true,
                                  apply_options};

int vek_main(int argc, char **argv) { return group_run<vek_frame>(argc, argv); }
