// app.id, the application-to-category file, and the database information
// record: any bytes. The table keeps categories of at most 127 for ids below
// 65536 and counts only the lines it took; a parsed information record is
// the three numbers of its text, each held to the gateway's 32 bits.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "db/appid.h"
#include "db/database.h"
#include "fuzz_common.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  static std::unique_ptr<app_c6y_table> table(new app_c6y_table);
  FILE *file = fmemopen(const_cast<uint8_t *>(data), size, "rb");
  if (!file) return 0;
  memset(table.get(), 0, sizeof *table);
  app_c6y_parse(table.get(), file);
  fclose(file);
  int named = 0;
  for (int id = 0; id < APP_ID_COUNT; id++) {
    if (table->c6y[id] > APP_C6Y_MAX) abort();
    if (table->c6y[id]) named++;
    if (table->c6y[id] && id > table->max_app_id) abort();
  }
  if (table->current_c6y < 0 || table->current_c6y > APP_C6Y_MAX) abort();
  if (table->num_app_id < named) abort();

  std::string text(reinterpret_cast<const char *>(data), size);
  db_info info;
  memset(&info, 0, sizeof info);
  db_info_parse(text.c_str(), &info);
  return 0;
}
