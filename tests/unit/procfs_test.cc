#include "sys/procfs.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

// The helpers' write calls, seen at the system-call boundary: this write takes the place of the
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

#include "engine/state.h"
#include "scratch_sysroot.h"

namespace {

// Streams written by the test itself (put) would be recorded too: no put while recording.
struct Recording {
  explicit Recording(long cap = -1) { g_write_sizes.clear(); g_write_cap = cap; g_recording = true; }
  ~Recording() { g_recording = false; }
};

std::string pattern(size_t n) {
  std::string s;
  for (size_t i = 0; i < n; ++i) s += static_cast<char>('A' + (i * 7 + i / 26) % 26);
  return s;
}

// A scratch directory that serves as the sysroot: the helpers are given the gateway's paths.
class ProcfsTest : public ScratchSysroot {
 protected:
  void put(const std::string &path, const std::string &content) const {
    for (size_t pos = 1; (pos = path.find('/', pos)) != std::string::npos; ++pos)
      mkdir((root_ + path.substr(0, pos)).c_str(), 0755);
    std::ofstream(root_ + path) << content;
  }
  std::string get(const std::string &path) const {
    std::ifstream in(root_ + path);
    std::ostringstream out;
    out << in.rdbuf();
    return in ? out.str() : "<missing>";
  }
};

TEST_F(ProcfsTest, WriteLineIsOneWriteWithoutTruncation) {
  put("/proc/vek/conn_ctx", "0123456789abcdef\n");
  put("/proc/vek/qos_ctrl", "");
  EXPECT_EQ(write_proc_line("/proc/vek/absent", "set-entry-count %d", 5), -1);
  EXPECT_EQ(get("/proc/vek/absent"), "<missing>");
  Recording rec;
  EXPECT_EQ(write_proc_line("/proc/vek/conn_ctx", nullptr), 0);
  EXPECT_EQ(write_proc_line("/proc/vek/conn_ctx", "501 %d %d %d", 1, 3, 100), 11);
  EXPECT_EQ(write_proc_line("/proc/vek/qos_ctrl", "%s", pattern(700).c_str()), 511);
  EXPECT_EQ(g_write_sizes, (std::vector<size_t>{11, 511}));
  EXPECT_EQ(get("/proc/vek/conn_ctx"), "501 1 3 100bcdef\n");
  EXPECT_EQ(get("/proc/vek/qos_ctrl"), pattern(511));
  Recording short_writes(4);
  EXPECT_EQ(write_proc_line("/proc/vek/conn_ctx", "%s", "abcdefgh"), 4);  // what the write returned
}

TEST_F(ProcfsTest, WriteDataInPiecesOf128Bytes) {
  // Bytes to write, the limit per write (-1: none), the sizes asked for, the result.
  const struct { int length; long cap; std::vector<size_t> write_sizes; int result; } cases[] = {
      {300, -1, {128, 128, 44}, 300}, {129, -1, {128, 1}, 129}, {0, -1, {}, 0},
      {300, 100, {128, 128, 100}, 300},  // short writes: the next piece starts where one ended
      {300, 0, {128}, 0}};               // a write that takes nothing ends the loop
  put("/proc/vek/data", "");
  EXPECT_EQ(write_proc_data("/proc/vek/absent", "x", 1), -1);
  EXPECT_EQ(get("/proc/vek/absent"), "<missing>");
  for (const auto &c : cases) {
    put("/proc/vek/data", "");
    std::string data = pattern(static_cast<size_t>(c.length));
    Recording rec(c.cap);
    EXPECT_EQ(write_proc_data("/proc/vek/data", data.data(), c.length), c.result) << c.length << "/" << c.cap;
    EXPECT_EQ(g_write_sizes, c.write_sizes) << c.length << "/" << c.cap;
    EXPECT_EQ(get("/proc/vek/data"), data.substr(0, static_cast<size_t>(c.result)));
  }
}

TEST_F(ProcfsTest, ReadsAFileWhoseSizeSaysZero) {
  // A real procfs file: stat says 0 bytes, and it holds a few hundred.
  put("/proc/vek/x", "");
  ASSERT_EQ(symlink("/proc/filesystems", (root_ + "/proc/vek/stats").c_str()), 0);
  struct stat st;
  ASSERT_EQ(stat("/proc/filesystems", &st), 0);
  ASSERT_EQ(st.st_size, 0);
  std::string content = get("/proc/vek/stats");
  ASSERT_GT(content.size(), 256u);
  OwnedText data;
  int length = -5;
  EXPECT_EQ(read_proc_file("/proc/vek/stats", &data, &length), 0);
  EXPECT_EQ(length, static_cast<int>(content.size()));
  EXPECT_STREQ(data.get(), content.c_str());

  data = str_dup("old");
  EXPECT_EQ(read_proc_file("/proc/vek/absent", &data, &length), -1);
  EXPECT_STREQ(data.get(), "old");
  EXPECT_EQ(length, static_cast<int>(content.size()));
  EXPECT_EQ(read_proc_file("/proc/vek/x", &data, &length), 0);
  EXPECT_EQ(data, nullptr);
  EXPECT_EQ(length, 0);
}

// What takes the place of a control file: a FIFO (with nobody at the other end, or with a
// holder that neither reads nor writes), a device that never ends, or a file past the ceiling.
TEST_F(ProcfsTest, NoFileBlocksOrGrowsPastTheCeiling) {
  const std::string record = "u:block_conns:42\n";
  const std::string at_ceiling = std::string(CONTROL_FILE_MAX - record.size() - 1, 'x') + "\n" + record;
  const struct {
    const char *name;
    int read_result, read_length;  // read_proc_file
    int find_result;               // find_record for "u:block_conns:"
    const char *line;              // the record found, or "keep" when the line is left alone
    int into_result;               // read_file_into a 16-byte buffer
    int write_result;              // write_proc_line of "clear"
  } cases[] = {
      {"fifo", 0, 0, 0, "keep", 0, -1},            // no reader: cannot be opened for writing
      {"held fifo", 0, 0, 0, "keep", -1, 5},       // nothing to read yet; the verb waits in the pipe
      {"/dev/zero", -1, 0, 1, "keep", 16, 5},      // gives up at the ceiling
      {"at ceiling", 0, CONTROL_FILE_MAX, 0, "u:block_conns:42\n", 16, 5},
      {"past ceiling", -1, 0, 1, "keep", 16, 5},   // the record lies one byte past it
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    const std::string path = "/proc/vek/monitor", real = root_ + path;
    std::string name = c.name;
    put("/proc/vek/other", "");
    remove(real.c_str());
    int holder = -1;
    if (name == "fifo" || name == "held fifo") {
      ASSERT_EQ(mkfifo(real.c_str(), 0600), 0);
      if (name == "held fifo") holder = open(real.c_str(), O_RDWR | O_NONBLOCK);
    } else if (name == "/dev/zero") {
      ASSERT_EQ(symlink("/dev/zero", real.c_str()), 0);
    } else {
      put(path, name == "at ceiling" ? at_ceiling : "x" + at_ceiling);
    }
    OwnedText data;
    int length = -5;
    EXPECT_EQ(read_proc_file(path.c_str(), &data, &length), c.read_result);
    if (c.read_result == 0) {
      EXPECT_EQ(length, c.read_length);
    }
    OwnedText line = str_dup("keep");
    EXPECT_EQ(find_record(path.c_str(), "u:block_conns:", &line), c.find_result);
    EXPECT_STREQ(line.get(), c.line);
    char buffer[16];
    EXPECT_EQ(read_file_into(path.c_str(), buffer, sizeof buffer), c.into_result);
    EXPECT_EQ(write_proc_line(path.c_str(), "clear"), c.write_result);
    if (holder >= 0) close(holder);
  }
}

// Links, FIFOs and the like in place of a daemon file are in tests/e2e/integrity-io.t; here the
// paths it is given and the ceiling it shares with control files.
TEST_F(ProcfsTest, DaemonFileIsARegularFileWithinTheCeiling) {
  put("/tmp/bs/bs.json", "{}\n");
  put("/tmp/big/at", std::string(CONTROL_FILE_MAX, 'x'));
  put("/tmp/big/past", std::string(CONTROL_FILE_MAX + 1, 'x'));
  const std::string fits = "/tmp/" + std::string(250, 'd') + "/f", past = "/tmp/" + std::string(251, 'd') + "/f";
  put(fits, "fits");  // the directory's name is kept in 256 bytes
  put(past, "past");
  const struct { const char *name; const char *path; int result, length; } cases[] = {
      {"file", "/tmp/bs/bs.json", 0, 3},  {"at ceiling", "/tmp/big/at", 0, CONTROL_FILE_MAX},
      {"past ceiling", "/tmp/big/past", -1, -5}, {"missing", "/tmp/bs/none.json", -1, -5},
      {"directory", "/tmp/bs/", -1, -5},  {"relative", "tmp/bs/bs.json", -1, -5},
      {"no directory", "/bs.json", -1, -5}, {"null", nullptr, -1, -5},
      {"directory of 255", fits.c_str(), 0, 4}, {"directory of 256", past.c_str(), -1, -5}};
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    OwnedText data;
    int length = -5;
    EXPECT_EQ(read_daemon_file(c.path, &data, &length), c.result);
    EXPECT_EQ(length, c.length);
    EXPECT_EQ(data == nullptr, c.result != 0);
  }
}

TEST_F(ProcfsTest, ReadFileIntoTerminatesTheBuffer) {
  // File size (-1: no file), result and text length for a 16-byte buffer.
  const struct { int file_bytes, result, text_length; } cases[] = {{40, 16, 15}, {15, 15, 15}, {0, 0, 0}, {-1, -1, 0}};
  for (const auto &c : cases) {
    std::string content = pattern(c.file_bytes < 0 ? 0 : static_cast<size_t>(c.file_bytes));
    if (c.file_bytes >= 0) put("/proc/vek/f", content);
    char buffer[32];
    memset(buffer, 'Z', sizeof buffer);
    EXPECT_EQ(read_file_into(c.file_bytes < 0 ? "/proc/vek/none" : "/proc/vek/f", buffer, 16), c.result);
    EXPECT_EQ(std::string(buffer), content.substr(0, static_cast<size_t>(c.text_length))) << c.file_bytes;
    EXPECT_EQ(buffer[16], 'Z');  // nothing past `size` is touched
  }
}

TEST_F(ProcfsTest, FindRecordTakesTheFirstLineBeginningWithTheTag) {
  const std::string long_value = "j:devs:" + pattern(5000) + "\n";
  const struct { std::string content; const char *tag; std::string line; } cases[] = {
      {"d:qnum:", "d:qnum:", "d:qnum:"},  // a bare tag is a record
      {"s:mode:gw\nd:qnum:8\nd:qnum:9\n", "d:qnum:", "d:qnum:8\n"},
      {"d:q\n\nd:qnum\nd:qnum:1\n", "d:qnum:", "d:qnum:1\n"},
      {std::string(10000, 'x') + "\n" + long_value, "j:devs:", long_value},
      {"s:mode:gw\n d:qnum:1\nx d:qnum:2\n", "d:qnum:", "keep"},  // the tag must start the line
  };
  for (const auto &c : cases) {
    put("/proc/vek/qos_ctrl", c.content);
    OwnedText line = str_dup("keep");
    EXPECT_EQ(find_record("/proc/vek/qos_ctrl", c.tag, &line), 0);
    EXPECT_EQ(std::string(line.get()), c.line) << c.content.substr(0, 40);
  }
  OwnedText line = str_dup("keep");
  EXPECT_EQ(find_record("/proc/vek/absent", "d:qnum:", &line), 1);
  EXPECT_STREQ(line.get(), "keep");
}

TEST_F(ProcfsTest, CopyFileTakesOnlyARegularFileIntoAnExistingOne) {
  put("/tmp/src", pattern(1300));
  put("/tmp/dst", pattern(2000));
  ASSERT_EQ(mkfifo((root_ + "/tmp/fifo").c_str(), 0600), 0);
  Recording rec;
  EXPECT_EQ(copy_file("/tmp/dst", "/tmp/src"), 1300);
  EXPECT_EQ(g_write_sizes, (std::vector<size_t>{512, 512, 276}));
  EXPECT_EQ(copy_file("/tmp/dst", "/tmp/absent"), -1);  // the destination is then not opened
  EXPECT_EQ(copy_file("/tmp/dst", "/tmp/fifo"), -1);    // at once, never waiting for a writer
  EXPECT_EQ(copy_file("/tmp/dst", "/tmp"), -1);
  EXPECT_EQ(get("/tmp/dst"), pattern(1300));
  EXPECT_EQ(copy_file("/tmp/new", "/tmp/src"), -2);  // never created
  EXPECT_EQ(get("/tmp/new"), "<missing>");
  Recording short_writes(100);
  EXPECT_EQ(copy_file("/tmp/dst", "/tmp/src"), -1);  // a short write
}

TEST_F(ProcfsTest, EngineStateAndTypedReaders) {
  EXPECT_EQ(service_alive(), 0);
  put("/proc/vek", "not a directory");
  EXPECT_EQ(engine_loaded(), 0);
  ASSERT_EQ(remove((root_ + "/proc/vek").c_str()), 0);
  put("/proc/812/comm", "vek_service\n");
  EXPECT_EQ(service_alive(), 1);

  int count = -7;
  OwnedText rate = str_dup("old"), devs;
  EXPECT_EQ(read_queue_number(&count), 1);  // no file
  put("/proc/vek/qos_ctrl", "d:qnum:x\n");  // does not parse
  put("/proc/vek/qoe_config", "d:x:1\n");   // no record
  EXPECT_EQ(engine_loaded(), 1);
  EXPECT_EQ(read_queue_number(&count), 1);
  EXPECT_EQ(read_hyqos_rate(&rate), 1);
  EXPECT_EQ(count, -7);
  EXPECT_STREQ(rate.get(), "old");
  put("/proc/vek/qos_ctrl", "s:mode:x\nd:qnum:8\n");
  put("/proc/vek/qoe_config", "d:x:1\nj:hyqos_rate:  {\"up\":[1,2]} \r\n");
  put("/proc/vek/dbdev", "j:devs:[{\"mac\":\"aa\"}]\n");
  EXPECT_EQ(read_queue_number(&count), 0);
  EXPECT_EQ(count, 8);
  EXPECT_EQ(read_hyqos_rate(&rate), 0);
  EXPECT_STREQ(rate.get(), "{\"up\":[1,2]}");
  EXPECT_EQ(read_dbdev(&devs), 0);
  EXPECT_STREQ(devs.get(), "[{\"mac\":\"aa\"}]");
}

}  // namespace
