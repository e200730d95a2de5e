#include "config/json.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace {

JsonTree parse(const char *text) {
  JsonTree tree(cJSON_Parse(text));
  EXPECT_NE(tree, nullptr) << text;
  return tree;
}

std::string print(const cJSON *node) {
  char *text = cJSON_PrintUnformatted(node);
  std::string out = text ? text : "<null>";
  free(text);
  return out;
}

// ---- getters --------------------------------------------------------------

struct GetIntCase {
  const char *json;  // null: a null node
  const char *key;
  int result;
  int32_t value;  // expected out-value; -99 means left as it was
};

class GetInt : public ::testing::TestWithParam<GetIntCase> {};

TEST_P(GetInt, Table) {
  const GetIntCase &c = GetParam();
  JsonTree tree = c.json ? parse(c.json) : JsonTree();
  int32_t value = -99;
  EXPECT_EQ(json_get_int(tree.get(), c.key, &value), c.result);
  EXPECT_EQ(value, c.value);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, GetInt,
    ::testing::Values(GetIntCase{"{\"a\":5,\"b\":6}", "b", 0, 6}, GetIntCase{"{\"a\":5}", "c", 10, -99},
                      GetIntCase{"{\"a\":5}", nullptr, 1, -99}, GetIntCase{"{\"a\":5}", "", 10, -99},
                      GetIntCase{"[10,20]", "1", 0, 20}, GetIntCase{"[10,20]", "0", 0, 10},
                      GetIntCase{"[10,20]", "x", 1, -99}, GetIntCase{"[10,20]", "", 1, -99},
                      GetIntCase{"[10,20]", nullptr, 1, -99}, GetIntCase{"[10,20]", "2", 10, -99},
                      GetIntCase{"[10,20]", "-1", 10, -99}, GetIntCase{"[10,20]", " 1", 0, 20},
                      GetIntCase{"[10,20]", "1x", 0, 20}, GetIntCase{"5", "a", 1, -99},
                      GetIntCase{"\"s\"", "0", 1, -99}, GetIntCase{nullptr, "a", 1, -99},
                      GetIntCase{"{\"a\":\"7\"}", "a", 0, 0}, GetIntCase{"{\"a\":null}", "a", 0, 0},
                      GetIntCase{"{\"a\":[1]}", "a", 0, 0}, GetIntCase{"{\"a\":7.9}", "a", 0, 7},
                      GetIntCase{"{\"a\":-7.9}", "a", 0, -7},
                      GetIntCase{"{\"a\":2147483647}", "a", 0, INT32_MAX},
                      GetIntCase{"{\"a\":3e10}", "a", 0, INT32_MAX},
                      GetIntCase{"{\"a\":-2147483648}", "a", 0, INT32_MIN},
                      GetIntCase{"{\"a\":-3e10}", "a", 0, INT32_MIN},
                      // Member names are matched the way cJSON_GetObjectItem
                      // matches them: without regard to case.
                      GetIntCase{"{\"Rate\":3}", "rate", 0, 3}));

TEST(GetInt, NullOutValueIsBadArgument) {
  JsonTree tree = parse("{\"a\":1}");
  EXPECT_EQ(json_get_int(tree.get(), "a", nullptr), 1);
}

struct GetStringCase {
  const char *json;
  const char *key;
  int result;
  const char *value;  // expected; "unset" means left as it was
};

class GetString : public ::testing::TestWithParam<GetStringCase> {};

TEST_P(GetString, Table) {
  const GetStringCase &c = GetParam();
  JsonTree tree = parse(c.json);
  const char *unset = "unset";
  const char *value = unset;
  EXPECT_EQ(json_get_string(tree.get(), c.key, &value), c.result);
  if (c.value)
    EXPECT_STREQ(value, c.value);
  else
    EXPECT_EQ(value, nullptr);
}

INSTANTIATE_TEST_SUITE_P(Cases, GetString,
                         ::testing::Values(GetStringCase{"{\"s\":\"gw\"}", "s", 0, "gw"},
                                           GetStringCase{"{\"s\":1}", "s", 0, nullptr},
                                           GetStringCase{"{\"s\":\"gw\"}", "t", 10, "unset"},
                                           GetStringCase{"{\"s\":\"gw\"}", nullptr, 1, "unset"},
                                           GetStringCase{"[\"a\",\"b\"]", "1", 0, "b"},
                                           GetStringCase{"[\"a\",\"b\"]", "9", 10, "unset"},
                                           GetStringCase{"[\"a\",\"b\"]", "one", 1, "unset"},
                                           GetStringCase{"true", "0", 1, "unset"}));

TEST(GetString, PointsIntoTheTree) {
  JsonTree tree = parse("{\"s\":\"gw\"}");
  const char *value = nullptr;
  ASSERT_EQ(json_get_string(tree.get(), "s", &value), 0);
  EXPECT_EQ(value, cJSON_GetObjectItem(tree.get(), "s")->valuestring);
}

TEST(GetItem, MemberOrNothing) {
  JsonTree object = parse("{\"a\":{\"x\":1},\"b\":2}");
  JsonTree array = parse("[1,[2],3]");
  cJSON sentinel{};
  cJSON *item = &sentinel;
  EXPECT_EQ(json_get_item(object.get(), "a", &item), 0);
  EXPECT_EQ(item, cJSON_GetObjectItem(object.get(), "a"));
  item = &sentinel;
  EXPECT_EQ(json_get_item(object.get(), "missing", &item), 0);
  EXPECT_EQ(item, nullptr);
  item = &sentinel;
  EXPECT_EQ(json_get_item(array.get(), "1", &item), 0);
  EXPECT_EQ(item, cJSON_GetArrayItem(array.get(), 1));
  item = &sentinel;
  EXPECT_EQ(json_get_item(array.get(), "7", &item), 0);
  EXPECT_EQ(item, nullptr);

  item = &sentinel;
  EXPECT_EQ(json_get_item(array.get(), "x", &item), 1);
  EXPECT_EQ(json_get_item(object.get(), nullptr, &item), 1);
  JsonTree number = parse("3");
  EXPECT_EQ(json_get_item(number.get(), "0", &item), 1);
  EXPECT_EQ(item, &sentinel);
}

// ---- setters --------------------------------------------------------------

enum SetKind { kInt, kString };

struct SetCase {
  const char *name;
  const char *json;
  const char *key;
  SetKind kind;
  int32_t number;
  const char *text;
  int result;
  const char *after;  // the tree printed afterwards
};

class Set : public ::testing::TestWithParam<SetCase> {};

TEST_P(Set, Table) {
  const SetCase &c = GetParam();
  JsonTree tree = parse(c.json);
  int result = c.kind == kInt ? json_set_int(tree.get(), c.key, c.number)
                              : json_set_string(tree.get(), c.key, c.text);
  EXPECT_EQ(result, c.result);
  EXPECT_EQ(print(tree.get()), c.after);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, Set,
    ::testing::Values(
        SetCase{"ReplaceKeepsOrder", "{\"a\":1,\"b\":2,\"c\":3}", "b", kInt, 9, nullptr, 0, "{\"a\":1,\"b\":9,\"c\":3}"},
        SetCase{"ReplaceStringKeepsOrder", "{\"a\":1,\"b\":2}", "a", kString, 0, "x", 0, "{\"a\":\"x\",\"b\":2}"},
        SetCase{"AddToObject", "{\"a\":1}", "b", kInt, -4, nullptr, 0, "{\"a\":1,\"b\":-4}"},
        SetCase{"AddStringToEmptyObject", "{}", "mode", kString, 0, "gw", 0, "{\"mode\":\"gw\"}"},
        SetCase{"ObjectEmptyKey", "{\"a\":1}", "", kInt, 2, nullptr, 1, "{\"a\":1}"},
        SetCase{"ObjectNullKey", "{\"a\":1}", nullptr, kString, 0, "x", 1, "{\"a\":1}"},
        SetCase{"ArrayBeyondEndAppends", "[1,2]", "5", kInt, 7, nullptr, 0, "[1,2,7]"},
        SetCase{"ArrayAtEndAppends", "[1,2]", "2", kInt, 7, nullptr, 0, "[1,2,7]"},
        SetCase{"ArrayReplace", "[1,2]", "0", kInt, 7, nullptr, 0, "[7,2]"},
        SetCase{"ArrayReplaceString", "[1,2]", "1", kString, 0, "s", 0, "[1,\"s\"]"},
        SetCase{"ArrayEmptyKeyAppends", "[1,2]", "", kString, 0, "s", 0, "[1,2,\"s\"]"},
        SetCase{"ArrayNullKeyAppends", "[]", nullptr, kInt, 3, nullptr, 0, "[3]"},
        SetCase{"ArrayNegativeIndexAppends", "[1]", "-1", kInt, 3, nullptr, 0, "[1,3]"},
        SetCase{"ArrayBadKey", "[1,2]", "x", kInt, 7, nullptr, 1, "[1,2]"},
        SetCase{"NumberNodeTakesNothing", "5", "a", kInt, 7, nullptr, 0, "5"},
        SetCase{"StringNodeTakesNothing", "\"s\"", "0", kString, 0, "x", 0, "\"s\""},
        SetCase{"NullText", "{\"a\":1}", "a", kString, 0, nullptr, 1, "{\"a\":1}"},
        SetCase{"Int32Ends", "[]", nullptr, kInt, INT32_MIN, nullptr, 0, "[-2147483648]"}),
    [](const ::testing::TestParamInfo<SetCase> &p) { return std::string(p.param.name); });

TEST(SetItem, PassesOwnershipToTheTree) {
  JsonTree tree = parse("{\"a\":1,\"b\":2}");
  EXPECT_EQ(json_set_item(tree.get(), "a", cJSON_CreateArray()), 0);
  EXPECT_EQ(json_set_item(tree.get(), "c", cJSON_CreateTrue()), 0);
  EXPECT_EQ(print(tree.get()), "{\"a\":[],\"b\":2,\"c\":true}");

  JsonTree array = parse("[1]");
  EXPECT_EQ(json_set_item(array.get(), "0", cJSON_CreateObject()), 0);
  EXPECT_EQ(json_set_item(array.get(), "9", cJSON_CreateNull()), 0);
  EXPECT_EQ(print(array.get()), "[{},null]");

  EXPECT_EQ(json_set_item(tree.get(), "d", nullptr), 1);
  EXPECT_EQ(json_set_item(tree.get(), "", cJSON_CreateTrue()), 1);
  EXPECT_EQ(json_set_item(array.get(), "x", cJSON_CreateTrue()), 1);
  JsonTree number = parse("1");
  EXPECT_EQ(json_set_item(number.get(), "0", cJSON_CreateTrue()), 0);
  EXPECT_EQ(json_set_item(nullptr, "0", cJSON_CreateTrue()), 0);
  EXPECT_EQ(print(tree.get()), "{\"a\":[],\"b\":2,\"c\":true}");
  EXPECT_EQ(print(array.get()), "[{},null]");
  EXPECT_EQ(print(number.get()), "1");
}

TEST(SetThenGet, RoundTrip) {
  JsonTree tree(cJSON_CreateObject());
  ASSERT_EQ(json_set_int(tree.get(), "rate", 1000), 0);
  ASSERT_EQ(json_set_string(tree.get(), "mac", "aa:bb:cc:dd:ee:ff"), 0);
  int32_t rate = 0;
  const char *mac = nullptr;
  EXPECT_EQ(json_get_int(tree.get(), "rate", &rate), 0);
  EXPECT_EQ(rate, 1000);
  EXPECT_EQ(json_get_string(tree.get(), "mac", &mac), 0);
  EXPECT_STREQ(mac, "aa:bb:cc:dd:ee:ff");
}

}  // namespace
