// Policies: priority adjustment (gc), the ss device and host lists, and
// access management (iam).
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
  const std::string exported = kPcRuleExport;
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

}  // namespace eng
