// Control files: one write per verb, data in pieces, readers held to a ceiling.
// A FIFO or a device in a control file's place: hostile-input.t.
#include "sys/procfs.h"

#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstring>
#include <vector>

// The helpers' writes, seen at the system-call boundary: this write takes the place of the
// C library's. While recording, it notes each size asked for and writes at most the cap (if >= 0).
static bool g_recording = false;
static long g_write_cap = -1;
static std::vector<size_t> g_write_sizes;

extern "C" ssize_t write(int fd, const void *bytes, size_t count) {
  if (g_recording) {
    g_write_sizes.push_back(count);
    if (g_write_cap >= 0 && count > static_cast<size_t>(g_write_cap)) count = static_cast<size_t>(g_write_cap);
    if (count == 0) return 0;
  }
  return syscall(SYS_write, fd, bytes, count);
}

#include "scratch_sysroot.h"

namespace {

struct Recording {  // the test's own files are written before recording starts
  explicit Recording(long cap = -1) { g_write_sizes.clear(), g_write_cap = cap, g_recording = true; }
  ~Recording() { g_recording = false; }
};

std::string pattern(size_t n) {
  std::string s;
  for (size_t i = 0; i < n; ++i) s += static_cast<char>('A' + (i * 7 + i / 26) % 26);
  return s;
}

class ProcfsTest : public ScratchSysroot {};

// A verb is one write, neither truncating nor creating the file; data goes in pieces of 128 bytes.
TEST_F(ProcfsTest, OneWritePerVerbAndDataIn128BytePieces) {
  put("/proc/vek/conn_ctx", "0123456789abcdef\n");
  EXPECT_EQ(write_proc_line("/proc/vek/absent", "clear") + write_proc_data("/proc/vek/absent", "x", 1), -2);
  EXPECT_EQ(get("/proc/vek/absent"), "<missing>");
  {
    Recording rec;
    EXPECT_EQ(write_proc_line("/proc/vek/conn_ctx", nullptr), 0);
    EXPECT_EQ(write_proc_line("/proc/vek/conn_ctx", "501 %d %d %d", 1, 3, 100), 11);
    EXPECT_EQ(g_write_sizes, (std::vector<size_t>{11}));
  }
  EXPECT_EQ(get("/proc/vek/conn_ctx"), "501 1 3 100bcdef\n");
  const struct { int length; long cap; std::vector<size_t> sizes; int result; } cases[] = {  // cap -1: none
      {300, -1, {128, 128, 44}, 300}, {0, -1, {}, 0},
      {300, 100, {128, 128, 100}, 300},  // a short write: the next piece starts where it ended
      {300, 0, {128}, 0}};               // a write that takes nothing ends the loop
  for (const auto &c : cases) {
    put("/proc/vek/data", "");
    std::string data = pattern(static_cast<size_t>(c.length));
    Recording rec(c.cap);
    EXPECT_EQ(write_proc_data("/proc/vek/data", data.data(), c.length), c.result) << c.length << "/" << c.cap;
    EXPECT_EQ(g_write_sizes, c.sizes) << c.length << "/" << c.cap;
    EXPECT_EQ(get("/proc/vek/data"), data.substr(0, static_cast<size_t>(c.result)));
  }
}

// Whole files up to a ceiling, and the first line that begins with a tag, its
// line end kept. A missing file or one past the ceiling leaves the outputs
// alone ("old", -5, "keep"); an empty one gives no text.
TEST_F(ProcfsTest, ReadersStopAtTheCeiling) {
  const std::string record = "d:qnum:42\n", at_ceiling = std::string(CONTROL_FILE_MAX - 11, 'x') + "\n" + record;
  const std::string long_value = "d:qnum:" + pattern(5000) + "\n", absent = "absent", zero = "/dev/zero";
  const struct { const std::string &content; const char *read; std::string line; } cases[] = {
      {absent, "-1 -5 old", "1 keep"}, {"", "0 0 null", "0 keep"}, {zero, "-1 -5 old", "1 keep"},
      {at_ceiling, "0 4194304 xxx", "0 " + record}, {"x" + at_ceiling, "-1 -5 old", "1 keep"},
      {"d:qnum:", "0 7 d:q", "0 d:qnum:"}, {"d:q\n\nd:qnum\nd:qnum:8\nd:qnum:9\n", "0 30 d:q", "0 d:qnum:8\n"},
      {std::string(10000, 'x') + "\n" + long_value, "0 15009 xxx", "0 " + long_value},
      {" d:qnum:1\nx d:qnum:2\n", "0 21  d:", "0 keep"}};
  const std::string path = "/proc/vek/qos_ctrl";
  for (const auto &c : cases) {
    std::filesystem::remove(root_ + path);
    if (&c.content == &zero) { ASSERT_EQ(symlink("/dev/zero", (root_ + path).c_str()), 0); }
    else if (&c.content != &absent) put(path, c.content);
    OwnedText data = str_dup("old"), line = str_dup("keep");
    int length = -5, result = read_proc_file(path.c_str(), &data, &length);
    EXPECT_EQ(std::to_string(result) + " " + std::to_string(length) + " " + (data ? std::string(data.get(), 3) : "null"), c.read)
        << c.content.substr(0, 20);
    result = find_record(path.c_str(), "d:qnum:", &line);
    EXPECT_EQ(std::to_string(result) + " " + line.get(), c.line) << c.content.substr(0, 20);
  }
  // The daemon's files in /tmp (links and the like: integrity-io.t), within the same ceiling.
  put("/tmp/small", "fits");
  put("/tmp/big", std::string(CONTROL_FILE_MAX + 1, 'x'));
  for (auto [file, result] : {std::pair<const char *, int>{"/tmp/small", 4}, {"/tmp/big", -5}, {"/small", -5}, {nullptr, -5}}) {
    OwnedText data;
    int length = -5;
    EXPECT_EQ(read_daemon_file(file, &data, &length), result == 4 ? 0 : -1) << (file ? file : "null");
    EXPECT_EQ(length, result) << (file ? file : "null");
  }
  OwnedText line = str_dup("keep");
  EXPECT_EQ(find_record(nullptr, "d:qnum:", &line), 1);
}

TEST_F(ProcfsTest, CopyFileTakesOnlyARegularFileIntoAnExistingOne) {
  put("/tmp/src", pattern(1300));
  put("/tmp/dst", pattern(2000));
  ASSERT_EQ(mkfifo((root_ + "/tmp/fifo").c_str(), 0600), 0);
  Recording rec;
  EXPECT_EQ(copy_file("/tmp/dst", "/tmp/src"), 1300);
  EXPECT_EQ(g_write_sizes, (std::vector<size_t>{512, 512, 276}));
  for (const char *source : {"/tmp/absent", "/tmp/fifo", "/tmp"}) EXPECT_EQ(copy_file("/tmp/dst", source), -1) << source;
  EXPECT_EQ(get("/tmp/dst"), pattern(1300));
  EXPECT_EQ(copy_file("/tmp/new", "/tmp/src"), -2);  // never created
  EXPECT_EQ(get("/tmp/new"), "<missing>");
  Recording short_writes(100);
  EXPECT_EQ(copy_file("/tmp/dst", "/tmp/src"), -1);
}

}  // namespace
