#include "config/json.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace {

JsonTree parse(const char *text) { return JsonTree(text ? cJSON_Parse(text) : nullptr); }

std::string print(const cJSON *node) {
  char *text = cJSON_PrintUnformatted(node);
  std::string out = text ? text : "<null>";
  free(text);
  return out;
}

TEST(JsonGet, IntStringAndItem) {
  const int32_t kUnset = -99;
  struct Case {
    const char *json, *key;  // json null: a null node
    int result;
    int32_t value;
  } ints[] = {{"{\"a\":5,\"b\":6}", "b", 0, 6}, {"{\"a\":5}", "c", 10, kUnset}, {"{\"a\":5}", nullptr, 1, kUnset},
              {"[10,20]", "1", 0, 20},          {"[10,20]", "x", 1, kUnset},   {"[10,20]", "2", 10, kUnset},
              {"5", "a", 1, kUnset},            {nullptr, "a", 1, kUnset},     {"{\"a\":\"7\"}", "a", 0, 0},
              {"{\"a\":-7.9}", "a", 0, -7},     {"{\"a\":3e10}", "a", 0, INT32_MAX}};
  for (const Case &c : ints) {
    JsonTree tree = parse(c.json);
    int32_t value = kUnset;
    EXPECT_EQ(json_get_int(tree.get(), c.key, &value), c.result) << c.json << " " << c.key;
    EXPECT_EQ(value, c.value) << c.json << " " << c.key;
  }

  JsonTree object = parse("{\"s\":\"gw\",\"n\":1}");
  JsonTree array = parse("[\"a\",\"b\"]");
  const char *text = "unset";
  EXPECT_EQ(json_get_string(object.get(), "t", &text), 10);
  EXPECT_STREQ(text, "unset");
  EXPECT_EQ(json_get_string(array.get(), "one", &text), 1);
  EXPECT_EQ(json_get_string(array.get(), "1", &text), 0);
  EXPECT_STREQ(text, "b");
  EXPECT_EQ(json_get_string(object.get(), "s", &text), 0);
  EXPECT_EQ(text, cJSON_GetObjectItem(object.get(), "s")->valuestring);  // owned by the tree
  EXPECT_EQ(json_get_string(object.get(), "n", &text), 0);
  EXPECT_EQ(text, nullptr);

  cJSON *item = nullptr;
  EXPECT_EQ(json_get_item(object.get(), "n", &item), 0);
  EXPECT_EQ(item, cJSON_GetObjectItem(object.get(), "n"));
  EXPECT_EQ(json_get_item(object.get(), "missing", &item), 0);
  EXPECT_EQ(item, nullptr);
  item = object.get();
  EXPECT_EQ(json_get_item(array.get(), "x", &item), 1);
  EXPECT_EQ(item, object.get());
}

TEST(JsonSet, ReplaceInPlaceOrAdd) {
  struct Case {
    const char *json, *key;
    bool is_int;
    int32_t number;
    const char *text;
    int result;
    const char *after;  // the tree printed afterwards
  } cases[] = {
      {"{\"a\":1,\"b\":2,\"c\":3}", "b", false, 0, "x", 0, "{\"a\":1,\"b\":\"x\",\"c\":3}"},
      {"{\"a\":1}", "b", true, -4, nullptr, 0, "{\"a\":1,\"b\":-4}"},
      {"{\"a\":1}", "", true, 2, nullptr, 1, "{\"a\":1}"},
      {"[1,2]", "5", true, 7, nullptr, 0, "[1,2,7]"},  // beyond the end: appended
      {"[1,2]", "0", true, 7, nullptr, 0, "[7,2]"},
      {"[1,2]", "", false, 0, "s", 0, "[1,2,\"s\"]"},
      {"[1,2]", "x", true, 7, nullptr, 1, "[1,2]"},
      {"5", "a", true, 7, nullptr, 0, "5"},
      {"{\"a\":1}", "a", false, 0, nullptr, 1, "{\"a\":1}"},
  };
  for (const Case &c : cases) {
    JsonTree tree = parse(c.json);
    int result = c.is_int ? json_set_int(tree.get(), c.key, c.number) : json_set_string(tree.get(), c.key, c.text);
    EXPECT_EQ(result, c.result) << c.json << " " << c.key;
    EXPECT_EQ(print(tree.get()), c.after);
  }

  JsonTree tree = parse("{\"a\":1,\"b\":2}");
  EXPECT_EQ(json_set_item(tree.get(), "a", cJSON_CreateArray()), 0);
  EXPECT_EQ(json_set_item(tree.get(), "c", cJSON_CreateTrue()), 0);
  EXPECT_EQ(json_set_item(tree.get(), "d", nullptr), 1);
  EXPECT_EQ(json_set_item(tree.get(), "", cJSON_CreateTrue()), 1);
  EXPECT_EQ(print(tree.get()), "{\"a\":[],\"b\":2,\"c\":true}");
}

}  // namespace

namespace {

// Engine numbers as the gateway's 32-bit ARM converts them: toward zero and
// held at the ends of int32, where an x86 conversion gives INT32_MIN.
TEST(JsonToInt32, HeldAtTheEnds) {
  struct Case {
    const char *text;
    int32_t value;
  } cases[] = {
      {"7.9", 7},          {"-7.9", -7},          {"5e9", INT32_MAX},  {"-5e9", INT32_MIN},
      {"2147483647", INT32_MAX}, {"2147483648", INT32_MAX}, {"-2147483649", INT32_MIN},
      {"1e400", INT32_MAX},     {"-1e400", INT32_MIN},     {"\"5\"", 0},
      {"null", 0},             {"[1]", 0},
  };
  for (const Case &c : cases) {
    JsonTree tree(cJSON_Parse(c.text));
    ASSERT_TRUE(tree) << c.text;
    EXPECT_EQ(json_to_int32(tree.get()), c.value) << c.text;
  }
  EXPECT_EQ(json_to_int32(nullptr), 0);
}

}  // namespace
