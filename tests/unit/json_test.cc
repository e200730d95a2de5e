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

// An object takes a key, an array an index; 10 when there is no such member.
TEST(Json, GettersFindMembersOfObjectsAndArrays) {
  const struct { const char *json, *key; int result; int32_t value; } ints[] = {  // json null: a null node
      {"{\"a\":5,\"b\":6}", "b", 0, 6}, {"{\"a\":5}", "c", 10, -99}, {"{\"a\":5}", nullptr, 1, -99},
      {"[10,20]", "1", 0, 20},          {"[10,20]", "x", 1, -99},   {"[10,20]", "2", 10, -99},
      {"5", "a", 1, -99},               {nullptr, "a", 1, -99},     {"{\"a\":\"7\"}", "a", 0, 0}};
  for (const auto &c : ints) {
    JsonTree tree = parse(c.json);
    int32_t value = -99;
    EXPECT_EQ(json_get_int(tree.get(), c.key, &value), c.result) << c.json << " " << c.key;
    EXPECT_EQ(value, c.value) << c.json << " " << c.key;
  }
  JsonTree object = parse("{\"s\":\"gw\",\"n\":1}"), array = parse("[\"a\",\"b\"]");
  const char *text = "unset";
  EXPECT_EQ(json_get_string(object.get(), "t", &text), 10);
  EXPECT_EQ(json_get_string(array.get(), "1", &text), 0);
  EXPECT_STREQ(text, "b");
  EXPECT_EQ(json_get_string(object.get(), "n", &text), 0);
  EXPECT_EQ(text, nullptr);
  cJSON *item = object.get();
  EXPECT_EQ(json_get_item(array.get(), "x", &item), 1);
  EXPECT_EQ(item, object.get());
  EXPECT_EQ(json_get_item(object.get(), "missing", &item), 0);
  EXPECT_EQ(item, nullptr);
}

// A member is replaced in place or added; an empty key appends to an array only.
TEST(Json, SettersReplaceInPlaceOrAdd) {
  const struct { const char *json, *key; const char *text; int result; const char *after; } cases[] = {
      {"{\"a\":1,\"b\":2,\"c\":3}", "b", "x", 0, "{\"a\":1,\"b\":\"x\",\"c\":3}"},  // text null: the number -4
      {"{\"a\":1}", "b", nullptr, 0, "{\"a\":1,\"b\":-4}"},  {"{\"a\":1}", "", nullptr, 1, "{\"a\":1}"},
      {"[1,2]", "5", nullptr, 0, "[1,2,-4]"},                {"[1,2]", "0", nullptr, 0, "[-4,2]"},
      {"[1,2]", "", "s", 0, "[1,2,\"s\"]"},                  {"[1,2]", "x", nullptr, 1, "[1,2]"},
      {"5", "a", nullptr, 0, "5"}};
  for (const auto &c : cases) {
    JsonTree tree = parse(c.json);
    int result = c.text ? json_set_string(tree.get(), c.key, c.text) : json_set_int(tree.get(), c.key, -4);
    EXPECT_EQ(result, c.result) << c.json << " " << c.key;
    EXPECT_EQ(print(tree.get()), c.after);
  }
  JsonTree tree = parse("{\"a\":1,\"b\":2}");
  EXPECT_EQ(json_set_item(tree.get(), "a", cJSON_CreateArray()), 0);
  EXPECT_EQ(json_set_item(tree.get(), "d", nullptr), 1);
  EXPECT_EQ(json_set_item(tree.get(), "", cJSON_CreateTrue()), 1);
  EXPECT_EQ(print(tree.get()), "{\"a\":[],\"b\":2}");
}

// Engine numbers as the 32-bit ARM gateway converts them: toward zero, held
// at the ends of int32 (x86 gives INT32_MIN), 0 for what is no number.
TEST(Json, ToInt32HeldAtTheEnds) {
  const struct { const char *text; int32_t value; } cases[] = {
      {"-7.9", -7}, {"2147483647", INT32_MAX}, {"2147483648", INT32_MAX}, {"-2147483648", INT32_MIN},
      {"-2147483649", INT32_MIN}, {"1e400", INT32_MAX}, {"-1e400", INT32_MIN}, {"\"5\"", 0}, {"null", 0}};
  for (const auto &c : cases) {
    JsonTree tree(cJSON_Parse(c.text));
    ASSERT_TRUE(tree) << c.text;
    EXPECT_EQ(json_to_int32(tree.get()), c.value) << c.text;
  }
  EXPECT_EQ(json_to_int32(nullptr), 0);
}

}  // namespace
