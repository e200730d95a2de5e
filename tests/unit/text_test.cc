#include "sys/text.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

// Pieces that make the buffer grow, a formatted piece cut to 511 characters,
// appends that add nothing, and the hand-over that empties the buffer.
TEST(TextBuffer, CollectsPiecesAndHandsThemOver) {
  TextBuffer buffer;
  text_buffer_append(&buffer, nullptr, 5);
  text_buffer_append(&buffer, "abc", 0);
  text_buffer_appendf(&buffer, "%s", "");
  EXPECT_EQ(buffer.data, nullptr);
  std::string expected;
  for (unsigned int count : {10u, 255u, 300u}) {
    std::string piece(count, static_cast<char>('a' + count % 26));
    text_buffer_append(&buffer, piece.data(), count);
    expected += piece;
    if (count == 10) {
      EXPECT_EQ(buffer.capacity, 266u);  // 256 bytes of slack after a growth
    }
  }
  text_buffer_appendf(&buffer, "%d-%s", 42, std::string(700, 'q').c_str());
  expected += "42-" + std::string(508, 'q');
  unsigned int length = 0;
  OwnedText text = text_buffer_take(&buffer, &length);
  EXPECT_EQ(std::string(text.get()), expected);
  EXPECT_EQ(length, expected.size());
  EXPECT_EQ(text_buffer_take(&buffer, &length), nullptr);
  EXPECT_EQ(length, 0u);
}

TEST(Text, TrimCopyAndDuplicate) {
  for (auto [text, trimmed] : {std::pair<const char *, const char *>{"  a b \r\n", "a b"}, {" \t\v\f\r\n ", ""},
                               {"a  b", "a  b"}, {"", ""}}) {
    char buffer[32];
    snprintf(buffer, sizeof buffer, "%s", text);
    EXPECT_EQ(trim(buffer), buffer);
    EXPECT_STREQ(buffer, trimmed) << '"' << text << '"';
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
  EXPECT_STREQ(str_dup("abc").get(), "abc");
  EXPECT_EQ(0, memcmp(str_ndup("a\0bcdef", 3).get(), "a\0b\0", 4));
  EXPECT_EQ(str_dup(nullptr), nullptr);
}

// 0 for equal or both null, 1 for one null, strlen(b) - strlen(a) for other lengths, else strcmp's sign.
TEST(Text, ComparisonsTolerateNull) {
  const struct { const char *a, *b; int equal, nocase; } cases[] = {
      {nullptr, nullptr, 0, 0}, {"on", nullptr, 1, 1}, {nullptr, "on", 1, 1}, {"on", "off", 1, 1},
      {"off", "on", -1, -1},    {"", "abcd", 4, 4},    {"abc", "ABC", 1, 0},  {"ABC", "abd", -1, -1}};
  auto sign = [](int v) { return (v > 0) - (v < 0); };
  for (const auto &c : cases) {
    bool same = c.a && c.b && strlen(c.a) == strlen(c.b);
    EXPECT_EQ(same ? sign(str_equal(c.a, c.b)) : str_equal(c.a, c.b), c.equal) << c.a << " " << c.b;
    EXPECT_EQ(same ? sign(str_equal_nocase(c.a, c.b)) : str_equal_nocase(c.a, c.b), c.nocase) << c.a << " " << c.b;
  }
}

// The process's strtok: 'T' the text, 'E' an empty text (keeps the position),
// 'N' null; "-" a null token.
TEST(Text, StrtokSequences) {
  const struct { const char *text, *delimiters; std::vector<std::pair<char, const char *>> calls; } cases[] = {
      {"a,,b", ",", {{'T', "a"}, {'N', "b"}, {'N', "-"}, {'N', "-"}}},
      {",,,", ",", {{'T', "-"}, {'N', "-"}}},
      {"x y z", " ", {{'T', "x"}, {'E', "-"}, {'N', "y"}, {'N', "z"}, {'N', "-"}}},
      {"k=v;w", "=;", {{'T', "k"}, {'N', "v"}, {'N', "w"}, {'N', "-"}}},
  };
  for (const auto &c : cases) {
    char text[16], empty[] = "";
    snprintf(text, sizeof text, "%s", c.text);
    for (auto &call : c.calls) {
      const char *token = strtok(call.first == 'T' ? text : call.first == 'E' ? empty : nullptr, c.delimiters);
      EXPECT_STREQ(token ? token : "-", call.second) << c.text;
    }
  }
  // After the last token the position is null: a reused buffer is not read on.
  char text[16] = "a,b";
  strtok(text, ",");
  strtok(nullptr, ",");
  memcpy(text, "a,b c", 6);
  EXPECT_EQ(strtok(nullptr, " "), nullptr);
}

}  // namespace
