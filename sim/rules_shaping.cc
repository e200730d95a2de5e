// Traffic shaping: the QoS algorithm, QoE profiles and HyQoS queues, the
// device table, the rate limiter and the connection monitor.
#include <arpa/inet.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "rules.h"

namespace eng {

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
  const std::string path = kQosCtrl;
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
  if (load(r, kQosCtrl, &content) && get_record(content, "d:qnum:", &value) &&
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
// grown to the hardware queue count. A count past any hardware (a record a
// test garbled) grows it to 64 at most, so that the engine keeps answering.
void fit_queues(cJSON *rates, long qnum) {
  const long kMostQueues = 64;
  if (qnum > kMostQueues) qnum = kMostQueues;
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

// qoe_config and dbdev take numbered verbs: a command number, then its
// arguments. False when the verb does not start with a number.
bool command_number(const Verb &v, long *cmd, size_t *argc) {
  bool ok = true;
  *cmd = v.num(0, &ok);
  if (!ok) return false;
  *argc = v.words.size() - 1;
  return true;
}

long rule_qoe_config(const SimRoot &r, const std::string &path, const Verb &v, size_t len) {
  long cmd = 0;
  size_t argc = 0;
  if (!command_number(v, &cmd, &argc)) return -EINVAL;
  std::string content;
  load(r, path, &content);
  bool ok = true;
  if ((cmd == kSetQoeActive || cmd == kSetHyqosActive) && argc == 1) {
    long active = v.num(1, &ok);
    if (!ok) return -EINVAL;
    set_qos_ctrl_item(r, cmd == kSetQoeActive ? "j:qoe:" : "j:hyqos:", 0, active ? 1 : 0);
    return static_cast<long>(len);
  }
  if (cmd == kSetQoeProfile && argc == 1) {
    long profile = v.num(1, &ok);
    if (!ok || profile < 0 || profile > 7) return -EINVAL;
    set_qos_ctrl_item(r, "j:qoe:", 1, profile);
    return static_cast<long>(len);
  }
  if (cmd == kSetProfileSetting && argc == 3) {
    long profile = v.num(1, &ok), sens = v.num(2, &ok), inten = v.num(3, &ok);
    if (!ok || profile < 0 || profile > 7) return -EINVAL;
    Json pfs = json_record(path, content, "j:pfs:");
    while (cJSON_GetArraySize(pfs.get()) < 8) cJSON_AddItemToArray(pfs.get(), int_pair(50, 50));
    cJSON_ReplaceItemInArray(pfs.get(), static_cast<int>(profile), int_pair(sens, inten));
    store(r, path, set_record(content, "j:pfs:", print_json(pfs.get())));
    return static_cast<long>(len);
  }
  if (cmd == kSetQueueRate || cmd == kResetQueues || cmd == kResetQueue) {
    long qnum = queue_count(r);
    Json rates = json_record(path, content, "j:hyqos_rate:");
    if (!rates || !cJSON_IsArray(rates.get())) rates.reset(cJSON_CreateArray());
    fit_queues(rates.get(), qnum);
    if (cmd == kResetQueues && argc == 0) {
      cJSON_Delete(rates.release());
      rates.reset(cJSON_CreateArray());
      fit_queues(rates.get(), qnum);
    } else if ((cmd == kSetQueueRate && argc >= 3) || (cmd == kResetQueue && argc == 2)) {
      long dir = v.num(1, &ok), q = v.num(2, &ok);
      long rate = cmd == kSetQueueRate ? v.num(3, &ok) : kQueueRate;
      if (!ok || dir < 0 || dir > 1 || q < 0 || q >= qnum || rate < 0) return -EINVAL;
      cJSON *d = cJSON_GetArrayItem(rates.get(), static_cast<int>(dir));
      std::string text;
      if (cmd == kSetQueueRate) {
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
  long cmd = 0;
  size_t argc = 0;
  if (!command_number(v, &cmd, &argc)) return -EINVAL;
  std::string content;
  load(r, path, &content);
  bool ok = true;
  Json devs = json_record(path, content, "j:devs:");
  Json defq = json_record(path, content, "j:defq:");
  if (!cJSON_IsArray(devs.get())) devs.reset(cJSON_CreateArray());
  if (!cJSON_IsArray(defq.get())) defq.reset(int_pair(0, 0));
  long def_up = static_cast<long>(cJSON_GetNumberValue(cJSON_GetArrayItem(defq.get(), 0)));
  long def_down = static_cast<long>(cJSON_GetNumberValue(cJSON_GetArrayItem(defq.get(), 1)));
  long qnum = queue_count(r);
  std::string mac;
  bool has_mac = argc >= 1 && normalize_mac(v.words[1], &mac);
  if (cmd == kDeleteDevices && argc == 0) {
    devs.reset(cJSON_CreateArray());
  } else if (cmd == kDeleteDevice && argc == 1) {
    if (!has_mac) return -EINVAL;
    int i = find_device(devs.get(), mac);
    if (i < 0) return -ENOENT;
    cJSON_DeleteItemFromArray(devs.get(), i);
  } else if (cmd == kSetDeviceQueue && argc == 3) {
    long up = v.num(2, &ok), down = v.num(3, &ok);
    if (!has_mac || !ok || up < 0 || up >= qnum || down < 0 || down >= qnum) return -EINVAL;
    int i = find_device(devs.get(), mac);
    if (i < 0)
      cJSON_AddItemToArray(devs.get(), device_entry(mac, up, down));
    else
      cJSON_ReplaceItemInArray(devs.get(), i, device_entry(mac, up, down));
  } else if (cmd == kSetDefaultQueue && argc == 2) {
    long up = v.num(1, &ok), down = v.num(2, &ok);
    if (!ok || up < 0 || up >= qnum || down < 0 || down >= qnum) return -EINVAL;
    defq.reset(int_pair(up, down));
  } else if (cmd == kResetDefaultQueue && argc == 0) {
    defq.reset(int_pair(0, 0));
  } else if (cmd == kResetDeviceQueues && argc == 0) {
    for (int i = 0; i < cJSON_GetArraySize(devs.get()); i++) {
      const char *m = cJSON_GetStringValue(cJSON_GetArrayItem(cJSON_GetArrayItem(devs.get(), i), 0));
      std::string kept = m ? m : "";
      cJSON_ReplaceItemInArray(devs.get(), i, device_entry(kept, def_up, def_down));
    }
  } else if (cmd == kResetDeviceQueue && argc == 1) {
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

}  // namespace eng
