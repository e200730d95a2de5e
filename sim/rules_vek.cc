// The engine's own switches, limits, caches and modes, and the signature
// database modules' import handshake.
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
  } else if (path == kFcCtrl && (v.text == "enable-cloud" || v.text == "disable-cloud")) {
    set_number(j.get(), "ec", v.text == "enable-cloud" ? 1 : 0);
  } else if (path == kDstCtrl && w == "enable-ttl-delete" && v.words.size() == 2) {
    long n = v.num(1, &ok);
    if (!ok) return -EINVAL;
    set_number(j.get(), "et", n ? 1 : 0);
  } else if (path == kConnCtx && w == "set-dscp-tagging" && v.words.size() == 2) {
    long n = v.num(1, &ok);
    if (!ok) return -EINVAL;
    cJSON *dscp = cJSON_GetObjectItem(j.get(), "dscp");
    if (!dscp || !cJSON_IsObject(dscp)) {
      set_member(j.get(), "dscp", cJSON_CreateObject());
      dscp = cJSON_GetObjectItem(j.get(), "dscp");
    }
    set_number(dscp, "tagging", n ? 1 : 0);
  } else if (path == kConnCtx && w == "set-dscp-mapping") {
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
  store(r, db.info, db_info_text(writable, size, epoch));
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
    if (!load(r, db.info, &info) ||
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
    std::string expect_text;
    long expect = 0;
    if (!read_file(expect_path, &expect_text) || !parse_int(trim(expect_text), &expect))
      return -EINVAL;
    // The image grows by appending, so that a large one costs no more per
    // write than a small one.
    struct stat st;
    size_t received = stat(image_path.c_str(), &st) == 0 ? static_cast<size_t>(st.st_size) : 0;
    if (received + len > static_cast<size_t>(expect)) return -EINVAL;
    if (!append_file(image_path, std::string(data, len))) return -EIO;
    if (received + len < static_cast<size_t>(expect)) return static_cast<long>(len);
    unlink(expect_path.c_str());
    if (mode == "reject" || mode == "reject-once") {
      // One rejected image, and the module takes the next one again.
      if (mode == "reject-once") write_file(db_state_path(r, db, "mode"), "normal\n");
      write_file(image_path, "");
      set_info(r, db, 1, 0, 0);
      return static_cast<long>(len);
    }
    std::string count_text;
    long count = 0;
    if (read_file(db_state_path(r, db, "count"), &count_text)) parse_int(trim(count_text), &count);
    count++;
    write_file(db_state_path(r, db, "count"), strprintf("%ld\n", count));
    set_info(r, db, 0, expect, db_epoch(count));
    return static_cast<long>(len);
  }
  return -EINVAL;
}

}  // namespace eng
