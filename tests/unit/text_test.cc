#include "sys/text.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

// ---- TextBuffer ---------------------------------------------------------

struct GrowthCase {
  std::vector<unsigned int> appends;  // byte counts appended one after another
  unsigned int capacity;              // expected at the end
  unsigned int length;
};

class TextBufferGrowth : public ::testing::TestWithParam<GrowthCase> {};

TEST_P(TextBufferGrowth, KeepsSlackAfterEachGrowth) {
  const GrowthCase &c = GetParam();
  TextBuffer buffer;
  std::string expected;
  char next = 'a';
  for (unsigned int count : c.appends) {
    std::string piece(count, next);
    next = next == 'z' ? 'a' : static_cast<char>(next + 1);
    text_buffer_append(&buffer, piece.data(), count);
    expected += piece;
  }
  EXPECT_EQ(buffer.capacity, c.capacity);
  EXPECT_EQ(buffer.length, c.length);
  ASSERT_NE(buffer.data, nullptr);
  EXPECT_EQ(std::string(buffer.data), expected);  // terminated right after the bytes
}

INSTANTIATE_TEST_SUITE_P(
    Appends, TextBufferGrowth,
    ::testing::Values(
        GrowthCase{{10}, 266, 10},
        GrowthCase{{1}, 257, 1},
        // 10 + 254 + 1 = 265 stays below 266: no growth.
        GrowthCase{{10, 254}, 266, 264},
        // 10 + 255 + 1 = 266 reaches the capacity: grows to 10 + 255 + 256.
        GrowthCase{{10, 255}, 521, 265},
        GrowthCase{{300}, 556, 300},
        GrowthCase{{128, 128, 128}, 640, 384},
        GrowthCase{{512, 512, 512, 512}, 2304, 2048}));

TEST(TextBuffer, NullBytesOrZeroCountLeaveItEmpty) {
  TextBuffer buffer;
  text_buffer_append(&buffer, nullptr, 5);
  text_buffer_append(&buffer, "abc", 0);
  EXPECT_EQ(buffer.capacity, 0u);
  EXPECT_EQ(buffer.length, 0u);
  EXPECT_EQ(buffer.data, nullptr);
}

TEST(TextBuffer, AppendKeepsEmbeddedZeroBytes) {
  TextBuffer buffer;
  text_buffer_append(&buffer, "a\0b", 3);
  ASSERT_EQ(buffer.length, 3u);
  EXPECT_EQ(0, memcmp(buffer.data, "a\0b\0", 4));
}

TEST(TextBuffer, AppendfFormatsAndCutsAt511) {
  TextBuffer buffer;
  text_buffer_appendf(&buffer, "%d-%s", 42, "x");
  text_buffer_appendf(&buffer, "%s", "");  // empty result appends nothing
  EXPECT_EQ(buffer.length, 4u);
  EXPECT_STREQ(buffer.data, "42-x");

  TextBuffer longer;
  std::string big(700, 'q');
  text_buffer_appendf(&longer, "%s", big.c_str());
  EXPECT_EQ(longer.length, 511u);
  EXPECT_EQ(std::string(longer.data), std::string(511, 'q'));
}

TEST(TextBuffer, AppendfOfEmptyTextAllocatesNothing) {
  TextBuffer buffer;
  text_buffer_appendf(&buffer, "%s", "");
  EXPECT_EQ(buffer.data, nullptr);
  EXPECT_EQ(buffer.capacity, 0u);
}

TEST(TextBuffer, TakeHandsOverTextAndEmptiesTheRecord) {
  TextBuffer buffer;
  text_buffer_append(&buffer, "hello", 5);
  unsigned int length = 99;
  OwnedText text = text_buffer_take(&buffer, &length);
  EXPECT_STREQ(text.get(), "hello");
  EXPECT_EQ(length, 5u);
  EXPECT_EQ(buffer.data, nullptr);
  EXPECT_EQ(buffer.length, 0u);
  EXPECT_EQ(buffer.capacity, 0u);

  unsigned int empty_length = 99;
  OwnedText none = text_buffer_take(&buffer, &empty_length);
  EXPECT_EQ(none, nullptr);
  EXPECT_EQ(empty_length, 0u);
}

// ---- trimming -----------------------------------------------------------

struct TrimCase {
  const char *input;
  const char *output;
};

class Trim : public ::testing::TestWithParam<TrimCase> {};

TEST_P(Trim, InPlace) {
  char text[64];
  snprintf(text, sizeof text, "%s", GetParam().input);
  EXPECT_EQ(trim(text), text);
  EXPECT_STREQ(text, GetParam().output);

  snprintf(text, sizeof text, "%s", GetParam().input);
  EXPECT_EQ(trim_spaces(text), text);
  EXPECT_STREQ(text, GetParam().output);
}

INSTANTIATE_TEST_SUITE_P(Cases, Trim,
                         ::testing::Values(TrimCase{"  a b \r\n", "a b"}, TrimCase{"\n", ""},
                                           TrimCase{"x", "x"}, TrimCase{"", ""},
                                           TrimCase{" \t\v\f\r\n ", ""}, TrimCase{"\tx", "x"},
                                           TrimCase{"x\t", "x"}, TrimCase{"a  b", "a  b"},
                                           TrimCase{"{\"a\":1}\n", "{\"a\":1}"},
                                           TrimCase{" \x01 ", "\x01"}));

TEST(Trim, NullStaysNull) {
  EXPECT_EQ(trim(nullptr), nullptr);
}

// ---- copies -------------------------------------------------------------

TEST(StrDup, CopiesOrGivesNull) {
  OwnedText copy = str_dup("abc");
  EXPECT_STREQ(copy.get(), "abc");
  EXPECT_EQ(str_dup(nullptr), nullptr);

  OwnedText part = str_ndup("abcdef", 3);
  EXPECT_STREQ(part.get(), "abc");
  OwnedText zeros = str_ndup("a\0b", 3);
  EXPECT_EQ(0, memcmp(zeros.get(), "a\0b\0", 4));
  OwnedText empty = str_ndup("abc", 0);
  EXPECT_STREQ(empty.get(), "");
  EXPECT_EQ(str_ndup(nullptr, 3), nullptr);
}

// ---- comparisons --------------------------------------------------------

struct EqualCase {
  const char *a;
  const char *b;
  int equal;         // str_equal
  int equal_nocase;  // str_equal_nocase
  int compare_sign;  // sign of str_compare (1 for exactly one null)
};

class Compare : public ::testing::TestWithParam<EqualCase> {};

int sign(int v) { return (v > 0) - (v < 0); }

TEST_P(Compare, Results) {
  const EqualCase &c = GetParam();
  const int eq = str_equal(c.a, c.b);
  const int eq_nocase = str_equal_nocase(c.a, c.b);
  const int cmp = str_compare(c.a, c.b);
  // Same-length texts give strcmp's result, whose magnitude is the library's
  // business; compare those by sign only.
  const bool same_length = c.a && c.b && strlen(c.a) == strlen(c.b);
  if (same_length) {
    EXPECT_EQ(sign(eq), c.equal);
    EXPECT_EQ(sign(eq_nocase), c.equal_nocase);
  } else {
    EXPECT_EQ(eq, c.equal);
    EXPECT_EQ(eq_nocase, c.equal_nocase);
  }
  if (c.a && c.b)
    EXPECT_EQ(sign(cmp), c.compare_sign);
  else
    EXPECT_EQ(cmp, c.compare_sign);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, Compare,
    ::testing::Values(EqualCase{nullptr, nullptr, 0, 0, 0}, EqualCase{"on", nullptr, 1, 1, 1},
                      EqualCase{nullptr, "on", 1, 1, 1}, EqualCase{"on", "off", 1, 1, 1},
                      EqualCase{"off", "on", -1, -1, -1}, EqualCase{"", "abcd", 4, 4, -1},
                      EqualCase{"abc", "abc", 0, 0, 0}, EqualCase{"abc", "ABC", 1, 0, 1},
                      EqualCase{"abd", "abc", 1, 1, 1}, EqualCase{"ABC", "abd", -1, -1, -1},
                      EqualCase{"", "", 0, 0, 0}));

// ---- strtok -------------------------------------------------------------

// One call: the text passed is the case's buffer, a second buffer, an empty
// text or null.
enum Source { kText, kOther, kEmpty, kNull };

struct TokStep {
  Source source;
  const char *delimiters;
  const char *token;  // expected, null for none
};

struct TokCase {
  const char *name;
  const char *text;
  const char *other;
  std::vector<TokStep> steps;
};

class Strtok : public ::testing::TestWithParam<TokCase> {};

TEST_P(Strtok, Sequence) {
  const TokCase &c = GetParam();
  char text[64], other[64], empty[1] = {'\0'};
  snprintf(text, sizeof text, "%s", c.text);
  snprintf(other, sizeof other, "%s", c.other ? c.other : "");
  for (size_t i = 0; i < c.steps.size(); ++i) {
    const TokStep &s = c.steps[i];
    char *arg = s.source == kText ? text : s.source == kOther ? other : s.source == kEmpty ? empty : nullptr;
    char *token = strtok(arg, s.delimiters);
    if (s.token)
      EXPECT_STREQ(token, s.token) << "call " << i;
    else
      EXPECT_EQ(token, nullptr) << "call " << i;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Sequences, Strtok,
    ::testing::Values(
        TokCase{"EmptyFieldsAreSkipped", "a,,b", nullptr,
                {{kText, ",", "a"}, {kNull, ",", "b"}, {kNull, ",", nullptr}, {kNull, ",", nullptr}}},
        TokCase{"LeadingDelimiters", ",,a", nullptr, {{kText, ",", "a"}, {kNull, ",", nullptr}}},
        TokCase{"OnlyDelimiters", ",,,", nullptr, {{kText, ",", nullptr}, {kNull, ",", nullptr}}},
        TokCase{"TrailingDelimiter", "a,", nullptr, {{kText, ",", "a"}, {kNull, ",", nullptr}}},
        TokCase{"TrailingDelimiters", "a b  ", nullptr,
                {{kText, " ", "a"}, {kNull, " ", "b"}, {kNull, " ", nullptr}}},
        // An empty text leaves the position alone: null goes on with the
        // earlier text.
        TokCase{"EmptyTextKeepsPosition", "x y z", nullptr,
                {{kText, " ", "x"}, {kEmpty, " ", nullptr}, {kNull, " ", "y"}, {kNull, " ", "z"},
                 {kNull, " ", nullptr}}},
        TokCase{"NewTextRestarts", "a b", "c d",
                {{kText, " ", "a"}, {kOther, " ", "c"}, {kNull, " ", "d"}, {kNull, " ", nullptr}}},
        TokCase{"DelimitersMayChange", "a b,c d", nullptr,
                {{kText, " ", "a"}, {kNull, ",", "b"}, {kNull, ",", "c d"}, {kNull, ",", nullptr}}},
        TokCase{"SeveralDelimiters", "k=v;w", nullptr,
                {{kText, "=;", "k"}, {kNull, "=;", "v"}, {kNull, "=;", "w"}, {kNull, "=;", nullptr}}},
        TokCase{"NoDelimiterFound", "word", nullptr, {{kText, ",", "word"}, {kNull, ",", nullptr}}}),
    [](const ::testing::TestParamInfo<TokCase> &p) { return std::string(p.param.name); });

TEST(Strtok, EndOfTextLeavesNullPosition) {
  // After the last token the position is null, so an empty text followed by
  // null still gives nothing.
  char text[] = "only";
  char empty[] = "";
  EXPECT_STREQ(strtok(text, ","), "only");
  EXPECT_EQ(strtok(empty, ","), nullptr);
  EXPECT_EQ(strtok(nullptr, ","), nullptr);
}

// Where the saved position points shows once the caller reuses its buffer:
// after the last token it points nowhere, after trailing delimiters at the
// old terminator.
TEST(Strtok, PositionAfterTheTextEnds) {
  char text[16] = "a";
  EXPECT_STREQ(strtok(text, " "), "a");
  memcpy(text, "a b", 4);
  EXPECT_EQ(strtok(nullptr, " "), nullptr);

  char spaces[16] = "a  ";
  EXPECT_STREQ(strtok(spaces, " "), "a");
  EXPECT_EQ(strtok(nullptr, " "), nullptr);  // position now at spaces + 3
  memcpy(spaces, "a  x", 5);
  EXPECT_STREQ(strtok(nullptr, " "), "x");
}

TEST(Strtok, OverwritesOnlyTheDelimiterAfterEachToken) {
  char text[] = "a,,b";
  ASSERT_STREQ(strtok(text, ","), "a");
  EXPECT_EQ(0, memcmp(text, "a\0,b", 5));
  ASSERT_STREQ(strtok(nullptr, ","), "b");
  EXPECT_EQ(0, memcmp(text, "a\0,b", 5));
}

}  // namespace
