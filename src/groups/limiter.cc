// vektool limiter: per-target rate limits of the engine (upstream and
// downstream kbit/s and an enabled flag) in /proc/vek/limiter_ctrl. A target
// is a MAC address, an IPv4 subnet or a numeric id, by --type.
#include <arpa/inet.h>
#include <cjson/cJSON.h>

#include <cctype>
#include <cstdio>
#include <cstring>

#include "config/json.h"
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

enum TargetType { TARGET_MAC = 0, TARGET_SUBNET = 1, TARGET_ID = 2 };

// Option values, reset before every parse; -1 leaves the choice to the
// engine (1 Mbit/s, enabled).
int g_up;
int g_down;
int g_enabled;
const char *g_mac;  // taken, not used by any command
int g_type;

const char kDocument[] = "{\"s\":0,\"mr\":[],\"ir\":[],\"vr\":[]}";
const char kMacRule[] = "{\"s\":0,\"m\":\"\",\"r\":[0, 0]}";
const char kIpRule[] = "{\"s\":0,\"a\":\"\",\"r\":[0, 0]}";

bool all_digits(const char *text) {
  for (; *text; text++) {
    if (!isdigit(static_cast<unsigned char>(*text))) return false;
  }
  return true;
}

// "a.b.c.d/p": an IPv4 address, then a prefix of digits no larger than 32.
// The prefix is read as one byte, as the engine reads it.
bool valid_subnet(const char *text) {
  const char *slash = strchr(text, '/');
  if (!slash) return false;
  const char *prefix = slash + 1;
  if (!prefix[0] || !all_digits(prefix)) return false;
  char address[64];
  size_t length = static_cast<size_t>(slash - text);
  if (length >= sizeof address) return false;
  memcpy(address, text, length);
  address[length] = '\0';
  struct in_addr parsed;
  if (inet_pton(AF_INET, address, &parsed) != 1) return false;
  unsigned char bits = 0;
  if (scan32(prefix, "%hhu", &bits) != 1) return false;
  return bits <= 32;
}

bool valid_target(int type, const char *target) {
  switch (type) {
    case TARGET_MAC:
      return is_valid_mac(target) != 0;
    case TARGET_SUBNET:
      return valid_subnet(target);
    case TARGET_ID:
      return all_digits(target);
    default:
      return false;
  }
}

// The target of set and del, or a report of why there is none (1).
int check_target(int argc, char **argv) {
  if (argc < 2) return wrong_arg_number(argc);
  if (!valid_target(g_type, argv[1])) {
    report_result(RESULT_FAILED, "invalid arg: %s", argv[1]);
    return 1;
  }
  return 0;
}

int limiter_set(int argc, char **argv) {
  if (check_target(argc, argv) != 0) return 1;
  // The engine takes the enabled flag before the two rates.
  write_proc_line(kLimiterCtrl, "set %d %s %d %d %d", g_type, argv[1], g_enabled, g_up, g_down);
  return report_ok();
}

int limiter_del(int argc, char **argv) {
  if (check_target(argc, argv) != 0) return 1;
  write_proc_line(kLimiterCtrl, "del %d %s", g_type, argv[1]);
  return report_ok();
}

int limiter_clear(int, char **) { return write_verb_ok(kLimiterCtrl, "clear"); }

// Copies the engine's rules of list `list` into the document's list: each
// rule's state, its target under `key` and its rate pair, in the engine's
// order. Rules of the id list are not shown.
void copy_rules(cJSON *engine, cJSON *document, const char *list, const char *rule_template,
                const char *key) {
  cJSON *from = nullptr;
  cJSON *to = nullptr;
  json_get_item(engine, list, &from);
  json_get_item(document, list, &to);
  if (!cJSON_IsArray(from) || !to) return;
  for (cJSON *rule = from->child; rule; rule = rule->next) {
    JsonTree copy(cJSON_Parse(rule_template));
    if (!copy) continue;
    const char *target = nullptr;
    if (json_get_string(rule, key, &target) == JSON_OK && target) {
      json_set_string(copy.get(), key, target);
    }
    int32_t state = 0;
    if (json_get_int(rule, "s", &state) == JSON_OK) json_set_int(copy.get(), "s", state);
    if (cJSON_IsObject(rule)) json_set_item(copy.get(), "r", cJSON_DetachItemFromObject(rule, "r"));
    json_set_item(to, "", copy.release());
  }
}

int limiter_get(int, char **) {
  // The engine's tools make sure memory is there before they start.
  JsonTree probe(cJSON_CreateObject());
  if (!probe) {
    report_result(RESULT_NO_MEMORY, "memory is not enough");
    return 0;
  }
  JsonTree document(cJSON_Parse(kDocument));
  if (!document) {
    report_result(RESULT_COPY_FAILED, "Failed to read file.");
    return 0;
  }
  OwnedText text;
  int length = 0;
  if (read_proc_file(kLimiterCtrl, &text, &length) == 0 && text) {
    JsonTree engine(cJSON_Parse(text.get()));
    if (engine) {
      int32_t state = 0;
      if (json_get_int(engine.get(), "s", &state) == JSON_OK) json_set_int(document.get(), "s", state);
      copy_rules(engine.get(), document.get(), "mr", kMacRule, "m");
      copy_rules(engine.get(), document.get(), "ir", kIpRule, "a");
    }
  }
  OwnedText printed(cJSON_PrintUnformatted(document.get()));
  if (!printed) {
    report_result(RESULT_NO_MEMORY, "memory is not enough");
    return 0;
  }
  return print_json_result(printed.get());
}

const char kUsage[] =
    "vektool limiter [options] <command> [args]\0"
    "vektool limiter get\0"
    "vektool limiter del <target> [--type <type>]\0"
    "vektool limiter set <target> [--up <up_kbps>] [--down <down_kbps>] [--en <enable>] [--type <type>]\0"
    "vektool limiter clear\0";

constexpr argparse_option kOptions[] = {
    OPT_HELP(),
    OPT_BOOLEAN(0, "json", &g_options.json, ""),
    OPT_INTEGER(0, "up", &g_up, ""),
    OPT_INTEGER(0, "down", &g_down, ""),
    OPT_INTEGER(0, "en", &g_enabled, ""),
    OPT_STRING(0, "mac", &g_mac, ""),
    OPT_INTEGER(0, "type", &g_type, ""),
    OPT_END(),
};

constexpr CommandEntry kCommands[] = {
    {"get", limiter_get},
    {"del", limiter_del},
    {"set", limiter_set},
    {"clear", limiter_clear},
};

}  // namespace

constexpr GroupFrame limiter_frame = {
    kUsage, kOptions, kCommands, countof(kCommands), "\nBrief:",
    "\n<up_kbps>: Limit rate for upstream flow. Unit: kbps. Default value: 1 Mbps.\n"
    "<down_kbps>: Limit rate for downstream flow. Unit: kbps. Default value: 1 Mbps.\n"
    "<enable>: Enabled status of limiter of <mac>.\n"
    "<type>: The type of the target.",
    false, nullptr};

int limiter_main(int argc, char **argv) {
  g_up = -1;
  g_down = -1;
  g_enabled = -1;
  g_mac = nullptr;
  g_type = 0;
  return group_run<limiter_frame>(argc, argv);
}
