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

#include "rules.h"

const Database kDatabases[3] = {
    {"grpxdb", kGroupDatabaseFile, kGrpxdbClean, kGrpxdbInfo, kGrpxdbSize, kGrpxdbImport},
    {"sidxdb", kAppDatabaseFile, kSidxdbClean, kSidxdbInfo, kSidxdbSize, kSidxdbImport},
    {"xr", kRuleDatabaseFile, kXrClean, kXrInfo, kXrSize, kXrImport},
};

const Database *find_database(const std::string &name) {
  for (const Database &db : kDatabases)
    if (name == db.name) return &db;
  return nullptr;
}

namespace eng {

const unsigned long long kEpochBase = 1700000000ULL;

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

}  // namespace eng

using namespace eng;

std::vector<ControlFile> engine_control_files() {
  std::vector<ControlFile> files = {
      {kEngineVersion, "s:major:3.2.1\ns:minor:r1754\n"},
      {kKctrl, "d:enabled:1\nd:c6y_acc:1\nd:appid_c6y:8\n"},
      {kQosEnabled, "1\n"},
      {kIamEnabled, "1\n"},
      {kFcCtrl, "{\"ec\":1,\"ecnt\":32768,\"emb\":16,\"dr\":[]}\n"},
      {kDstCtrl, "{\"et\":0,\"ecnt\":32768,\"emb\":16,\"dr\":[]}\n"},
      {kNeighborCtrl, "{\"ecnt\":32768,\"emb\":16}\n"},
      {kMacCtrl, "{\"ecnt\":32768,\"emb\":16,\"dr\":[]}\n"},
      {kConnCtx, "{\"dscp\":{\"tagging\":0,\"mapping\":{}},\"dr\":[]}\n"},
      {kConnMax, "65536\n"},
      {kDbcfMaxSize, "16\n"},
      {kDbcfMaxCount, "32768\n"},
      {kQosMode, "1\n"},
      {kMalnetUp, "eth0\n"},
      {kMalnetDw, "br0\n"},
      {kMalnetMode, "s:mode:gateway\n"},
      {kQosTraffic,
       "{\"wan\":{\"rx_bytes\":7340032000,\"tx_bytes\":1048576000},"
       "\"lan\":{\"rx_bytes\":1048576000,\"tx_bytes\":7340032000},\"flows\":128}\n"},
      {kQosCtrl, "d:algorithm:1\nj:qoe:[1,1]\nj:hyqos:[0]\nd:qnum:8\n"},
      {kQoeConfig,
       "j:pfs:" + pfs_default() + "\nj:hyqos_rate:[" + queue_list(8) + "," + queue_list(8) + "]\n"},
      {kQoeConfig2, "{\"enabled\":0,\"up\":0,\"down\":0}\n"},
      {kQoeOptimization, "{\"state\":1,\"score\":87,\"flows\":12}\n"},
      {kDbdev,
       "j:devs:[[\"00:11:22:33:44:55\",0,0],[\"66:77:88:99:aa:bb\",0,0]]\nj:defq:[0,0]\n"},
      {kLimiterCtrl, "{\"s\":0,\"mr\":[],\"ir\":[],\"vr\":[]}\n"},
      {kMonitor, kMonitorDefault},
      {kGc, "{\"en\":1,\"devs\":[]}\n"},
      {kSs, "{\"en\":0,\"mode\":\"all_device\",\"devs\":[],\"hosts\":[]}\n"},
      {kIamCtrl, "{\"redirect\":0,\"ip\":\"192.168.1.1\",\"ttl\":300}\n"},
      {kPcRuleImport, ""},
      {kPcRuleExport, ""},
      {kPcTzOffset, "+0000\n"},
      {kRtk, "j:skb:0x100000\n"},
      {kPppoeFilter, "0\n"},
  };
  for (const Database &db : kDatabases) {
    files.push_back({db.clean, ""});
    files.push_back({db.info, db_info_text(1, 0, 0)});
    files.push_back({db.size, ""});
    files.push_back({db.import, ""});
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
  // Its info file takes no verb.
  for (const Database &db : kDatabases) {
    if (path == db.clean) return rule_db(r, db, "clean", data, len);
    if (path == db.size) return rule_db(r, db, "size", data, len);
    if (path == db.import) return rule_db(r, db, "import", data, len);
  }
  if (path == kQosEnabled || path == kIamEnabled ||
      path == kPppoeFilter)
    return rule_switch(r, path, v, len);
  if (path == kConnMax || path == kDbcfMaxSize ||
      path == kDbcfMaxCount)
    return rule_limit(r, path, v, len);
  if (path == kFcCtrl || path == kDstCtrl || path == kMacCtrl)
    return rule_cache(r, path, v, len, true, true);
  if (path == kNeighborCtrl) return rule_cache(r, path, v, len, true, false);
  if (path == kConnCtx) return rule_cache(r, path, v, len, false, true);
  if (path == kKctrl) return rule_kctrl(r, path, v, len);
  if (path == kQosCtrl) return rule_qos_ctrl(r, path, v, len);
  if (path == kQosMode) return rule_qos_mode(r, path, v, len);
  if (path == kQoeConfig) return rule_qoe_config(r, path, v, len);
  if (path == kQoeConfig2) return rule_qoe_config2(r, path, v, len);
  if (path == kDbdev) return rule_dbdev(r, path, v, len);
  if (path == kLimiterCtrl) return rule_limiter(r, path, v, len);
  if (path == kMonitor) return rule_monitor(r, path, v, len);
  if (path == kGc) return rule_gc(r, path, v, len);
  if (path == kSs) return rule_ss(r, path, v, len);
  if (path == kIamCtrl) return rule_iam_ctrl(r, path, v, len);
  if (path == kPcRuleImport) return rule_pc_import(r, data, len);
  if (path == kPcTzOffset) return rule_tzoffset(r, path, v, len);
  if (path == kRtk) return rule_rtk(r, path, v, len);
  if (path == kMalnetMode) return rule_malnet_mode(r, path, v, len);
  return -EINVAL;
}
