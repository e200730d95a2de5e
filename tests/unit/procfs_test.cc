#include "sys/procfs.h"

#include <dirent.h>
#include <fcntl.h>
#include <ftw.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

// The helpers' write calls, seen at the system-call boundary. This definition
// takes the place of the C library's write in the test program; outside a
// recording it passes everything straight to the kernel.
namespace {
bool g_recording = false;
std::vector<size_t> g_write_sizes;
long g_write_cap = -1;  // >= 0: each recorded write takes at most this many bytes
}  // namespace

extern "C" ssize_t write(int fd, const void *bytes, size_t count) {
  if (g_recording) {
    g_write_sizes.push_back(count);
    if (g_write_cap >= 0 && count > static_cast<size_t>(g_write_cap)) count = static_cast<size_t>(g_write_cap);
    if (count == 0) return 0;
  }
  return syscall(SYS_write, fd, bytes, count);
}

namespace {

struct Recording {
  explicit Recording(long cap = -1) {
    g_write_sizes.clear();
    g_write_cap = cap;
    g_recording = true;
  }
  ~Recording() {
    g_recording = false;
    g_write_cap = -1;
  }
};

int remove_entry(const char *path, const struct stat *, int, struct FTW *) { return remove(path); }

int count_open_fds() {
  DIR *dir = opendir("/proc/self/fd");
  if (!dir) return -1;
  int n = 0;
  while (readdir(dir)) ++n;
  closedir(dir);
  return n;
}

std::string pattern(size_t n) {
  std::string s;
  for (size_t i = 0; i < n; ++i) s += static_cast<char>('A' + (i * 7 + i / 26) % 26);
  return s;
}

class ProcfsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    unsetenv("VEKTOOL_SYSROOT");
    char templ[] = "/tmp/vektool-procfs-XXXXXX";
    ASSERT_NE(mkdtemp(templ), nullptr);
    root_ = templ;
    fds_before_ = count_open_fds();
  }
  void TearDown() override {
    unsetenv("VEKTOOL_SYSROOT");
    EXPECT_EQ(count_open_fds(), fds_before_) << "a helper left a file open";
    nftw(root_.c_str(), remove_entry, 16, FTW_DEPTH | FTW_PHYS);
  }

  std::string path(const std::string &name) const { return root_ + "/" + name; }

  void put(const std::string &name, const std::string &content) const {
    std::string full = path(name);
    for (size_t pos = root_.size() + 1; (pos = full.find('/', pos)) != std::string::npos; ++pos)
      mkdir(full.substr(0, pos).c_str(), 0755);
    FILE *f = fopen(full.c_str(), "wb");
    ASSERT_NE(f, nullptr) << full;
    fwrite(content.data(), 1, content.size(), f);
    fclose(f);
  }

  std::string get(const std::string &name) const {
    std::string out;
    FILE *f = fopen(path(name).c_str(), "rb");
    if (!f) return "<missing>";
    char block[256];
    size_t n;
    while ((n = fread(block, 1, sizeof block, f)) > 0) out.append(block, n);
    fclose(f);
    return out;
  }

  void use_sysroot() const { setenv("VEKTOOL_SYSROOT", root_.c_str(), 1); }

  std::string root_;
  int fds_before_ = 0;
};

// ---- write_proc_line ----------------------------------------------------

TEST_F(ProcfsTest, WriteLineOnMissingPathFailsAndCreatesNothing) {
  EXPECT_EQ(write_proc_line(path("absent").c_str(), "set-entry-count %d", 5), -1);
  struct stat st;
  EXPECT_EQ(stat(path("absent").c_str(), &st), -1);
  EXPECT_EQ(errno, ENOENT);
}

TEST_F(ProcfsTest, WriteLineOverwritesWithoutTruncating) {
  put("conn_ctx", "0123456789abcdef\n");
  EXPECT_EQ(write_proc_line(path("conn_ctx").c_str(), "501 %d %d %d", 1, 3, 100), 11);
  EXPECT_EQ(get("conn_ctx"), "501 1 3 100bcdef\n");
}

TEST_F(ProcfsTest, WriteLineNullFormatDoesNothing) {
  put("f", "keep");
  EXPECT_EQ(write_proc_line(path("f").c_str(), nullptr), 0);
  EXPECT_EQ(write_proc_line(path("absent").c_str(), nullptr), 0);
  EXPECT_EQ(get("f"), "keep");
}

TEST_F(ProcfsTest, WriteLineIsOneWriteCutAt511Bytes) {
  put("f", "");
  std::string big = pattern(700);
  {
    Recording rec;
    EXPECT_EQ(write_proc_line(path("f").c_str(), "%s", big.c_str()), 511);
  }
  EXPECT_EQ(g_write_sizes, std::vector<size_t>{511});
  EXPECT_EQ(get("f"), big.substr(0, 511));
}

TEST_F(ProcfsTest, WriteLineAddsNoNewline) {
  put("f", "");
  {
    Recording rec;
    EXPECT_EQ(write_proc_line(path("f").c_str(), "set-dscp-tagging %d", 0), 18);
  }
  EXPECT_EQ(g_write_sizes, std::vector<size_t>{18});
  EXPECT_EQ(get("f"), "set-dscp-tagging 0");
}

TEST_F(ProcfsTest, WriteLineReturnsWhatTheWriteReturned) {
  put("f", "");
  Recording rec(4);
  EXPECT_EQ(write_proc_line(path("f").c_str(), "%s", "abcdefgh"), 4);
}

// ---- write_proc_data ----------------------------------------------------

struct DataCase {
  int length;
  long cap;                          // per-write limit, -1 for none
  std::vector<size_t> write_sizes;   // sizes the helper asked to write
  int result;
};

class WriteData : public ProcfsTest, public ::testing::WithParamInterface<DataCase> {};

TEST_P(WriteData, PiecesOfAtMost128Bytes) {
  const DataCase &c = GetParam();
  put("f", "");
  std::string data = pattern(static_cast<size_t>(c.length));
  int result;
  {
    Recording rec(c.cap);
    result = write_proc_data(path("f").c_str(), data.data(), c.length);
  }
  EXPECT_EQ(result, c.result);
  EXPECT_EQ(g_write_sizes, c.write_sizes);
  EXPECT_EQ(get("f"), data.substr(0, static_cast<size_t>(c.result)));
}

INSTANTIATE_TEST_SUITE_P(
    Cases, WriteData,
    ::testing::Values(DataCase{300, -1, {128, 128, 44}, 300}, DataCase{128, -1, {128}, 128},
                      DataCase{129, -1, {128, 1}, 129}, DataCase{5, -1, {5}, 5}, DataCase{0, -1, {}, 0},
                      // Short writes: the next piece starts where the last one ended.
                      DataCase{300, 100, {128, 128, 100}, 300},
                      // A write that takes nothing ends the loop.
                      DataCase{300, 0, {128}, 0}));

TEST_F(ProcfsTest, WriteDataOnMissingPathFails) {
  EXPECT_EQ(write_proc_data(path("absent").c_str(), "x", 1), -1);
  struct stat st;
  EXPECT_EQ(stat(path("absent").c_str(), &st), -1);
}

// ---- read_proc_file -----------------------------------------------------

TEST_F(ProcfsTest, ReadsAFileWhoseSizeSaysZero) {
  // A FIFO, like a procfs file, reports size 0; the reader must not care.
  std::string content = pattern(300);
  ASSERT_EQ(mkfifo(path("fifo").c_str(), 0600), 0);
  std::string fifo = path("fifo");
  std::thread writer([&] {
    int fd = open(fifo.c_str(), O_WRONLY);
    if (fd < 0) return;
    for (size_t off = 0; off < content.size(); off += 100)
      syscall(SYS_write, fd, content.data() + off, 100);
    close(fd);
  });
  OwnedText data;
  int length = -5;
  int result = read_proc_file(fifo.c_str(), &data, &length);
  if (result != 0) close(open(fifo.c_str(), O_RDONLY));  // let the writer finish
  writer.join();
  EXPECT_EQ(result, 0);
  ASSERT_NE(data, nullptr);
  EXPECT_EQ(length, 300);
  EXPECT_EQ(std::string(data.get()), content);
}

TEST_F(ProcfsTest, ReadsA300ByteFileWhole) {
  std::string content = pattern(300);
  put("stats", content);
  OwnedText data;
  int length = 0;
  EXPECT_EQ(read_proc_file(path("stats").c_str(), &data, &length), 0);
  EXPECT_EQ(length, 300);
  EXPECT_EQ(std::string(data.get(), 300), content);
  EXPECT_EQ(data.get()[300], '\0');
}

TEST_F(ProcfsTest, ReadOfEmptyFileGivesNullText) {
  put("empty", "");
  OwnedText data = str_dup("old");
  int length = 7;
  EXPECT_EQ(read_proc_file(path("empty").c_str(), &data, &length), 0);
  EXPECT_EQ(data, nullptr);
  EXPECT_EQ(length, 0);
}

TEST_F(ProcfsTest, ReadOfMissingFileLeavesOutputsAlone) {
  OwnedText data = str_dup("old");
  int length = 7;
  EXPECT_EQ(read_proc_file(path("absent").c_str(), &data, &length), -1);
  EXPECT_STREQ(data.get(), "old");
  EXPECT_EQ(length, 7);
}

// ---- read_file_into -----------------------------------------------------

struct IntoCase {
  size_t file_bytes;  // SIZE_MAX: no file
  int size;
  int result;
  size_t text_length;
};

class ReadInto : public ProcfsTest, public ::testing::WithParamInterface<IntoCase> {};

TEST_P(ReadInto, TerminatesTheBuffer) {
  const IntoCase &c = GetParam();
  std::string content = pattern(c.file_bytes == SIZE_MAX ? 0 : c.file_bytes);
  if (c.file_bytes != SIZE_MAX) put("f", content);
  char buffer[64];
  memset(buffer, 'Z', sizeof buffer);
  EXPECT_EQ(read_file_into(path("f").c_str(), buffer, c.size), c.result);
  EXPECT_EQ(strlen(buffer), c.text_length);
  EXPECT_EQ(std::string(buffer), content.substr(0, c.text_length));
  EXPECT_EQ(buffer[c.size], 'Z');  // nothing past `size` is touched
}

INSTANTIATE_TEST_SUITE_P(Cases, ReadInto,
                         ::testing::Values(IntoCase{40, 16, 16, 15}, IntoCase{16, 16, 16, 15},
                                           IntoCase{15, 16, 15, 15}, IntoCase{5, 16, 5, 5},
                                           IntoCase{0, 16, 0, 0}, IntoCase{40, 1, 1, 0},
                                           IntoCase{SIZE_MAX, 16, -1, 0}));

// ---- find_record --------------------------------------------------------

struct RecordCase {
  const char *name;
  std::string content;
  const char *tag;
  const char *line;  // expected, null for none
};

class FindRecord : public ProcfsTest, public ::testing::WithParamInterface<RecordCase> {};

TEST_P(FindRecord, FirstLineBeginningWithTag) {
  const RecordCase &c = GetParam();
  put("ctrl", c.content);
  OwnedText line;
  EXPECT_EQ(find_record(path("ctrl").c_str(), c.tag, &line), 0);
  if (c.line)
    EXPECT_STREQ(line.get(), c.line);
  else
    EXPECT_EQ(line, nullptr);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, FindRecord,
    ::testing::Values(
        RecordCase{"BareTagIsARecord", "d:qnum:", "d:qnum:", "d:qnum:"},
        RecordCase{"FirstMatchWithNewline", "s:mode:gw\nd:qnum:8\nd:qnum:9\n", "d:qnum:", "d:qnum:8\n"},
        RecordCase{"NoTag", "s:mode:gw\nd:qlen:3\n", "d:qnum:", nullptr},
        RecordCase{"ShortLinesSkipped", "d:q\n\nd:qnum\nd:qnum:1\n", "d:qnum:", "d:qnum:1\n"},
        RecordCase{"TagMustStartTheLine", " d:qnum:1\nx d:qnum:2\n", "d:qnum:", nullptr},
        RecordCase{"CaseCounts", "D:QNUM:1\n", "d:qnum:", nullptr},
        RecordCase{"LastLineWithoutNewline", "a\nj:devs:[1,2]", "j:devs:", "j:devs:[1,2]"},
        RecordCase{"CrLfKept", "j:pfs:{}\r\n", "j:pfs:", "j:pfs:{}\r\n"},
        RecordCase{"EmptyFile", "", "d:qnum:", nullptr},
        RecordCase{"EmptyTagTakesFirstLine", "first\nsecond\n", "", "first\n"},
        RecordCase{"LongLineBeforeRecord", std::string(10000, 'x') + "\nu:block_conns:7\n", "u:block_conns:",
                   "u:block_conns:7\n"}),
    [](const ::testing::TestParamInfo<RecordCase> &p) { return std::string(p.param.name); });

TEST_F(ProcfsTest, FindRecordLongRecordWhole) {
  std::string value = "j:devs:" + pattern(5000) + "\n";
  put("dbdev", "d:x:1\n" + value);
  OwnedText line;
  EXPECT_EQ(find_record(path("dbdev").c_str(), "j:devs:", &line), 0);
  ASSERT_NE(line, nullptr);
  EXPECT_EQ(std::string(line.get()), value);
}

TEST_F(ProcfsTest, FindRecordLeavesLineAloneWhenMissing) {
  put("ctrl", "s:mode:gw\n");
  OwnedText line = str_dup("keep");
  EXPECT_EQ(find_record(path("ctrl").c_str(), "d:qnum:", &line), 0);
  EXPECT_STREQ(line.get(), "keep");
  EXPECT_EQ(find_record(path("absent").c_str(), "d:qnum:", &line), 1);
  EXPECT_STREQ(line.get(), "keep");
}

// ---- copy_file and file_size --------------------------------------------

TEST_F(ProcfsTest, CopyFileCountsAndTruncates) {
  std::string content = pattern(1300);
  put("src", content);
  put("dst", pattern(2000));
  {
    Recording rec;
    EXPECT_EQ(copy_file(path("dst").c_str(), path("src").c_str()), 1300);
  }
  EXPECT_EQ(g_write_sizes, (std::vector<size_t>{512, 512, 276}));
  EXPECT_EQ(get("dst"), content);
}

TEST_F(ProcfsTest, CopyFileCreatesDestination) {
  put("src", "abc");
  EXPECT_EQ(copy_file(path("new").c_str(), path("src").c_str()), 3);
  EXPECT_EQ(get("new"), "abc");
  put("empty", "");
  EXPECT_EQ(copy_file(path("new").c_str(), path("empty").c_str()), 0);
  EXPECT_EQ(get("new"), "");
}

TEST_F(ProcfsTest, CopyFileFailures) {
  put("src", "abc");
  put("dst", "old");
  EXPECT_EQ(copy_file(path("dst").c_str(), path("absent").c_str()), -1);
  EXPECT_EQ(get("dst"), "old");  // the destination is not opened when the source is missing
  EXPECT_EQ(copy_file(path("no/dir/dst").c_str(), path("src").c_str()), -2);
  {
    Recording rec(100);
    EXPECT_EQ(copy_file(path("dst").c_str(), path("src").c_str()), 3);
  }
  put("big", pattern(600));
  Recording rec(100);
  EXPECT_EQ(copy_file(path("dst").c_str(), path("big").c_str()), -1);  // a short write
}

TEST_F(ProcfsTest, FileSize) {
  put("f", pattern(300));
  put("empty", "");
  EXPECT_EQ(file_size(path("f").c_str()), 300);
  EXPECT_EQ(file_size(path("empty").c_str()), 0);
  EXPECT_EQ(file_size(path("absent").c_str()), 0);
}

// ---- engine and service state, typed readers (through the sysroot) ------

TEST_F(ProcfsTest, EngineLoadedNeedsADirectory) {
  use_sysroot();
  EXPECT_EQ(engine_loaded(), 0);
  put("proc/vek", "not a directory");
  EXPECT_EQ(engine_loaded(), 0);
  ASSERT_EQ(remove(path("proc/vek").c_str()), 0);
  ASSERT_EQ(mkdir(path("proc/vek").c_str(), 0755), 0);
  EXPECT_EQ(engine_loaded(), 1);
}

TEST_F(ProcfsTest, ServiceAlive) {
  use_sysroot();
  put("proc/1/comm", "init\n");
  put("proc/57/comm", "vek_servic\n");
  EXPECT_EQ(service_alive(), 0);
  put("proc/812/comm", "vek_service\n");
  EXPECT_EQ(service_alive(), 1);
}

TEST_F(ProcfsTest, ReadQueueNumber) {
  use_sysroot();
  int count = -7;
  EXPECT_EQ(read_queue_number(&count), 1);  // no file
  put("proc/vek/qos_ctrl", "s:mode:x\n");
  EXPECT_EQ(read_queue_number(&count), 1);  // no record
  put("proc/vek/qos_ctrl", "d:qnum:x\n");
  EXPECT_EQ(read_queue_number(&count), 1);  // does not parse
  EXPECT_EQ(count, -7);
  put("proc/vek/qos_ctrl", "s:mode:x\nd:qnum:8\n");
  EXPECT_EQ(read_queue_number(&count), 0);
  EXPECT_EQ(count, 8);
}

TEST_F(ProcfsTest, ReadTaggedTexts) {
  use_sysroot();
  OwnedText rate = str_dup("old");
  OwnedText devs = str_dup("old");
  EXPECT_EQ(read_hyqos_rate(&rate), 1);
  EXPECT_EQ(read_dbdev(&devs), 1);
  put("proc/vek/qoe_config", "d:x:1\n");
  put("proc/vek/dbdev", "j:dev:[]\n");
  EXPECT_EQ(read_hyqos_rate(&rate), 1);
  EXPECT_EQ(read_dbdev(&devs), 1);
  EXPECT_STREQ(rate.get(), "old");
  EXPECT_STREQ(devs.get(), "old");

  put("proc/vek/qoe_config", "d:x:1\nj:hyqos_rate:  {\"up\":[1,2]} \r\n");
  put("proc/vek/dbdev", "j:devs:[{\"mac\":\"aa\"}]\n");
  EXPECT_EQ(read_hyqos_rate(&rate), 0);
  EXPECT_STREQ(rate.get(), "{\"up\":[1,2]}");
  EXPECT_EQ(read_dbdev(&devs), 0);
  EXPECT_STREQ(devs.get(), "[{\"mac\":\"aa\"}]");

  put("proc/vek/dbdev", "j:devs:\n");
  EXPECT_EQ(read_dbdev(&devs), 0);
  EXPECT_STREQ(devs.get(), "");
}

TEST_F(ProcfsTest, SysrootAppliesToEveryHelper) {
  use_sysroot();
  put("proc/vek/conn_ctx", "........");
  EXPECT_EQ(write_proc_line("/proc/vek/conn_ctx", "%s", "ab"), 2);
  EXPECT_EQ(write_proc_data("/proc/vek/conn_ctx", "cd", 2), 2);
  EXPECT_EQ(get("proc/vek/conn_ctx"), "cd......");
  OwnedText data;
  int length = 0;
  EXPECT_EQ(read_proc_file("/proc/vek/conn_ctx", &data, &length), 0);
  EXPECT_STREQ(data.get(), "cd......");
  char small[8];
  EXPECT_EQ(read_file_into("/proc/vek/conn_ctx", small, sizeof small), 8);
  EXPECT_STREQ(small, "cd.....");
  EXPECT_EQ(file_size("/proc/vek/conn_ctx"), 8);
  EXPECT_EQ(copy_file("/tmp-copy", "/proc/vek/conn_ctx"), 8);
  EXPECT_EQ(get("tmp-copy"), "cd......");
}

}  // namespace
