// What the rule files of the simulated engine share: owned cJSON trees, the
// content of control files, tagged records and the parsed verb. engine.cc
// holds these and dispatches a write to the rule of its file; the rules live
// in one file per area, as the tool's groups do (rules_vek.cc, rules_shaping.cc,
// rules_policy.cc).
#pragma once

#include <cjson/cJSON.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "common.h"
#include "engine.h"

namespace eng {

const long kQueueRate = 1000;    // Mbit/s of a queue that was never set
const long kLimiterRate = 1024;  // kbit/s the limiter applies for "-1"

struct JsonDelete {
  void operator()(cJSON *j) const { cJSON_Delete(j); }
};
using Json = std::unique_ptr<cJSON, JsonDelete>;

std::string print_json(const cJSON *j);

// Content access. store replaces the content of an existing control file,
// keeping its mode (a file made unreadable stays unreadable); a file that is
// gone is left gone.
bool load(const SimRoot &r, const std::string &path, std::string *content);
bool store(const SimRoot &r, const std::string &path, const std::string &content);
std::string default_content(const std::string &path);

// The first line of `content` that begins with `tag`, without tag and newline.
bool get_record(const std::string &content, const std::string &tag, std::string *value);
// Replaces the record line with `tag`, or appends it when there is none.
std::string set_record(const std::string &content, const std::string &tag, const std::string &value);
// A JSON record of a tagged file, or the one of the file's default content
// when the present one is missing or does not parse.
Json json_record(const std::string &path, const std::string &content, const std::string &tag);
// A whole-file JSON object, or the default one when the present content does
// not parse as an object.
Json json_file(const SimRoot &r, const std::string &path);
bool store_json(const SimRoot &r, const std::string &path, const cJSON *j);

// Sets a member in its place, or adds it at the end when it is new: the
// engine prints its members in a fixed order.
void set_member(cJSON *obj, const char *key, cJSON *item);
void set_number(cJSON *obj, const char *key, double value);
void set_string(cJSON *obj, const char *key, const std::string &value);
cJSON *array_member(cJSON *obj, const char *key);
void empty_array(cJSON *obj, const char *key);
cJSON *int_pair(long a, long b);
// Sets every number in the tree to 0.
void zero_numbers(cJSON *j);
// Finds the element of an array whose string member `key` equals `value`.
cJSON *find_by(cJSON *array, const char *key, const std::string &value, int *index);

// One verb as the engine parses it.
struct Verb {
  std::string text;                // trimmed verb
  std::vector<std::string> words;  // split at white space
  long num(size_t i, bool *ok) const {
    long v = 0;
    if (i >= words.size() || !parse_int(words[i], &v)) *ok = false;
    return v;
  }
  // The text after the first `n` words (and the blank after them).
  std::string rest(size_t n) const {
    size_t pos = 0;
    for (size_t i = 0; i < n; i++) {
      pos = text.find_first_not_of(" \t", pos);
      if (pos == std::string::npos) return "";
      pos = text.find_first_of(" \t", pos);
      if (pos == std::string::npos) return "";
    }
    return trim(text.substr(pos));
  }
};

Verb make_verb(const char *data, size_t len);
bool is_digits(const std::string &s);
bool valid_subnet(const std::string &s);
bool valid_address(const std::string &s);
bool valid_host(const std::string &s);

// The rules: each applies one verb to its file and returns the byte count,
// or a negative errno when the engine refuses it.
using Rule = long(const SimRoot &r, const std::string &path, const Verb &v, size_t len);
// rules_vek.cc: switches, limits, caches, kctrl, modes, signature databases
Rule rule_switch, rule_limit, rule_kctrl, rule_rtk, rule_malnet_mode, rule_qos_mode;
long rule_cache(const SimRoot &r, const std::string &path, const Verb &v, size_t len,
                bool entries, bool rules);
long rule_db(const SimRoot &r, const Database &db, const std::string &what, const char *data,
             size_t len);
// rules_shaping.cc: qos, qoe, devices, limiter, monitor
Rule rule_qos_ctrl, rule_qoe_config, rule_qoe_config2, rule_dbdev, rule_limiter, rule_monitor;
// rules_policy.cc: gc, ss, iam
Rule rule_gc, rule_ss, rule_iam_ctrl, rule_tzoffset;
long rule_pc_import(const SimRoot &r, const char *data, size_t len);

}  // namespace eng
