#include "config/json.h"

#include <cmath>
#include <cstdio>

namespace {

// Where a key leads in a node: the member (null when absent) or why not.
struct Member {
  int status;      // JSON_OK or JSON_BAD_ARGUMENT
  cJSON *item;     // the member, null when there is none
  bool in_array;   // node is an array
  bool append;     // array setter with no index: add at the end
  int index;       // array index
  bool container;  // node is an object or an array
};

// Getters: an object needs a key; an array needs a key that scans as "%d".
Member find_for_get(const cJSON *node, const char *key) {
  Member m{JSON_BAD_ARGUMENT, nullptr, false, false, 0, false};
  if (cJSON_IsObject(node)) {
    m.container = true;
    if (!key) return m;
    m.item = cJSON_GetObjectItem(node, key);
  } else if (cJSON_IsArray(node)) {
    m.container = true;
    m.in_array = true;
    if (!key || sscanf(key, "%d", &m.index) != 1) return m;
    m.item = cJSON_GetArrayItem(node, m.index);
  } else {
    return m;
  }
  m.status = JSON_OK;
  return m;
}

// Setters: an object needs a non-empty key; in an array an absent or empty
// key appends, any other key must scan as "%d".
Member find_for_set(const cJSON *node, const char *key) {
  Member m{JSON_BAD_ARGUMENT, nullptr, false, false, 0, false};
  if (cJSON_IsObject(node)) {
    m.container = true;
    if (!key || !key[0]) return m;
    m.item = cJSON_GetObjectItem(node, key);
  } else if (cJSON_IsArray(node)) {
    m.container = true;
    m.in_array = true;
    if (!key || !key[0]) {
      m.append = true;
    } else {
      if (sscanf(key, "%d", &m.index) != 1) return m;
      m.item = cJSON_GetArrayItem(node, m.index);
    }
  }
  m.status = JSON_OK;
  return m;
}

// Puts `value` where the key leads; ownership of `value` always passes here.
int put(cJSON *node, const char *key, cJSON *value) {
  if (!value) return JSON_BAD_ARGUMENT;
  Member m = find_for_set(node, key);
  if (m.status != JSON_OK || !m.container) {
    // A node that is neither object nor array takes nothing: not an error.
    cJSON_Delete(value);
    return m.status;
  }
  bool placed;
  if (m.item)
    placed = m.in_array ? cJSON_ReplaceItemInArray(node, m.index, value)
                        : cJSON_ReplaceItemInObject(node, key, value);
  else
    placed = m.in_array ? cJSON_AddItemToArray(node, value) : cJSON_AddItemToObject(node, key, value);
  if (!placed) {
    cJSON_Delete(value);
    return JSON_BAD_ARGUMENT;
  }
  return JSON_OK;
}

}  // namespace

// Toward zero, held at the ends as the gateway's ARM converts a double (an
// x86 conversion would give INT32_MIN for anything out of range), and 0 for
// what is not a number.
int32_t json_to_int32(const cJSON *item) {
  if (!cJSON_IsNumber(item)) return 0;
  double v = cJSON_GetNumberValue(item);
  if (std::isnan(v)) return 0;
  if (v >= 2147483647.0) return INT32_MAX;
  if (v <= -2147483648.0) return INT32_MIN;
  return static_cast<int32_t>(v);
}

int json_get_int(const cJSON *node, const char *key, int32_t *value) {
  if (!value) return JSON_BAD_ARGUMENT;
  Member m = find_for_get(node, key);
  if (m.status != JSON_OK) return m.status;
  if (!m.item) return JSON_NO_MEMBER;
  *value = json_to_int32(m.item);
  return JSON_OK;
}

int json_get_string(const cJSON *node, const char *key, const char **value) {
  if (!value) return JSON_BAD_ARGUMENT;
  Member m = find_for_get(node, key);
  if (m.status != JSON_OK) return m.status;
  if (!m.item) return JSON_NO_MEMBER;
  *value = cJSON_GetStringValue(m.item);
  return JSON_OK;
}

int json_get_item(const cJSON *node, const char *key, cJSON **item) {
  if (!item) return JSON_BAD_ARGUMENT;
  Member m = find_for_get(node, key);
  if (m.status != JSON_OK) return m.status;
  *item = m.item;
  return JSON_OK;
}

int json_set_int(cJSON *node, const char *key, int32_t value) {
  if (!cJSON_IsObject(node) && !cJSON_IsArray(node)) return JSON_OK;
  return put(node, key, cJSON_CreateNumber(static_cast<double>(value)));
}

int json_set_string(cJSON *node, const char *key, const char *value) {
  if (!cJSON_IsObject(node) && !cJSON_IsArray(node)) return JSON_OK;
  return put(node, key, cJSON_CreateString(value));
}

int json_set_item(cJSON *node, const char *key, cJSON *item) {
  if (!item) return JSON_BAD_ARGUMENT;
  return put(node, key, item);
}
