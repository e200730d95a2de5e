#include "engine.h"

#include <arpa/inet.h>
#include <cjson/cJSON.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>

const Database kDatabases[3] = {
    {"grpxdb", "/proc/kmod_xdn", "vek.xdb"},
    {"sidxdb", "/proc/kmod_xdn", "app.xdb"},
    {"xr", "/proc/kmod_xapp", "vek.xr"},
};

const Database *find_database(const std::string &name) {
  for (const Database &db : kDatabases)
    if (name == db.name) return &db;
  return nullptr;
}

namespace {

const long kQueueRate = 1000;     // Mbit/s of a queue that was never set
const long kLimiterRate = 1024;   // kbit/s the limiter applies for "-1"
const unsigned long long kEpochBase = 1700000000ULL;

struct JsonDelete {
  void operator()(cJSON *j) const { cJSON_Delete(j); }
};
using Json = std::unique_ptr<cJSON, JsonDelete>;

std::string print_json(const cJSON *j) {
  char *s = cJSON_PrintUnformatted(j);
  std::string out = s ? s : "";
  free(s);
  return out;
}

std::string pfs_default() {
  std::string s = "[";
  for (int i = 0; i < 8; i++) s += i ? ",[50,50]" : "[50,50]";
  return s + "]";
}

std::string queue_list(int count) {
  std::string s = "[";
  for (int i = 0; i < count; i++) s += strprintf("%s[\"\",%ld]", i ? "," : "", kQueueRate);
  return s + "]";
}

const char *const kMonitorDefault =
    "u:block_conns:42\n"
    "j:cat_conns:{\"1\":12,\"4\":7,\"9\":3}\n"
    "j:prio_conns:[0,2,10,25,4,0]\n";

// ---- content access -------------------------------------------------------

bool load(const SimRoot &r, const std::string &path, std::string *content) {
  return read_file(r.backing(path), content);
}

// Replaces the content of an existing control file, keeping its mode (a file
// made unreadable stays unreadable). A file that is gone is left gone.
bool store(const SimRoot &r, const std::string &path, const std::string &content) {
  std::string host = r.backing(path);
  struct stat st;
  if (stat(host.c_str(), &st) != 0) return false;
  return write_file(host, content, st.st_mode & 07777);
}

std::string default_content(const std::string &path) {
  for (const ControlFile &f : engine_control_files())
    if (f.path == path) return f.content;
  return "";
}

// The first line of `content` that begins with `tag`, without tag and newline.
bool get_record(const std::string &content, const std::string &tag, std::string *value) {
  size_t pos = 0;
  while (pos < content.size()) {
    size_t end = content.find('\n', pos);
    if (end == std::string::npos) end = content.size();
    if (content.compare(pos, tag.size(), tag) == 0 && end - pos >= tag.size()) {
      *value = content.substr(pos + tag.size(), end - pos - tag.size());
      return true;
    }
    pos = end + 1;
  }
  return false;
}

// Replaces the record line with `tag`, or appends it when there is none.
std::string set_record(const std::string &content, const std::string &tag, const std::string &value) {
  std::string line = tag + value;
  size_t pos = 0;
  while (pos < content.size()) {
    size_t end = content.find('\n', pos);
    if (end == std::string::npos) end = content.size();
    if (content.compare(pos, tag.size(), tag) == 0)
      return content.substr(0, pos) + line + content.substr(end);
    pos = end + 1;
  }
  std::string out = content;
  if (!out.empty() && out.back() != '\n') out += '\n';
  return out + line + "\n";
}

// A JSON record of a tagged file, or the one of the file's default content
// when the present one is missing or does not parse.
Json json_record(const std::string &path, const std::string &content, const std::string &tag) {
  std::string value;
  if (get_record(content, tag, &value)) {
    Json j(cJSON_Parse(value.c_str()));
    if (j) return j;
  }
  if (get_record(default_content(path), tag, &value)) return Json(cJSON_Parse(value.c_str()));
  return Json(cJSON_CreateArray());
}

// A whole-file JSON object, or the default one when the present content does
// not parse as an object.
Json json_file(const SimRoot &r, const std::string &path) {
  std::string content;
  if (load(r, path, &content)) {
    Json j(cJSON_Parse(content.c_str()));
    if (j && cJSON_IsObject(j.get())) return j;
  }
  return Json(cJSON_Parse(default_content(path).c_str()));
}

bool store_json(const SimRoot &r, const std::string &path, const cJSON *j) {
  return store(r, path, print_json(j) + "\n");
}

// Sets a member in its place, or adds it at the end when it is new: the
// engine prints its members in a fixed order.
void set_member(cJSON *obj, const char *key, cJSON *item) {
  if (cJSON_GetObjectItemCaseSensitive(obj, key))
    cJSON_ReplaceItemInObjectCaseSensitive(obj, key, item);
  else
    cJSON_AddItemToObject(obj, key, item);
}

void set_number(cJSON *obj, const char *key, double value) { set_member(obj, key, cJSON_CreateNumber(value)); }

void set_string(cJSON *obj, const char *key, const std::string &value) {
  set_member(obj, key, cJSON_CreateString(value.c_str()));
}

cJSON *array_member(cJSON *obj, const char *key) {
  cJSON *a = cJSON_GetObjectItemCaseSensitive(obj, key);
  if (a && cJSON_IsArray(a)) return a;
  set_member(obj, key, cJSON_CreateArray());
  return cJSON_GetObjectItemCaseSensitive(obj, key);
}

void empty_array(cJSON *obj, const char *key) { set_member(obj, key, cJSON_CreateArray()); }

cJSON *int_pair(long a, long b) {
  cJSON *p = cJSON_CreateArray();
  cJSON_AddItemToArray(p, cJSON_CreateNumber(static_cast<double>(a)));
  cJSON_AddItemToArray(p, cJSON_CreateNumber(static_cast<double>(b)));
  return p;
}

// Sets every number in the tree to 0.
void zero_numbers(cJSON *j) {
  for (cJSON *c = j; c; c = c->next) {
    if (cJSON_IsNumber(c)) cJSON_SetNumberValue(c, 0);
    if (c->child) zero_numbers(c->child);
  }
}

// Finds the element of an array whose string member `key` equals `value`.
cJSON *find_by(cJSON *array, const char *key, const std::string &value, int *index) {
  int i = 0;
  for (cJSON *e = array ? array->child : nullptr; e; e = e->next, i++) {
    const char *s = cJSON_GetStringValue(cJSON_GetObjectItem(e, key));
    if (s && value == s) {
      if (index) *index = i;
      return e;
    }
  }
  return nullptr;
}

// ---- verb parsing ---------------------------------------------------------

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

Verb make_verb(const char *data, size_t len) {
  Verb v;
  v.text = trim(std::string(data, len));
  v.words = split_words(v.text);
  return v;
}

bool is_digits(const std::string &s) {
  if (s.empty()) return false;
  for (char c : s)
    if (c < '0' || c > '9') return false;
  return true;
}

bool valid_subnet(const std::string &s) {
  size_t slash = s.find('/');
  if (slash == std::string::npos) return false;
  std::string addr = s.substr(0, slash), prefix = s.substr(slash + 1);
  unsigned char buf[sizeof(struct in_addr)];
  long p = 0;
  return inet_pton(AF_INET, addr.c_str(), buf) == 1 && is_digits(prefix) &&
         parse_int(prefix, &p) && p <= 32;
}

bool valid_address(const std::string &s) {
  unsigned char buf[sizeof(struct in6_addr)];
  return inet_pton(AF_INET, s.c_str(), buf) == 1 || inet_pton(AF_INET6, s.c_str(), buf) == 1;
}

bool valid_host(const std::string &s) {
  if (s.empty() || s.size() >= 256) return false;
  int run = 0;
  for (char c : s) {
    if (isalnum(static_cast<unsigned char>(c))) {
      run++;
    } else if (c == '.' && run > 0) {
      run = 0;
    } else {
      return false;
    }
  }
  return run > 0;
}

// ---- the rules ------------------------------------------------------------

// A file holding one number ("1\n"), switched with a decimal verb.
long rule_switch(const SimRoot &r, const std::string &path, const Verb &v, size_t len) {
  long n = 0;
  if (!parse_int(v.text, &n)) return -EINVAL;
  store(r, path, n ? "1\n" : "0\n");
  return static_cast<long>(len);
}

// A file holding one non-negative decimal limit.
long rule_limit(const SimRoot &r, const std::string &path, const Verb &v, size_t len) {
  long n = 0;
  if (!is_digits(v.text) || !parse_int(v.text, &n)) return -EINVAL;
  store(r, path, strprintf("%ld\n", n));
  return static_cast<long>(len);
}

// The cache tables: fc_ctrl, dst_ctrl, neighbor_ctrl, mac_ctrl, conn_ctx.
// `entries`: the table takes the entry limits; `rules`: the delete rules.
long rule_cache(const SimRoot &r, const std::string &path, const Verb &v, size_t len,
                bool entries, bool rules) {
  if (v.words.empty()) return -EINVAL;
  Json j = json_file(r, path);
  if (!j) return -EIO;
  const std::string &w = v.words[0];
  bool ok = true;
  if (entries && (w == "set-entry-count" || w == "set-entry-mbytes") && v.words.size() == 2) {
    long n = v.num(1, &ok);
    if (!ok || n <= 0) return -EINVAL;
    set_number(j.get(), w == "set-entry-count" ? "ecnt" : "emb", static_cast<double>(n));
  } else if (rules && w == "set-delete-rule" && v.words.size() == 4) {
    long id = v.num(1, &ok), thr = v.num(2, &ok), to = v.num(3, &ok);
    if (!ok || id < 0 || id > 7) return -EINVAL;
    cJSON *dr = array_member(j.get(), "dr");
    while (cJSON_GetArraySize(dr) <= id) cJSON_AddItemToArray(dr, int_pair(0, 0));
    cJSON_ReplaceItemInArray(dr, static_cast<int>(id), int_pair(thr, to));
  } else if (path == "/proc/vek/fc_ctrl" && (v.text == "enable-cloud" || v.text == "disable-cloud")) {
    set_number(j.get(), "ec", v.text == "enable-cloud" ? 1 : 0);
  } else if (path == "/proc/vek/dst_ctrl" && w == "enable-ttl-delete" && v.words.size() == 2) {
    long n = v.num(1, &ok);
    if (!ok) return -EINVAL;
    set_number(j.get(), "et", n ? 1 : 0);
  } else if (path == "/proc/vek/conn_ctx" && w == "set-dscp-tagging" && v.words.size() == 2) {
    long n = v.num(1, &ok);
    if (!ok) return -EINVAL;
    cJSON *dscp = cJSON_GetObjectItem(j.get(), "dscp");
    if (!dscp || !cJSON_IsObject(dscp)) {
      set_member(j.get(), "dscp", cJSON_CreateObject());
      dscp = cJSON_GetObjectItem(j.get(), "dscp");
    }
    set_number(dscp, "tagging", n ? 1 : 0);
  } else if (path == "/proc/vek/conn_ctx" && w == "set-dscp-mapping") {
    Json mapping(cJSON_Parse(v.rest(1).c_str()));
    if (!mapping) return -EINVAL;
    cJSON *dscp = cJSON_GetObjectItem(j.get(), "dscp");
    if (!dscp || !cJSON_IsObject(dscp)) {
      set_member(j.get(), "dscp", cJSON_CreateObject());
      dscp = cJSON_GetObjectItem(j.get(), "dscp");
    }
    set_member(dscp, "mapping", mapping.release());
  } else {
    return -EINVAL;
  }
  store_json(r, path, j.get());
  return static_cast<long>(len);
}

long rule_kctrl(const SimRoot &r, const std::string &path, const Verb &v, size_t len) {
  std::string content;
  load(r, path, &content);
  if (v.text == "enable" || v.text == "disable") {
    content = set_record(content, "d:enabled:", v.text == "enable" ? "1" : "0");
  } else if (v.text == "enable-c6y-acc" || v.text == "disable-c6y-acc") {
    content = set_record(content, "d:c6y_acc:", v.text == "enable-c6y-acc" ? "1" : "0");
  } else if (v.text == "reset-appid-c6y") {
    content = set_record(content, "d:appid_c6y:", "0");
  } else if (v.words.size() == 3 && v.words[0] == "set-appid-c6y") {
    bool ok = true;
    long id = v.num(1, &ok), cat = v.num(2, &ok);
    if (!ok || id < 0 || id > 65535 || cat < 0 || cat > 127) return -EINVAL;
    std::string count;
    long n = 0;
    if (get_record(content, "d:appid_c6y:", &count)) parse_int(trim(count), &n);
    content = set_record(content, "d:appid_c6y:", std::to_string(n + 1));
  } else {
    return -EINVAL;
  }
  store(r, path, content);
  return static_cast<long>(len);
}

long rule_qos_ctrl(const SimRoot &r, const std::string &path, const Verb &v, size_t len) {
  std::string content;
  load(r, path, &content);
  long n = 0;
  const std::string tag = "d:algorithm:";
  if (v.text.compare(0, tag.size(), tag) != 0 || !parse_int(v.text.substr(tag.size()), &n) ||
      n < 0 || n > 2)
    return -EINVAL;
  store(r, path, set_record(content, tag, std::to_string(n)));
  return static_cast<long>(len);
}

// Sets item `index` of the JSON array record `tag` of qos_ctrl.
void set_qos_ctrl_item(const SimRoot &r, const std::string &tag, int index, long value) {
  const std::string path = "/proc/vek/qos_ctrl";
  std::string content;
  if (!load(r, path, &content)) return;
  Json j = json_record(path, content, tag);
  if (!j || !cJSON_IsArray(j.get())) return;
  while (cJSON_GetArraySize(j.get()) <= index) cJSON_AddItemToArray(j.get(), cJSON_CreateNumber(0));
  cJSON_ReplaceItemInArray(j.get(), index, cJSON_CreateNumber(static_cast<double>(value)));
  store(r, path, set_record(content, tag, print_json(j.get())));
}

long queue_count(const SimRoot &r) {
  std::string content, value;
  long n = 0;
  if (load(r, "/proc/vek/qos_ctrl", &content) && get_record(content, "d:qnum:", &value) &&
      parse_int(trim(value), &n))
    return n;
  return 0;
}

cJSON *queue_entry(const std::string &text, long rate) {
  cJSON *e = cJSON_CreateArray();
  cJSON_AddItemToArray(e, cJSON_CreateString(text.c_str()));
  cJSON_AddItemToArray(e, cJSON_CreateNumber(static_cast<double>(rate)));
  return e;
}

// The queue table [[up entries], [down entries]], each entry [text, rate],
// grown to the hardware queue count.
void fit_queues(cJSON *rates, long qnum) {
  while (cJSON_GetArraySize(rates) < 2) cJSON_AddItemToArray(rates, cJSON_CreateArray());
  for (int d = 0; d < 2; d++) {
    cJSON *dir = cJSON_GetArrayItem(rates, d);
    if (!cJSON_IsArray(dir)) {
      cJSON_ReplaceItemInArray(rates, d, cJSON_CreateArray());
      dir = cJSON_GetArrayItem(rates, d);
    }
    while (cJSON_GetArraySize(dir) < qnum) cJSON_AddItemToArray(dir, queue_entry("", kQueueRate));
  }
}

long rule_qoe_config(const SimRoot &r, const std::string &path, const Verb &v, size_t len) {
  if (v.words.empty()) return -EINVAL;
  std::string content;
  load(r, path, &content);
  bool ok = true;
  long cmd = v.num(0, &ok);
  if (!ok) return -EINVAL;
  size_t argc = v.words.size() - 1;
  if ((cmd == 1 || cmd == 2) && argc == 1) {
    long active = v.num(1, &ok);
    if (!ok) return -EINVAL;
    set_qos_ctrl_item(r, cmd == 1 ? "j:qoe:" : "j:hyqos:", 0, active ? 1 : 0);
    return static_cast<long>(len);
  }
  if (cmd == 3 && argc == 1) {
    long profile = v.num(1, &ok);
    if (!ok || profile < 0 || profile > 7) return -EINVAL;
    set_qos_ctrl_item(r, "j:qoe:", 1, profile);
    return static_cast<long>(len);
  }
  if (cmd == 60 && argc == 3) {
    long profile = v.num(1, &ok), sens = v.num(2, &ok), inten = v.num(3, &ok);
    if (!ok || profile < 0 || profile > 7) return -EINVAL;
    Json pfs = json_record(path, content, "j:pfs:");
    while (cJSON_GetArraySize(pfs.get()) < 8) cJSON_AddItemToArray(pfs.get(), int_pair(50, 50));
    cJSON_ReplaceItemInArray(pfs.get(), static_cast<int>(profile), int_pair(sens, inten));
    store(r, path, set_record(content, "j:pfs:", print_json(pfs.get())));
    return static_cast<long>(len);
  }
  if (cmd == 501 || cmd == 510 || cmd == 511) {
    long qnum = queue_count(r);
    Json rates = json_record(path, content, "j:hyqos_rate:");
    if (!rates || !cJSON_IsArray(rates.get())) rates.reset(cJSON_CreateArray());
    fit_queues(rates.get(), qnum);
    if (cmd == 510 && argc == 0) {
      cJSON_Delete(rates.release());
      rates.reset(cJSON_CreateArray());
      fit_queues(rates.get(), qnum);
    } else if ((cmd == 501 && argc >= 3) || (cmd == 511 && argc == 2)) {
      long dir = v.num(1, &ok), q = v.num(2, &ok);
      long rate = cmd == 501 ? v.num(3, &ok) : kQueueRate;
      if (!ok || dir < 0 || dir > 1 || q < 0 || q >= qnum || rate < 0) return -EINVAL;
      cJSON *d = cJSON_GetArrayItem(rates.get(), static_cast<int>(dir));
      std::string text;
      if (cmd == 501) {
        if (argc > 3) {
          text = v.rest(4);
        } else {
          const char *old = cJSON_GetStringValue(cJSON_GetArrayItem(cJSON_GetArrayItem(d, static_cast<int>(q)), 0));
          text = old ? old : "";
        }
      }
      cJSON_ReplaceItemInArray(d, static_cast<int>(q), queue_entry(text, rate));
    } else {
      return -EINVAL;
    }
    store(r, path, set_record(content, "j:hyqos_rate:", print_json(rates.get())));
    return static_cast<long>(len);
  }
  return -EINVAL;
}

long rule_qoe_config2(const SimRoot &r, const std::string &path, const Verb &v, size_t len) {
  if (v.words.empty() || v.words[0] != "set-para") return -EINVAL;
  Json para(cJSON_Parse(v.rest(1).c_str()));
  if (!para || !cJSON_IsObject(para.get())) return -EINVAL;
  Json j = json_file(r, path);
  for (cJSON *m = para->child; m; m = m->next) set_member(j.get(), m->string, cJSON_Duplicate(m, 1));
  store_json(r, path, j.get());
  return static_cast<long>(len);
}

cJSON *device_entry(const std::string &mac, long up, long down) {
  cJSON *e = cJSON_CreateArray();
  cJSON_AddItemToArray(e, cJSON_CreateString(mac.c_str()));
  cJSON_AddItemToArray(e, cJSON_CreateNumber(static_cast<double>(up)));
  cJSON_AddItemToArray(e, cJSON_CreateNumber(static_cast<double>(down)));
  return e;
}

int find_device(cJSON *devs, const std::string &mac) {
  int i = 0;
  for (cJSON *e = devs->child; e; e = e->next, i++) {
    std::string norm;
    const char *m = cJSON_GetStringValue(cJSON_GetArrayItem(e, 0));
    if (m && normalize_mac(m, &norm) && norm == mac) return i;
  }
  return -1;
}

long rule_dbdev(const SimRoot &r, const std::string &path, const Verb &v, size_t len) {
  if (v.words.empty()) return -EINVAL;
  std::string content;
  load(r, path, &content);
  bool ok = true;
  long cmd = v.num(0, &ok);
  if (!ok) return -EINVAL;
  size_t argc = v.words.size() - 1;
  Json devs = json_record(path, content, "j:devs:");
  Json defq = json_record(path, content, "j:defq:");
  if (!cJSON_IsArray(devs.get())) devs.reset(cJSON_CreateArray());
  if (!cJSON_IsArray(defq.get())) defq.reset(int_pair(0, 0));
  long def_up = static_cast<long>(cJSON_GetNumberValue(cJSON_GetArrayItem(defq.get(), 0)));
  long def_down = static_cast<long>(cJSON_GetNumberValue(cJSON_GetArrayItem(defq.get(), 1)));
  long qnum = queue_count(r);
  std::string mac;
  bool has_mac = argc >= 1 && normalize_mac(v.words[1], &mac);
  if (cmd == 6 && argc == 0) {
    devs.reset(cJSON_CreateArray());
  } else if (cmd == 7 && argc == 1) {
    if (!has_mac) return -EINVAL;
    int i = find_device(devs.get(), mac);
    if (i < 0) return -ENOENT;
    cJSON_DeleteItemFromArray(devs.get(), i);
  } else if (cmd == 10 && argc == 3) {
    long up = v.num(2, &ok), down = v.num(3, &ok);
    if (!has_mac || !ok || up < 0 || up >= qnum || down < 0 || down >= qnum) return -EINVAL;
    int i = find_device(devs.get(), mac);
    if (i < 0)
      cJSON_AddItemToArray(devs.get(), device_entry(mac, up, down));
    else
      cJSON_ReplaceItemInArray(devs.get(), i, device_entry(mac, up, down));
  } else if (cmd == 11 && argc == 2) {
    long up = v.num(1, &ok), down = v.num(2, &ok);
    if (!ok || up < 0 || up >= qnum || down < 0 || down >= qnum) return -EINVAL;
    defq.reset(int_pair(up, down));
  } else if (cmd == 17 && argc == 0) {
    defq.reset(int_pair(0, 0));
  } else if (cmd == 18 && argc == 0) {
    for (int i = 0; i < cJSON_GetArraySize(devs.get()); i++) {
      const char *m = cJSON_GetStringValue(cJSON_GetArrayItem(cJSON_GetArrayItem(devs.get(), i), 0));
      std::string kept = m ? m : "";
      cJSON_ReplaceItemInArray(devs.get(), i, device_entry(kept, def_up, def_down));
    }
  } else if (cmd == 19 && argc == 1) {
    if (!has_mac) return -EINVAL;
    int i = find_device(devs.get(), mac);
    if (i < 0) return -ENOENT;
    cJSON_ReplaceItemInArray(devs.get(), i, device_entry(mac, def_up, def_down));
  } else {
    return -EINVAL;
  }
  content = set_record(content, "j:devs:", print_json(devs.get()));
  content = set_record(content, "j:defq:", print_json(defq.get()));
  store(r, path, content);
  return static_cast<long>(len);
}

cJSON *limiter_rule(const char *key, const std::string &target, long en, long up, long down) {
  cJSON *rule = cJSON_CreateObject();
  cJSON_AddNumberToObject(rule, "s", static_cast<double>(en));
  cJSON_AddStringToObject(rule, key, target.c_str());
  cJSON_AddItemToObject(rule, "r", int_pair(up, down));
  return rule;
}

long rule_limiter(const SimRoot &r, const std::string &path, const Verb &v, size_t len) {
  if (v.words.empty()) return -EINVAL;
  Json j = json_file(r, path);
  const std::string &w = v.words[0];
  static const char *const lists[3] = {"mr", "ir", "vr"};
  static const char *const keys[3] = {"m", "a", "v"};
  if (v.text == "clear") {
    for (const char *list : lists) {
      empty_array(j.get(), list);
    }
  } else if ((w == "set" && v.words.size() == 6) || (w == "del" && v.words.size() == 3)) {
    bool ok = true;
    long type = v.num(1, &ok);
    if (!ok || type < 0 || type > 2) return -EINVAL;
    std::string target = v.words[2];
    if (type == 0 && !normalize_mac(target, &target)) return -EINVAL;
    if (type == 1 && !valid_subnet(target)) return -EINVAL;
    if (type == 2 && !is_digits(target)) return -EINVAL;
    cJSON *list = array_member(j.get(), lists[type]);
    int index = -1;
    find_by(list, keys[type], target, &index);
    if (w == "del") {
      if (index < 0) return -ENOENT;
      cJSON_DeleteItemFromArray(list, index);
    } else {
      long en = v.num(3, &ok), up = v.num(4, &ok), down = v.num(5, &ok);
      if (!ok) return -EINVAL;
      cJSON *rule = limiter_rule(keys[type], target, en == -1 ? 1 : (en ? 1 : 0),
                                 up == -1 ? kLimiterRate : up, down == -1 ? kLimiterRate : down);
      if (index < 0)
        cJSON_AddItemToArray(list, rule);
      else
        cJSON_ReplaceItemInArray(list, index, rule);
    }
  } else {
    return -EINVAL;
  }
  int rules = 0;
  for (const char *list : lists) rules += cJSON_GetArraySize(array_member(j.get(), list));
  set_number(j.get(), "s", rules > 0 ? 1 : 0);
  store_json(r, path, j.get());
  return static_cast<long>(len);
}

long rule_monitor(const SimRoot &r, const std::string &path, const Verb &v, size_t len) {
  if (v.text != "clear") return -EINVAL;
  std::string content, out;
  load(r, path, &content);
  size_t pos = 0;
  while (pos < content.size()) {
    size_t end = content.find('\n', pos);
    if (end == std::string::npos) end = content.size();
    std::string line = content.substr(pos, end - pos);
    size_t colon = line.find(':', 2);
    if (line.size() > 2 && line[1] == ':' && colon != std::string::npos) {
      std::string tag = line.substr(0, colon + 1);
      if (line[0] == 'u' || line[0] == 'd') {
        line = tag + "0";
      } else if (line[0] == 'j') {
        Json j(cJSON_Parse(line.c_str() + tag.size()));
        if (j) {
          zero_numbers(j.get());
          line = tag + print_json(j.get());
        }
      }
    }
    out += line;
    if (end < content.size()) out += "\n";
    pos = end + 1;
  }
  store(r, path, out);
  return static_cast<long>(len);
}

// The per-device entry of gc, created on the first verb that names it.
cJSON *gc_device(cJSON *devs, const std::string &mac) {
  if (cJSON *d = find_by(devs, "mac", mac, nullptr)) return d;
  cJSON *d = cJSON_CreateObject();
  cJSON_AddStringToObject(d, "mac", mac.c_str());
  cJSON_AddNumberToObject(d, "en", 0);
  cJSON_AddArrayToObject(d, "map");
  cJSON_AddNumberToObject(d, "abs", -1);
  cJSON_AddNumberToObject(d, "rel", 0);
  cJSON_AddNumberToObject(d, "dur", 0);
  cJSON_AddArrayToObject(d, "raise");
  cJSON_AddItemToArray(devs, d);
  return d;
}

long rule_gc(const SimRoot &r, const std::string &path, const Verb &v, size_t len) {
  if (v.words.empty()) return -EINVAL;
  Json j = json_file(r, path);
  cJSON *devs = array_member(j.get(), "devs");
  const std::string &w = v.words[0];
  size_t argc = v.words.size() - 1;
  bool ok = true;
  if (v.text == "enable" || v.text == "disable") {
    set_number(j.get(), "en", v.text == "enable" ? 1 : 0);
  } else if (v.text == "clear") {
    empty_array(j.get(), "devs");
  } else {
    std::string mac;
    if (argc < 1 || !normalize_mac(v.words[1], &mac)) return -EINVAL;
    if (w == "delete" && argc == 1) {
      int index = -1;
      if (!find_by(devs, "mac", mac, &index)) return -ENOENT;
      cJSON_DeleteItemFromArray(devs, index);
    } else if (w == "map" && argc == 3) {
      long from = v.num(2, &ok), to = v.num(3, &ok);
      if (!ok || from < 0 || from > 5 || to < 0 || to > 5) return -EINVAL;
      cJSON *map = array_member(gc_device(devs, mac), "map");
      int i = 0, found = -1;
      for (cJSON *e = map->child; e; e = e->next, i++)
        if (cJSON_GetNumberValue(cJSON_GetArrayItem(e, 0)) == from) found = i;
      if (found < 0)
        cJSON_AddItemToArray(map, int_pair(from, to));
      else
        cJSON_ReplaceItemInArray(map, found, int_pair(from, to));
    } else if (w == "set-absolute" && argc == 2) {
      long p = v.num(2, &ok);
      if (!ok || p < 0 || p > 5) return -EINVAL;
      set_number(gc_device(devs, mac), "abs", static_cast<double>(p));
    } else if (w == "set-relative" && argc == 2) {
      long n = v.num(2, &ok);
      if (!ok) return -EINVAL;
      set_number(gc_device(devs, mac), "rel", static_cast<double>(n));
    } else if (w == "set-duration" && argc == 2) {
      long n = v.num(2, &ok);
      if (!ok || n < 0) return -EINVAL;
      set_number(gc_device(devs, mac), "dur", static_cast<double>(n));
    } else if (w == "raise" && argc == 3) {
      long p = v.num(2, &ok), amount = v.num(3, &ok);
      if (!ok || p < 0 || p > 5) return -EINVAL;
      set_member(gc_device(devs, mac), "raise", int_pair(p, amount));
    } else if (w == "set-enable" && argc == 2) {
      long n = v.num(2, &ok);
      if (!ok) return -EINVAL;
      set_number(gc_device(devs, mac), "en", n ? 1 : 0);
    } else {
      return -EINVAL;
    }
  }
  store_json(r, path, j.get());
  return static_cast<long>(len);
}

long rule_ss(const SimRoot &r, const std::string &path, const Verb &v, size_t len) {
  if (v.words.empty()) return -EINVAL;
  Json j = json_file(r, path);
  cJSON *devs = array_member(j.get(), "devs");
  cJSON *hosts = array_member(j.get(), "hosts");
  const std::string &w = v.words[0];
  size_t argc = v.words.size() - 1;
  std::string mac;
  bool has_mac = argc >= 1 && normalize_mac(v.words[1], &mac);
  int index = -1;
  if (v.text == "enable" || v.text == "disable") {
    set_number(j.get(), "en", v.text == "enable" ? 1 : 0);
  } else if (w == "set-mode" && argc == 1) {
    std::string mode = v.words[1];
    for (char &c : mode) c = static_cast<char>(tolower(static_cast<unsigned char>(c)));
    if (mode != "all_device" && mode != "by_device") return -EINVAL;
    set_string(j.get(), "mode", mode);
  } else if (w == "add-device" && argc >= 1) {
    if (!has_mac) return -EINVAL;
    std::string name = v.rest(2);
    if (name.size() > 31) return -EINVAL;
    cJSON *d = find_by(devs, "mac", mac, nullptr);
    if (!d) {
      d = cJSON_CreateObject();
      cJSON_AddStringToObject(d, "mac", mac.c_str());
      cJSON_AddStringToObject(d, "name", name.c_str());
      cJSON_AddNumberToObject(d, "en", 1);
      cJSON_AddItemToArray(devs, d);
    } else if (argc >= 2) {
      set_string(d, "name", name);
    }
  } else if ((w == "enable-device" || w == "disable-device") && argc == 1) {
    cJSON *d = has_mac ? find_by(devs, "mac", mac, nullptr) : nullptr;
    if (!has_mac) return -EINVAL;
    if (!d) return -ENOENT;
    set_number(d, "en", w == "enable-device" ? 1 : 0);
  } else if (w == "del-device" && argc == 1) {
    if (!has_mac) return -EINVAL;
    if (!find_by(devs, "mac", mac, &index)) return -ENOENT;
    cJSON_DeleteItemFromArray(devs, index);
  } else if (v.text == "clear-device") {
    empty_array(j.get(), "devs");
  } else if (w == "add" && argc == 2) {
    if (!valid_host(v.words[1]) || !valid_address(v.words[2])) return -EINVAL;
    cJSON *h = cJSON_CreateObject();
    cJSON_AddStringToObject(h, "host", v.words[1].c_str());
    cJSON_AddStringToObject(h, "addr", v.words[2].c_str());
    if (find_by(hosts, "host", v.words[1], &index))
      cJSON_ReplaceItemInArray(hosts, index, h);
    else
      cJSON_AddItemToArray(hosts, h);
  } else if (w == "delete" && argc == 1) {
    if (!find_by(hosts, "host", v.words[1], &index)) return -ENOENT;
    cJSON_DeleteItemFromArray(hosts, index);
  } else if (v.text == "clear") {
    empty_array(j.get(), "hosts");
  } else {
    return -EINVAL;
  }
  store_json(r, path, j.get());
  return static_cast<long>(len);
}

long rule_iam_ctrl(const SimRoot &r, const std::string &path, const Verb &v, size_t len) {
  if (v.words.empty()) return -EINVAL;
  Json j = json_file(r, path);
  const std::string &w = v.words[0];
  if (v.text == "enable-redirect" || v.text == "disable-redirect") {
    set_number(j.get(), "redirect", v.text == "enable-redirect" ? 1 : 0);
  } else if (w == "set-redirect" && v.words.size() == 2) {
    if (!valid_address(v.words[1])) return -EINVAL;
    set_string(j.get(), "ip", v.words[1]);
  } else if (w == "set-redirect-ttl" && v.words.size() == 2) {
    long n = 0;
    if (!is_digits(v.words[1]) || !parse_int(v.words[1], &n)) return -EINVAL;
    set_number(j.get(), "ttl", static_cast<double>(n));
  } else {
    return -EINVAL;
  }
  store_json(r, path, j.get());
  return static_cast<long>(len);
}

// A rule set is loaded as "0" (drop the present rules) followed by the rule
// text in as many writes as the writer likes; the export shows what arrived.
long rule_pc_import(const SimRoot &r, const char *data, size_t len) {
  std::string chunk(data, len);
  const std::string exported = "/proc/vek/pc_rule_export";
  if (trim(chunk) == "0" && chunk.size() <= 2) {
    store(r, exported, "");
  } else {
    std::string content;
    if (load(r, exported, &content)) store(r, exported, content + chunk);
  }
  return static_cast<long>(len);
}

long rule_tzoffset(const SimRoot &r, const std::string &path, const Verb &v, size_t len) {
  const std::string &t = v.text;
  if (t.size() != 5 || (t[0] != '+' && t[0] != '-') || !is_digits(t.substr(1))) return -EINVAL;
  store(r, path, t + "\n");
  return static_cast<long>(len);
}

long rule_rtk(const SimRoot &r, const std::string &path, const Verb &v, size_t len) {
  const std::string tag = "j:skb:";
  if (v.text.compare(0, tag.size(), tag) != 0 || v.text.size() == tag.size()) return -EINVAL;
  store(r, path, v.text + "\n");
  return static_cast<long>(len);
}

long rule_malnet_mode(const SimRoot &r, const std::string &path, const Verb &v, size_t len) {
  long n = 0;
  if (!parse_int(v.text, &n) || n < 0 || n > 1) return -EINVAL;
  store(r, path, n ? "s:mode:bridge\n" : "s:mode:gateway\n");
  return static_cast<long>(len);
}

long rule_qos_mode(const SimRoot &r, const std::string &path, const Verb &v, size_t len) {
  if (v.text.empty() || v.words.size() != 1) return -EINVAL;
  store(r, path, v.text + "\n");
  return static_cast<long>(len);
}

// ---- signature databases --------------------------------------------------

std::string kernel_mode(const SimRoot &r, const Database &db) {
  std::string mode;
  if (!read_file(db_state_path(r, db, "mode"), &mode)) return "normal";
  return trim(mode);
}

void set_info(const SimRoot &r, const Database &db, int writable, long size,
              unsigned long long epoch) {
  store(r, std::string(db.module) + "/" + db.name + "_info", db_info_text(writable, size, epoch));
}

long rule_db(const SimRoot &r, const Database &db, const std::string &what, const char *data,
             size_t len) {
  std::string mode = kernel_mode(r, db);
  std::string expect_path = db_state_path(r, db, "expect");
  std::string image_path = db_state_path(r, db, "image");
  if (what == "clean") {
    if (trim(std::string(data, len)) != "1") return -EINVAL;
    unlink(expect_path.c_str());
    write_file(image_path, "");
    set_info(r, db, mode == "busy" ? 0 : 1, 0, 0);
    return static_cast<long>(len);
  }
  if (what == "size") {
    if (len != 4) return -EINVAL;
    if (mode == "busy") return -EBUSY;
    std::string info;
    int writable = 0;
    if (!load(r, std::string(db.module) + "/" + db.name + "_info", &info) ||
        sscanf(info.c_str(), "writable: %d", &writable) != 1 || writable != 1)
      return -EBUSY;
    int32_t size = 0;
    memcpy(&size, data, sizeof size);
    if (size <= 0) return -EINVAL;
    write_file(expect_path, strprintf("%d\n", size));
    write_file(image_path, "");
    set_info(r, db, 1, size, 0);
    return static_cast<long>(len);
  }
  if (what == "import") {
    if (mode == "busy") return -EBUSY;
    std::string expect_text, image;
    long expect = 0;
    if (!read_file(expect_path, &expect_text) || !parse_int(trim(expect_text), &expect))
      return -EINVAL;
    read_file(image_path, &image);
    if (image.size() + len > static_cast<size_t>(expect)) return -EINVAL;
    image.append(data, len);
    if (image.size() < static_cast<size_t>(expect)) {
      write_file(image_path, image);
      return static_cast<long>(len);
    }
    unlink(expect_path.c_str());
    if (mode == "reject") {
      write_file(image_path, "");
      set_info(r, db, 1, 0, 0);
      return static_cast<long>(len);
    }
    std::string count_text;
    long count = 0;
    if (read_file(db_state_path(r, db, "count"), &count_text)) parse_int(trim(count_text), &count);
    count++;
    write_file(db_state_path(r, db, "count"), strprintf("%ld\n", count));
    write_file(image_path, image);
    set_info(r, db, 0, expect, db_epoch(count));
    return static_cast<long>(len);
  }
  return -EINVAL;
}

}  // namespace

std::vector<ControlFile> engine_control_files() {
  std::vector<ControlFile> files = {
      {"/proc/vek/version", "s:major:3.2.1\ns:minor:r1754\n"},
      {"/proc/vek/kctrl", "d:enabled:1\nd:c6y_acc:1\nd:appid_c6y:8\n"},
      {"/proc/vek/qos_enabled", "1\n"},
      {"/proc/vek/iam_enabled", "1\n"},
      {"/proc/vek/fc_ctrl", "{\"ec\":1,\"ecnt\":32768,\"emb\":16,\"dr\":[]}\n"},
      {"/proc/vek/dst_ctrl", "{\"et\":0,\"ecnt\":32768,\"emb\":16,\"dr\":[]}\n"},
      {"/proc/vek/neighbor_ctrl", "{\"ecnt\":32768,\"emb\":16}\n"},
      {"/proc/vek/mac_ctrl", "{\"ecnt\":32768,\"emb\":16,\"dr\":[]}\n"},
      {"/proc/vek/conn_ctx", "{\"dscp\":{\"tagging\":0,\"mapping\":{}},\"dr\":[]}\n"},
      {"/proc/vek/conn_max", "65536\n"},
      {"/proc/vek/dbcf_max_size", "16\n"},
      {"/proc/vek/dbcf_max_count", "32768\n"},
      {"/proc/vek/qos_mode", "1\n"},
      {"/proc/vek/malnet_up", "eth0\n"},
      {"/proc/vek/malnet_dw", "br0\n"},
      {"/proc/vek/malnet_mode", "s:mode:gateway\n"},
      {"/proc/vek/qos_traffic",
       "{\"wan\":{\"rx_bytes\":7340032000,\"tx_bytes\":1048576000},"
       "\"lan\":{\"rx_bytes\":1048576000,\"tx_bytes\":7340032000},\"flows\":128}\n"},
      {"/proc/vek/qos_ctrl", "d:algorithm:1\nj:qoe:[1,1]\nj:hyqos:[0]\nd:qnum:8\n"},
      {"/proc/vek/qoe_config",
       "j:pfs:" + pfs_default() + "\nj:hyqos_rate:[" + queue_list(8) + "," + queue_list(8) + "]\n"},
      {"/proc/vek/qoe_config2", "{\"enabled\":0,\"up\":0,\"down\":0}\n"},
      {"/proc/vek/qoe_optimization", "{\"state\":1,\"score\":87,\"flows\":12}\n"},
      {"/proc/vek/dbdev",
       "j:devs:[[\"00:11:22:33:44:55\",0,0],[\"66:77:88:99:aa:bb\",0,0]]\nj:defq:[0,0]\n"},
      {"/proc/vek/limiter_ctrl", "{\"s\":0,\"mr\":[],\"ir\":[],\"vr\":[]}\n"},
      {"/proc/vek/monitor", kMonitorDefault},
      {"/proc/vek/gc", "{\"en\":1,\"devs\":[]}\n"},
      {"/proc/vek/ss", "{\"en\":0,\"mode\":\"all_device\",\"devs\":[],\"hosts\":[]}\n"},
      {"/proc/vek/iam_ctrl", "{\"redirect\":0,\"ip\":\"192.168.1.1\",\"ttl\":300}\n"},
      {"/proc/vek/pc_rule_import", ""},
      {"/proc/vek/pc_rule_export", ""},
      {"/proc/vek/pc_tzoffset", "+0000\n"},
      {"/proc/vek/rtk", "j:skb:0x100000\n"},
      {"/proc/sys/net/bridge/bridge-nf-filter-pppoe-tagged", "0\n"},
  };
  for (const Database &db : kDatabases) {
    std::string base = std::string(db.module) + "/" + db.name;
    files.push_back({base + "_clean", ""});
    files.push_back({base + "_info", db_info_text(1, 0, 0)});
    files.push_back({base + "_size", ""});
    files.push_back({base + "_import", ""});
  }
  return files;
}

std::string db_info_text(int writable, long size, unsigned long long epoch) {
  return strprintf("writable: %d\nsize: %ld\nepoch: %llu\n", writable, size, epoch);
}

unsigned long long db_epoch(long count) { return kEpochBase + static_cast<unsigned long long>(count); }

std::string db_state_path(const SimRoot &r, const Database &db, const char *what) {
  return r.sim() + "/kernel/" + db.name + "." + what;
}

bool normalize_mac(const std::string &text, std::string *out) {
  std::string hex;
  for (size_t i = 0; i < text.size(); i++) {
    char c = text[i];
    if (isxdigit(static_cast<unsigned char>(c))) {
      hex += static_cast<char>(tolower(static_cast<unsigned char>(c)));
    } else if ((c == ':' || c == '-') && hex.size() % 2 == 0 && !hex.empty() && hex.size() < 12 &&
               isxdigit(static_cast<unsigned char>(text[i - 1])) && i + 1 < text.size()) {
      continue;
    } else {
      return false;
    }
  }
  if (hex.size() != 12) return false;
  std::string norm;
  for (size_t i = 0; i < 12; i += 2) norm += (i ? ":" : "") + hex.substr(i, 2);
  *out = norm;
  return true;
}

long engine_write(const SimRoot &r, const std::string &path, const char *data, size_t len) {
  Verb v = make_verb(data, len);
  for (const Database &db : kDatabases) {
    std::string base = std::string(db.module) + "/" + db.name + "_";
    if (path.compare(0, base.size(), base) == 0) return rule_db(r, db, path.substr(base.size()), data, len);
  }
  if (path == "/proc/vek/qos_enabled" || path == "/proc/vek/iam_enabled" ||
      path == "/proc/sys/net/bridge/bridge-nf-filter-pppoe-tagged")
    return rule_switch(r, path, v, len);
  if (path == "/proc/vek/conn_max" || path == "/proc/vek/dbcf_max_size" ||
      path == "/proc/vek/dbcf_max_count")
    return rule_limit(r, path, v, len);
  if (path == "/proc/vek/fc_ctrl" || path == "/proc/vek/dst_ctrl" || path == "/proc/vek/mac_ctrl")
    return rule_cache(r, path, v, len, true, true);
  if (path == "/proc/vek/neighbor_ctrl") return rule_cache(r, path, v, len, true, false);
  if (path == "/proc/vek/conn_ctx") return rule_cache(r, path, v, len, false, true);
  if (path == "/proc/vek/kctrl") return rule_kctrl(r, path, v, len);
  if (path == "/proc/vek/qos_ctrl") return rule_qos_ctrl(r, path, v, len);
  if (path == "/proc/vek/qos_mode") return rule_qos_mode(r, path, v, len);
  if (path == "/proc/vek/qoe_config") return rule_qoe_config(r, path, v, len);
  if (path == "/proc/vek/qoe_config2") return rule_qoe_config2(r, path, v, len);
  if (path == "/proc/vek/dbdev") return rule_dbdev(r, path, v, len);
  if (path == "/proc/vek/limiter_ctrl") return rule_limiter(r, path, v, len);
  if (path == "/proc/vek/monitor") return rule_monitor(r, path, v, len);
  if (path == "/proc/vek/gc") return rule_gc(r, path, v, len);
  if (path == "/proc/vek/ss") return rule_ss(r, path, v, len);
  if (path == "/proc/vek/iam_ctrl") return rule_iam_ctrl(r, path, v, len);
  if (path == "/proc/vek/pc_rule_import") return rule_pc_import(r, data, len);
  if (path == "/proc/vek/pc_tzoffset") return rule_tzoffset(r, path, v, len);
  if (path == "/proc/vek/rtk") return rule_rtk(r, path, v, len);
  if (path == "/proc/vek/malnet_mode") return rule_malnet_mode(r, path, v, len);
  return -EINVAL;
}
