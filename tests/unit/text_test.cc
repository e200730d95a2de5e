#include "sys/text.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace {

TEST(TextBuffer, KeepsSlackAfterEachGrowth) {
  struct Case {
    std::vector<unsigned int> appends;  // byte counts appended one after another
    unsigned int capacity, length;
  } cases[] = {
      {{10}, 266, 10},
      {{10, 254}, 266, 264},  // 10 + 254 + 1 stays below 266: no growth
      {{10, 255}, 521, 265},  // 10 + 255 + 1 reaches 266: grows to 10 + 255 + 256
      {{128, 128, 128}, 640, 384},
  };
  for (const Case &c : cases) {
    TextBuffer buffer;
    std::string expected;
    for (unsigned int count : c.appends) {
      std::string piece(count, static_cast<char>('a' + expected.size() % 26));
      text_buffer_append(&buffer, piece.data(), count);
      expected += piece;
    }
    EXPECT_EQ(buffer.capacity, c.capacity) << expected.size();
    EXPECT_EQ(buffer.length, c.length) << expected.size();
    ASSERT_NE(buffer.data, nullptr);
    EXPECT_EQ(std::string(buffer.data), expected);  // terminated right after the bytes
  }
}

TEST(TextBuffer, AppendfTakeAndEmptyAppends) {
  TextBuffer buffer;
  text_buffer_append(&buffer, nullptr, 5);
  text_buffer_append(&buffer, "abc", 0);
  text_buffer_appendf(&buffer, "%s", "");
  EXPECT_EQ(buffer.data, nullptr);
  EXPECT_EQ(buffer.capacity, 0u);

  text_buffer_appendf(&buffer, "%d-%s", 42, std::string(700, 'q').c_str());
  unsigned int length = 0;
  OwnedText text = text_buffer_take(&buffer, &length);
  EXPECT_EQ(length, 511u);  // formatted into 512 bytes
  EXPECT_EQ(std::string(text.get()), "42-" + std::string(508, 'q'));
  EXPECT_EQ(buffer.data, nullptr);
  EXPECT_EQ(buffer.length, 0u);
  EXPECT_EQ(buffer.capacity, 0u);
  EXPECT_EQ(text_buffer_take(&buffer, &length), nullptr);
  EXPECT_EQ(length, 0u);
}

TEST(Trim, InPlace) {
  const char *cases[][2] = {{"  a b \r\n", "a b"}, {"\n", ""},       {"x", "x"},       {"", ""},
                            {" \t\v\f\r\n ", ""},  {"a  b", "a  b"}, {"\tx\t", "x"}};
  for (auto &c : cases) {
    char text[32], spaces[32];
    snprintf(text, sizeof text, "%s", c[0]);
    snprintf(spaces, sizeof spaces, "%s", c[0]);
    EXPECT_EQ(trim(text), text);
    EXPECT_STREQ(text, c[1]) << '"' << c[0] << '"';
    EXPECT_EQ(trim_spaces(spaces), spaces);
    EXPECT_STREQ(spaces, c[1]);
  }
  EXPECT_EQ(trim(nullptr), nullptr);
}

// The copies cut exactly where snprintf with "%s" and "%s%s" would, and keep
// the bytes after the terminator untouched.
TEST(CopyText, CutsAsSnprintfWould) {
  struct Case {
    const char *first, *second;
    size_t size;
  } cases[] = {
      {"", "", 1},         {"abc", "", 4},      {"abc", "", 3},       {"abc", "", 1},
      {"ab", "cd", 5},     {"ab", "cd", 4},     {"ab", "cd", 2},      {"", "/vek.sock", 10},
      {"/tmp/r", "/proc/vek", 64}, {"/tmp/r", "/proc/vek", 8},
  };
  for (const Case &c : cases) {
    char expected[16], got[16];
    memset(expected, 'x', sizeof expected);
    memset(got, 'x', sizeof got);
    snprintf(expected, c.size, "%s%s", c.first, c.second);
    const char *result = c.second[0] ? join_text(got, c.size, c.first, c.second)
                                     : copy_text(got, c.size, c.first);
    EXPECT_EQ(result, got);
    EXPECT_EQ(std::string(got, sizeof got), std::string(expected, sizeof expected))
        << c.first << "|" << c.second << " in " << c.size;
  }
  char untouched = 'x';
  EXPECT_EQ(copy_text(&untouched, 0, "abc"), &untouched);
  EXPECT_EQ(untouched, 'x');
}

TEST(StrDup, CopiesOrGivesNull) {
  EXPECT_STREQ(str_dup("abc").get(), "abc");
  EXPECT_EQ(str_dup(nullptr), nullptr);
  OwnedText part = str_ndup("a\0bcdef", 3);
  EXPECT_EQ(0, memcmp(part.get(), "a\0b\0", 4));
  EXPECT_EQ(str_ndup(nullptr, 3), nullptr);
}

int sign(int v) { return (v > 0) - (v < 0); }

TEST(Compare, NullsAndLengthsFirst) {
  // Exact results where the length or a null decides; strcmp's sign otherwise.
  struct Case {
    const char *a, *b;
    int equal, equal_nocase, compare;
  } cases[] = {{nullptr, nullptr, 0, 0, 0}, {"on", nullptr, 1, 1, 1}, {nullptr, "on", 1, 1, 1},
               {"on", "off", 1, 1, 1},      {"off", "on", -1, -1, -1}, {"", "abcd", 4, 4, -1},
               {"abc", "abc", 0, 0, 0},     {"abc", "ABC", 1, 0, 1},   {"ABC", "abd", -1, -1, -1}};
  for (const Case &c : cases) {
    bool same_length = c.a && c.b && strlen(c.a) == strlen(c.b);
    int eq = str_equal(c.a, c.b), nocase = str_equal_nocase(c.a, c.b), cmp = str_compare(c.a, c.b);
    EXPECT_EQ(same_length ? sign(eq) : eq, c.equal) << c.a << " " << c.b;
    EXPECT_EQ(same_length ? sign(nocase) : nocase, c.equal_nocase) << c.a << " " << c.b;
    EXPECT_EQ(c.a && c.b ? sign(cmp) : cmp, c.compare) << c.a << " " << c.b;
  }
}

TEST(Strtok, Sequences) {
  // Each call names its argument: 'T' the text, 'O' another text, 'E' an
  // empty text, 'N' null; "-" stands for a null token.
  struct Case {
    const char *text, *delimiters;
    std::vector<std::pair<char, const char *>> calls;
  } cases[] = {
      {"a,,b", ",", {{'T', "a"}, {'N', "b"}, {'N', "-"}, {'N', "-"}}},
      {",,a", ",", {{'T', "a"}, {'N', "-"}}},
      {",,,", ",", {{'T', "-"}, {'N', "-"}}},
      {"a b  ", " ", {{'T', "a"}, {'N', "b"}, {'N', "-"}}},
      // An empty text keeps the position: null goes on with the earlier text.
      {"x y z", " ", {{'T', "x"}, {'E', "-"}, {'N', "y"}, {'N', "z"}, {'N', "-"}}},
      {"a b", " ", {{'T', "a"}, {'O', "c"}, {'N', "d"}, {'N', "-"}}},
      {"k=v;w", "=;", {{'T', "k"}, {'N', "v"}, {'N', "w"}, {'N', "-"}}},
  };
  for (const Case &c : cases) {
    char text[16], other[] = "c d", empty[] = "";
    snprintf(text, sizeof text, "%s", c.text);
    for (auto &call : c.calls) {
      char *arg = call.first == 'T' ? text : call.first == 'O' ? other : call.first == 'E' ? empty : nullptr;
      const char *token = strtok(arg, c.delimiters);
      EXPECT_STREQ(token ? token : "-", call.second) << c.text;
    }
  }
}

// The saved position shows once the caller reuses its buffer: after the last
// token it is null, after trailing delimiters it rests on the old terminator.
TEST(Strtok, PositionAfterTheTextEnds) {
  char text[16] = "a,,b";
  EXPECT_STREQ(strtok(text, ","), "a");
  EXPECT_STREQ(strtok(nullptr, ","), "b");
  EXPECT_EQ(0, memcmp(text, "a\0,b", 5));  // only the delimiter after a token is cut
  memcpy(text, "a,,b c", 7);
  EXPECT_EQ(strtok(nullptr, " "), nullptr);

  char spaces[16] = "a  ";
  EXPECT_STREQ(strtok(spaces, " "), "a");
  EXPECT_EQ(strtok(nullptr, " "), nullptr);  // position now at spaces + 3
  memcpy(spaces, "a  x", 5);
  EXPECT_STREQ(strtok(nullptr, " "), "x");
}

}  // namespace
