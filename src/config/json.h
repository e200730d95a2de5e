// Reading and writing one member of a cJSON tree by a key text: a member name
// in an object, a decimal index in an array.
#pragma once

#include <cstdint>
#include <memory>

#include <cjson/cJSON.h>

struct JsonDeleter {
  void operator()(cJSON *node) const { cJSON_Delete(node); }
};
// A parsed or built tree, deleted when it goes out of scope.
using JsonTree = std::unique_ptr<cJSON, JsonDeleter>;

enum { JSON_OK = 0, JSON_BAD_ARGUMENT = 1, JSON_NO_MEMBER = 10 };

// Getters: 0, 1 (no key, node neither object nor array, index does not scan)
// or 10 (no such member); the out-value is set only on success.
int json_get_int(const cJSON *node, const char *key, int32_t *value);
int json_get_string(const cJSON *node, const char *key, const char **value);
// Never 10: a missing member is success with a null node.
int json_get_item(const cJSON *node, const char *key, cJSON **item);

// A number node as the engine's 32-bit int: toward zero, held at the ends of
// int32, 0 for a node that is no number (or NaN).
int32_t json_to_int32(const cJSON *item);

// Setters: replace the member in place, or add it (arrays: append). 0 or 1.
int json_set_int(cJSON *node, const char *key, int32_t value);
int json_set_string(cJSON *node, const char *key, const char *value);
// Ownership of `item` passes to the tree; a null item returns 1.
int json_set_item(cJSON *node, const char *key, cJSON *item);
