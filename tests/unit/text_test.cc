// String, number, address and JSON helpers: exact results for the edge cases
// the commands cannot all reach. Numbers are read as the gateway's 32-bit C
// library reads them, on any build (a 64-bit sscanf would wrap 5000000000).
#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>

#include "config/json.h"
#include "groups/frame.h"
#include "sys/host.h"
#include "sys/mac.h"
#include "sys/scan.h"
#include "sys/text.h"

namespace {

// Pieces that make the buffer grow, a formatted piece cut to 511 characters,
// appends that add nothing, and the hand-over that empties the buffer.
TEST(Text, BufferTrimCopyAndCompare) {
  TextBuffer buffer;
  text_buffer_append(&buffer, nullptr, 5), text_buffer_append(&buffer, "abc", 0), text_buffer_appendf(&buffer, "%s", "");
  EXPECT_EQ(buffer.data, nullptr);
  for (unsigned int count : {10u, 255u, 300u}) text_buffer_append(&buffer, std::string(count, 'a').data(), count);
  text_buffer_appendf(&buffer, "%d-%s", 42, std::string(700, 'q').c_str());
  unsigned int length = 0;
  OwnedText text = text_buffer_take(&buffer, &length);
  EXPECT_EQ(std::string(text.get()) + std::to_string(length), std::string(565, 'a') + "42-" + std::string(508, 'q') + "1076");
  EXPECT_EQ(text_buffer_take(&buffer, &length), nullptr);
  EXPECT_EQ(length, 0u);
  for (auto [raw, trimmed] : {std::pair<const char *, const char *>{"  a b \r\n", "a b"}, {" \t\v\f\r\n ", ""}, {"", ""}}) {
    char line[32];
    snprintf(line, sizeof line, "%s", raw);
    EXPECT_EQ(trim(line), line);
    EXPECT_STREQ(line, trimmed) << raw;
  }
  // Copies cut to the size, always terminated, nothing touched after the terminator.
  const struct { const char *first, *second; size_t size; const char *out; } copies[] = {
      {"abc", "", 4, "abc"}, {"abc", "", 3, "ab"}, {"ab", "cd", 4, "abc"}, {"ab", "cd", 2, "a"}, {"", "/x", 8, "/x"}};
  for (const auto &c : copies) {
    char out[16];
    memset(out, 'x', sizeof out);
    EXPECT_EQ(c.second[0] ? join_text(out, c.size, c.first, c.second) : copy_text(out, c.size, c.first), out);
    EXPECT_EQ(std::string(out, sizeof out), c.out + std::string(1, '\0') + std::string(15 - strlen(c.out), 'x'));
  }
  EXPECT_EQ(0, memcmp(str_ndup("a\0bcdef", 3).get(), "a\0b\0", 4));
  EXPECT_EQ(str_dup(nullptr), nullptr);
  // 0 for equal or both null, 1 for one null, strlen(b) - strlen(a) for other lengths, else strcmp's sign.
  const struct { const char *a, *b; int equal, nocase; } compares[] = {
      {nullptr, nullptr, 0, 0}, {"on", nullptr, 1, 1}, {nullptr, "on", 1, 1}, {"on", "off", 1, 1},
      {"off", "on", -1, -1},    {"", "abcd", 4, 4},    {"abc", "ABC", 1, 0},  {"ABC", "abd", -1, -1}};
  for (const auto &c : compares) {
    auto shown = [&c](int v) { return c.a && c.b && strlen(c.a) == strlen(c.b) ? (v > 0) - (v < 0) : v; };
    EXPECT_EQ(shown(str_equal(c.a, c.b)), c.equal) << c.a << " " << c.b;
    EXPECT_EQ(shown(str_equal_nocase(c.a, c.b)), c.nocase) << c.a << " " << c.b;
  }
}

// What scan32 stored, as "count: values"; -1 when the text ends before the first conversion.
TEST(Numbers, Scan32AndStrtol32) {
  const struct { const char *text, *format, *result; } scans[] = {
      {"d:qnum: -3\n", "d:qnum:%d", "1: -3 0"},
      {"d:qnum:4294967304", "d:qnum:%d", "1: 2147483647 0"},  // not 8
      {"d:qnum:-5000000000", "d:qnum:%d", "1: -2147483648 0"},
      {"d:qnum:99999999999999999999999999", "d:qnum:%d", "1: 2147483647 0"},
      {"d:qnum:", "d:qnum:%d", "-1: 0 0"}, {"d:qnum:+", "d:qnum:%d", "0: 0 0"}, {"d:qnu", "d:qnum:%d", "0: 0 0"},
      {"j:qoe:[1, 7]", "j:qoe:[%d,%d]", "2: 1 7"}, {"j:qoe:[1 ,7]", "j:qoe:[%d,%d]", "1: 1 0"},
      {"j:qoe:[1]", "j:qoe:[%d,%d]", "1: 1 0"}};
  for (const auto &c : scans) {
    int first = 0, second = 0, stored = scan32(c.text, c.format, &first, &second);
    EXPECT_EQ(std::to_string(stored) + ": " + std::to_string(first) + " " + std::to_string(second), c.result) << c.text;
  }
  // Bytes are held to 32 bits, then the low byte is kept.
  for (auto [text, result] : {std::pair<const char *, const char *>{"300", "1: 44"}, {"4294967340", "1: 255"},
                              {"-1", "1: 255"}, {"x", "0: 0"}, {"", "-1: 0"}}) {
    unsigned char value = 0;
    int stored = scan32(text, "%hhu", &value);
    EXPECT_EQ(std::to_string(stored) + ": " + std::to_string(value), result) << text;
  }
  unsigned long long epoch = 0;
  EXPECT_EQ(scan32("writable: 0\nsize: 9\nepoch: 18446744073709551615", "writable: %*d\nsize: %*d\nepoch: %llu", &epoch), 1);
  EXPECT_EQ(epoch, 18446744073709551615ull);
  char word[4] = "zzz", name[32];
  int category = 0, other = 0;
  EXPECT_EQ(scan32("j:pfs:abcdef", "j:pfs:%3s", word), 1);
  EXPECT_STREQ(word, "abc");
  EXPECT_EQ(scan32("#300,1,video x", "#%d,%d,%31s", &category, &other, name), 3);
  EXPECT_STREQ(name, "video");
  // strtol32: the value, ERANGE past the gateway's long, the characters used.
  const struct { const char *text; int base; long value; bool range; size_t used; } longs[] = {
      {"3000000000", 10, 2147483647, true, 10}, {"-3000000000", 10, -2147483647 - 1, true, 11},
      {"0x7fffffff", 0, 2147483647, false, 10}, {"12ab", 10, 12, false, 2},
      {"0XaF", 0, 175, false, 4}, {" +017", 0, 15, false, 5}, {"zZ", 36, 1295, false, 2}};
  for (const auto &c : longs) {
    char *end = nullptr;
    errno = 0;
    EXPECT_EQ(strtol32(c.text, &end, c.base), c.value) << c.text;
    EXPECT_EQ(errno == ERANGE, c.range) << c.text;
    EXPECT_EQ(static_cast<size_t>(end - c.text), c.used) << c.text;
  }
  // Positional integers of the shaping groups: base 10 only, no check of what follows.
  for (auto [text, value] : {std::pair<const char *, int>{"  +42", 42}, {"7x", 7}, {"abc", 0}, {"0x10", 0}, {"010", 10}})
    EXPECT_EQ(arg_int(text), value) << '"' << text << '"';
}

TEST(Address, MacAndHostName) {
  const struct { const char *text; int valid; } macs[] = {
      {"aabbccddeeff", 1}, {"AA:bb-CC:dd-EE:ff", 1}, {"9A:fB:0c:De:e1:F2", 1},
      // A stray character before the first separator resets the count after exactly one digit.
      {"ax:abbccddeeff", 1}, {"axx:abbccddeeff", 1}, {"aax:bbccddeeff", 0}, {"x:aabbccddeeff", 0},
      {nullptr, 0}, {"", 0}, {":", 0}, {":aa:bb:cc:dd:ee:ff", 0}, {"aa:bb:cc:dd:ee:ff:", 0}, {"aabb:ccddeeff", 0},
      {"aa:bbccddeeff", 0}, {"aa::bb:cc:dd:ee:ff", 0}, {"aa:bb:cc:dd:ee:fg", 0}, {"aabbccddeef", 0},
      {"aabbccddeeff00", 0}, {"aa.bb.cc.dd.ee.ff", 0}, {"aabbccddeeff ", 0}, {"a-bbccddeeff0", 0}};
  for (const auto &c : macs) EXPECT_EQ(is_valid_mac(c.text), c.valid) << (c.text ? c.text : "null");
  // ss.t shows the rest of the host name rule: letter and digit runs joined by single dots.
  const std::string label63(63, 'a'), most = label63 + "." + label63 + "." + label63 + "." + label63;
  for (auto [text, valid] : {std::pair<std::string, int>{most, 1}, {most + "a", 0}, {"caf\xc3\xa9", 0}, {"a b", 0}})
    EXPECT_EQ(is_valid_host_name(text.c_str()), valid) << text.size();
  EXPECT_EQ(is_valid_host_name(nullptr) + is_valid_ip_address(nullptr), 0);
}

JsonTree parse(const char *text) { return JsonTree(text ? cJSON_Parse(text) : nullptr); }
std::string print(const cJSON *node) {
  OwnedText text(cJSON_PrintUnformatted(node));
  return text ? text.get() : "<null>";
}

// An object takes a key, an array an index; 10 when there is no such member.
// A member is replaced in place or added; an empty key appends to an array only.
TEST(Json, GetAndSetMembers) {
  const struct { const char *json, *key; int result; int32_t value; } ints[] = {  // json null: a null node
      {"{\"a\":5,\"b\":6}", "b", 0, 6}, {"{\"a\":5}", "c", 10, -99}, {"{\"a\":5}", nullptr, 1, -99},
      {"[10,20]", "1", 0, 20},          {"[10,20]", "x", 1, -99},   {"[10,20]", "2", 10, -99},
      {"5", "a", 1, -99},               {nullptr, "a", 1, -99},     {"{\"a\":\"7\"}", "a", 0, 0}};
  for (const auto &c : ints) {
    int32_t value = -99;
    EXPECT_EQ(json_get_int(parse(c.json).get(), c.key, &value), c.result) << c.json << " " << c.key;
    EXPECT_EQ(value, c.value) << c.json << " " << c.key;
  }
  JsonTree object = parse("{\"s\":\"gw\",\"n\":1}"), array = parse("[\"a\",\"b\"]");
  const char *text = "unset";
  EXPECT_EQ(json_get_string(object.get(), "t", &text), 10);
  EXPECT_EQ(json_get_string(array.get(), "1", &text), 0);
  EXPECT_STREQ(text, "b");
  EXPECT_EQ(json_get_string(object.get(), "n", &text), 0);
  EXPECT_EQ(text, nullptr);
  cJSON *item = object.get();  // 1 when the node cannot have the key; 0 and null when there is no such member
  EXPECT_EQ(json_get_item(array.get(), "x", &item) * 10 + json_get_item(object.get(), "missing", &item), 10);
  EXPECT_EQ(item, nullptr);
  const struct { const char *json, *key; const char *text; int result; const char *after; } sets[] = {
      {"{\"a\":1,\"b\":2,\"c\":3}", "b", "x", 0, "{\"a\":1,\"b\":\"x\",\"c\":3}"},  // text null: the number -4
      {"{\"a\":1}", "b", nullptr, 0, "{\"a\":1,\"b\":-4}"},  {"{\"a\":1}", "", nullptr, 1, "{\"a\":1}"},
      {"[1,2]", "5", nullptr, 0, "[1,2,-4]"},                {"[1,2]", "0", nullptr, 0, "[-4,2]"},
      {"[1,2]", "", "s", 0, "[1,2,\"s\"]"},                  {"[1,2]", "x", nullptr, 1, "[1,2]"},
      {"5", "a", nullptr, 0, "5"}};
  for (const auto &c : sets) {
    JsonTree tree = parse(c.json);
    EXPECT_EQ(c.text ? json_set_string(tree.get(), c.key, c.text) : json_set_int(tree.get(), c.key, -4), c.result)
        << c.json << " " << c.key;
    EXPECT_EQ(print(tree.get()), c.after);
  }
  JsonTree tree = parse("{\"a\":1,\"b\":2}");
  EXPECT_EQ(json_set_item(tree.get(), "a", cJSON_CreateArray()) + json_set_item(tree.get(), "d", nullptr), 1);
  EXPECT_EQ(json_set_item(tree.get(), "", cJSON_CreateTrue()), 1);
  EXPECT_EQ(print(tree.get()), "{\"a\":[],\"b\":2}");
  // Engine numbers toward zero, held at the ends of int32 (x86 gives INT32_MIN), 0 for what is no number.
  for (auto [json, value] : {std::pair<const char *, int32_t>{"-7.9", -7}, {"2147483648", INT32_MAX},
                             {"-2147483648", INT32_MIN}, {"-1e400", INT32_MIN}, {"\"5\"", 0}})
    EXPECT_EQ(json_to_int32(parse(json).get()), value) << json;
  EXPECT_EQ(json_to_int32(nullptr), 0);
}

}  // namespace
