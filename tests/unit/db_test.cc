// The application-id file, the databases' info record, and the checks an
// import makes before the kernel is asked (db.t shows the handshake itself).
#include <memory>

#include "db/appid.h"
#include "db/database.h"
#include "scratch_sysroot.h"

namespace {

TEST(AppId, TakesHeadersAndApplicationLines) {
  const struct { std::string text, summary; } cases[] = {  // "id=category ...", then the counts
      // Lines before the first header count with category 0; a later line for an id wins.
      {"5:early\n#2,0,x\n6:a\n#3,0,b\n6:b\n", "6=3 max 6 num 3 c6y 3"},
      // 127 is the last category; 128 and negative ones are no headers, nor one short of a field.
      {"#127,0,top\n1:a\n#128,0,no\n2:b\n#-1,0,no\n#4,0,\n#4,x,y\n3:c\n", "1=127 2=127 3=127 max 3 num 3 c6y 127"},
      // Ids up to 65535; others, words and blank lines skipped; no colon needed; CR LF and no last line end.
      {"#6,0,a\r\n65535:x\n65536:y\n-4:z\nhttp:80\n\n0:zero\n43 apps", "0=6 43=6 65535=6 max 65535 num 3 c6y 6"},
      {"#5,0,long\n" + std::string(100000, ' ') + "\n77:" + std::string(100000, 'x') + "\n", "77=5 max 77 num 1 c6y 5"},
      {"", "max 0 num 0 c6y 0"},
  };
  for (const auto &c : cases) {
    std::unique_ptr<app_c6y_table> table(new app_c6y_table());
    for (const std::string &text : {std::string("#9,0,a\n1:x\n"), c.text}) {  // parsing clears the table first
      FILE *file = fmemopen(const_cast<char *>(text.data()), text.size(), "r");
      app_c6y_parse(table.get(), file);
      fclose(file);
    }
    std::string out;
    for (int id = 0; id < APP_ID_COUNT; id++)
      if (table->c6y[id]) out += std::to_string(id) + "=" + std::to_string(table->c6y[id]) + " ";
    EXPECT_EQ(out + "max " + std::to_string(table->max_app_id) + " num " + std::to_string(table->num_app_id) +
                  " c6y " + std::to_string(table->current_c6y), c.summary) << c.text.substr(0, 60);
  }
}

TEST(DbInfo, ParsedOnlyWhenAllThreeFieldsConvert) {
  // Line ends match any space, or none; the record is untouched when invalid.
  for (auto [text, info] : {std::pair<const char *, const char *>{"writable:1 size:-7 epoch:9\nextra: 4\n", "1 -7 9"},
                            {"writable: 1\nsize: 2\n", "-9 -9 99"}, {"Writable: 1\nsize: 2\nepoch: 3\n", "-9 -9 99"}}) {
    db_info parsed = {-9, -9, 99};
    EXPECT_EQ(db_info_parse(text, &parsed), info[0] != '-') << text;
    EXPECT_EQ(std::to_string(parsed.writable) + " " + std::to_string(parsed.size) + " " + std::to_string(parsed.epoch), info);
  }
  EXPECT_FALSE(db_info_parse(nullptr, nullptr));
}

// No file, or more than a signed 32-bit size can announce: 4 or 20 at once,
// and the kernel is not asked. Plain files stand in for the kernel's: one not
// ready after the clean is given up on (71) before any size is announced.
class ImportTest : public ScratchSysroot {};
TEST_F(ImportTest, FailsBeforeTheKernelWithoutAFile) {
  put("/proc/kmod_xdn/grpxdb_size", "");
  for (auto [path, size] : {std::pair<const char *, off_t>{"/huge.xdb", 2147483648LL}, {"/most.xdb", 2147483647LL}})
    put(path, ""), truncate((root_ + path).c_str(), size);
  const struct { const char *path, *info; int result; const char *clean; } cases[] = {
      {nullptr, "", 4, "<missing>"}, {"/none.xdb", "", 20, "<missing>"}, {"/proc", "", 20, "<missing>"},
      {"/huge.xdb", "", 20, "<missing>"},  // an empty file or a FIFO: db.t, integrity-files.t
      {"/most.xdb", "writable: 1\nsize: 5\nepoch: 0\n", 71, "1\n"},
      {"/most.xdb", "writable: 1\nsize: 0\nepoch: 1\n", 71, "1\n"}};
  for (const auto &c : cases) {
    put("/proc/kmod_xdn/grpxdb_info", c.info);
    EXPECT_EQ(db_import(kGroupDatabase, c.path), c.result) << c.path;
    EXPECT_EQ(get("/proc/kmod_xdn/grpxdb_clean") + get("/proc/kmod_xdn/grpxdb_size"), c.clean) << c.path;
    std::filesystem::remove(root_ + "/proc/kmod_xdn/grpxdb_clean");
  }
}

}  // namespace
