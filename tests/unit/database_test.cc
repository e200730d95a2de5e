#include "db/database.h"

#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <string>

#include "scratch_sysroot.h"
#include "sys/replace.h"

namespace {

TEST(DbInfo, ParsedOnlyWhenAllThreeFieldsConvert) {
  const struct { const char *text; bool valid; db_info info; } cases[] = {
      {"writable: 0\nsize: -5\nepoch: 18446744073709551615", true, {0, -5, 18446744073709551615ULL}},
      {"writable:1 size:7 epoch:9\nextra: 4\n", true, {1, 7, 9}},  // line ends match any space, or none
      {"writable: 1\nsize: 2\n", false, {}},
      {"writable: 1\nsize: x\nepoch: 3\n", false, {}},
      {"Writable: 1\nsize: 2\nepoch: 3\n", false, {}},
  };
  for (const auto &c : cases) {
    db_info info = {-9, -9, 99};
    EXPECT_EQ(db_info_parse(c.text, &info), c.valid) << c.text;
    const db_info expected = c.valid ? c.info : db_info{-9, -9, 99};  // untouched when invalid
    EXPECT_EQ(std::to_string(info.writable) + " " + std::to_string(info.size) + " " + std::to_string(info.epoch),
              std::to_string(expected.writable) + " " + std::to_string(expected.size) + " " + std::to_string(expected.epoch));
  }
  EXPECT_FALSE(db_info_parse(nullptr, nullptr));
}

// The handshake against plain files: the clean command, the 4-byte size and
// the image land in them; a plain info file never changes, so the import is
// never confirmed and ends in 71.
class ImportTest : public ScratchSysroot {
 protected:
  void SetUp() override {
    ScratchSysroot::SetUp();
    for (const char *f : {"clean", "size", "import"}) put(std::string("/proc/kmod_xdn/grpxdb_") + f, "");
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
  EXPECT_EQ(get("/proc/kmod_xdn/grpxdb_clean"), "");
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

// A kernel that never gets ready after the clean: no size is announced. The
// image may be as large as a signed 32-bit size can announce.
TEST_F(ImportTest, GivesUpOnABusyKernel) {
  put("/new.xdb", "");
  ASSERT_EQ(truncate((root_ + "/new.xdb").c_str(), 2147483647LL), 0);
  for (const char *info : {"writable: 1\nsize: 5\nepoch: 0\n", "writable: 1\nsize: 0\nepoch: 1\n"}) {
    put("/proc/kmod_xdn/grpxdb_info", info);
    EXPECT_EQ(db_import(kGroupDatabase, "/new.xdb"), 71) << info;
    EXPECT_EQ(get("/proc/kmod_xdn/grpxdb_size"), "") << info;
  }
}

}  // namespace
