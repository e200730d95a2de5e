#include "db/database.h"

#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <sstream>
#include <string>

#include "scratch_sysroot.h"
#include "sys/replace.h"

TEST(DbInfoParser, ValidOnlyWhenAllThreeFieldsConvert) {
  const struct {
    const char *text;
    bool valid;
    db_info info;
  } cases[] = {
      {"writable: 1\nsize: 0\nepoch: 0\n", true, {1, 0, 0}},
      {"writable: 0\nsize: 1536\nepoch: 1700000000\n", true, {0, 1536, 1700000000ULL}},
      {"writable: 0\nsize: -5\nepoch: 18446744073709551615", true, {0, -5, 18446744073709551615ULL}},
      // The line ends of the format match any white space, or none.
      {"writable: 0 size: 7 epoch: 9", true, {0, 7, 9}},
      {"writable:0\nsize:7\nepoch:9", true, {0, 7, 9}},
      // Anything after the epoch is not looked at.
      {"writable: 1\nsize: 2\nepoch: 3\nextra: 4\n", true, {1, 2, 3}},
      {"writable: 1\nsize: 2\n", false, {}},
      {"writable: 1\nsize: x\nepoch: 3\n", false, {}},
      {"Writable: 1\nsize: 2\nepoch: 3\n", false, {}},
      {"size: 2\nwritable: 1\nepoch: 3\n", false, {}},
      {"writable: \nsize: 2\nepoch: 3\n", false, {}},
      {"", false, {}},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(c.text);
    db_info info = {-9, -9, 99};
    EXPECT_EQ(db_info_parse(c.text, &info), c.valid);
    const db_info expected = c.valid ? c.info : db_info{-9, -9, 99};  // untouched when invalid
    EXPECT_EQ(info.writable, expected.writable);
    EXPECT_EQ(info.size, expected.size);
    EXPECT_EQ(info.epoch, expected.epoch);
  }
  EXPECT_FALSE(db_info_parse(nullptr, nullptr));
}

// The handshake against plain files: the clean command, the 4-byte size and
// the image stream land in them; since a plain info file never changes, the
// import cannot be confirmed and ends in 71.
namespace {

class ImportTest : public ScratchSysroot {
 protected:
  void SetUp() override {
    ScratchSysroot::SetUp();
    mkdir((root_ + "/proc").c_str(), 0755);
    mkdir((root_ + "/proc/kmod_xdn").c_str(), 0755);
    for (const char *f : {"clean", "size", "import"}) put(std::string("/proc/kmod_xdn/grpxdb_") + f, "");
  }
  void put(const std::string &path, const std::string &content) const { std::ofstream(root_ + path) << content; }
  std::string get(const std::string &path) const {
    std::ifstream in(root_ + path);
    std::ostringstream out;
    out << in.rdbuf();
    return in ? out.str() : "<missing>";
  }
};

// Missing, empty, no regular file, or more than a signed 32-bit size can
// announce (a sparse 2 GiB file): 20 at once, and the kernel is not asked.
TEST_F(ImportTest, FailsBeforeTheKernelWithoutAFile) {
  put("/empty.xdb", "");
  ASSERT_EQ(mkfifo((root_ + "/fifo.xdb").c_str(), 0600), 0);
  put("/huge.xdb", "");
  ASSERT_EQ(truncate((root_ + "/huge.xdb").c_str(), 2147483648LL), 0);
  EXPECT_EQ(db_import(kGroupDatabase, nullptr), 4);
  for (const char *path : {"/none.xdb", "/empty.xdb", "/fifo.xdb", "/proc", "/huge.xdb"})
    EXPECT_EQ(db_import(kGroupDatabase, path), 20) << path;
  EXPECT_EQ(get("/proc/kmod_xdn/grpxdb_clean"), "");  // the kernel was not asked
}

TEST_F(ImportTest, StreamsTheImageAfterTheSize) {
  std::string image;
  for (int i = 0; i < 1300; i++) image += static_cast<char>(i * 31 + 7);
  put("/new.xdb", image);
  put("/proc/kmod_xdn/grpxdb_info", "writable: 1\nsize: 0\nepoch: 0\n");
  Replacement kept("/kept.xdb");
  EXPECT_EQ(db_import(kGroupDatabase, "/new.xdb", &kept), 71);
  EXPECT_EQ(get("/proc/kmod_xdn/grpxdb_clean"), "1\n");
  EXPECT_EQ(get("/proc/kmod_xdn/grpxdb_size"), std::string("\x14\x05\x00\x00", 4));  // 1300, native order
  EXPECT_EQ(get("/proc/kmod_xdn/grpxdb_import"), image);
  EXPECT_TRUE(kept.commit());  // the same blocks went to the file kept
  EXPECT_EQ(get("/kept.xdb"), image);
  put("/one.xdb", "1");  // the smallest image is one byte
  EXPECT_EQ(db_import(kGroupDatabase, "/one.xdb"), 71);
  EXPECT_EQ(get("/proc/kmod_xdn/grpxdb_size"), std::string("\x01\x00\x00\x00", 4));
}

TEST_F(ImportTest, GivesUpAfterTenLooksAtABusyKernel) {
  put("/new.xdb", "image");
  const char *const busy[] = {"writable: 0\nsize: 0\nepoch: 0\n", "writable: 1\nsize: 5\nepoch: 0\n",
                              "writable: 1\nsize: 0\nepoch: 1\n", "garbage", nullptr};
  for (const char *const *info = busy; *info; info++) {
    put("/proc/kmod_xdn/grpxdb_info", *info);
    auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(db_import(kGroupDatabase, "/new.xdb"), 71) << *info;
    auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start).count();
    EXPECT_GE(ms, 1000) << *info;
    EXPECT_LT(ms, 3000) << *info;
    EXPECT_EQ(get("/proc/kmod_xdn/grpxdb_size"), "") << *info;
  }
}

}  // namespace
