#include "groups/frame.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdio>
#include <fstream>
#include <string>

#include "context.h"
#include "scratch_sysroot.h"

namespace {

// Positional integers of the shaping groups: base 10 only, no check of what
// follows the number, held to int as a 32-bit gateway's strtol holds them.
TEST(ArgInt, ReadsLeadingDecimalAndHoldsToInt) {
  struct Case {
    const char *text;
    int value;
  } cases[] = {
      {"7", 7},
      {"-1", -1},
      {"  +42", 42},
      {"7x", 7},
      {"abc", 0},
      {"", 0},
      {"0x10", 0},  // not hexadecimal
      {"010", 10},  // not octal
      {"2147483647", 2147483647},
      {"2147483648", 2147483647},
      {"99999999999999999999999", 2147483647},
      {"-2147483648", -2147483647 - 1},
      {"-2147483649", -2147483647 - 1},
      {"4294967297", 2147483647},  // held, not wrapped to 1
  };
  for (const Case &c : cases) EXPECT_EQ(arg_int(c.text), c.value) << '"' << c.text << '"';
}

// The first line of a control file that begins with the tag, trimmed, or the
// group's own text for a file that cannot be read and for one without the tag.
class ReadRecord : public ScratchSysroot {};

TEST_F(ReadRecord, ReportsTheGroupsTextsOrGivesTheTrimmedLine) {
  mkdir((root_ + "/proc").c_str(), 0755);
  std::ofstream(root_ + "/proc/ctrl") << "d:other:1\nd:qnum:8 \t\nd:qnum:9\n";
  const RecordFailures failures = {"cannot read", "no record"};
  struct Case {
    const char *path;
    const char *tag;
    bool json;
    bool found;
    const char *out;
    const char *line;
  } cases[] = {
      {"/proc/gone", "d:qnum:", false, false, "cannot read\n", nullptr},
      {"/proc/gone", "d:qnum:", true, false, "{\"return\":1,\"detail\":\"cannot read\"}\n", nullptr},
      {"/proc/ctrl", "d:algo:", false, false, "no record\n", nullptr},
      {"/proc/ctrl", "d:algo:", true, false, "{\"return\":1,\"detail\":\"no record\"}\n", nullptr},
      {"/proc/ctrl", "d:other:", false, true, "", "d:other:1"},
      {"/proc/ctrl", "d:qnum:", true, true, "", "d:qnum:8"},
  };
  for (const Case &c : cases) {
    g_options.json = c.json;
    OwnedText line;
    testing::internal::CaptureStdout();
    bool found = read_record(c.path, c.tag, failures, &line);
    fflush(stdout);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), c.out) << c.path << " " << c.tag;
    EXPECT_EQ(found, c.found) << c.path << " " << c.tag;
    if (c.line) {
      ASSERT_TRUE(line);
      EXPECT_STREQ(line.get(), c.line);
    }
  }
  g_options.json = false;
}

// An engine JSON text as the result: the bare member in JSON mode, with or
// without the line end; the text and a line end in plain mode.
TEST(PrintJsonResult, WrapsTheTextOnlyInJsonMode) {
  struct Case {
    bool json;
    bool ended;
    const char *out;
  } cases[] = {
      {false, true, "[1,2]\n"},
      {false, false, "[1,2]\n"},
      {true, true, "{\"return\":0,\"result\":[1,2]}\n"},
      {true, false, "{\"return\":0,\"result\":[1,2]}"},
  };
  for (const Case &c : cases) {
    g_options.json = c.json;
    testing::internal::CaptureStdout();
    int status = c.ended ? print_json_result("[1,2]") : print_json_result_unended("[1,2]");
    fflush(stdout);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), c.out) << c.json << c.ended;
    EXPECT_EQ(status, 0);
  }
  g_options.json = false;
}

}  // namespace
