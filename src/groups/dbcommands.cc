#include "groups/dbcommands.h"

#include <cstdio>

#include "context.h"
#include "groups/frame.h"
#include "result.h"
#include "sys/lock.h"
#include "sys/replace.h"

int db_get_command(const Database &db) {
  db_info info;
  if (!db_info_read(db, &info)) {
    report_result(RESULT_ENGINE_INFO, nullptr);
    return RESULT_ENGINE_INFO;
  }
  printf("{\"return\":0,\"info\":{\"writable\":%d,\"size\":%d,\"epoch\":%llu}}\n", info.writable,
         info.size, info.epoch);
  return 0;
}

int db_load_command(const Database &db, const char *var, const char *file) {
  char default_path[300];
  data_file_path(var, db.file, default_path, sizeof default_path);
  // The whole load, fall-back or new default included, is one change of
  // the engine; a caller that cannot have it finds the engine not ready.
  EngineLock lock;
  bool locked = lock.take(g_context.config.run);
  if (!file) {
    if (locked) db_import(db, default_path);
    return 0;
  }
  if (!locked) return RESULT_ENGINE_INFO;
  char path[256];
  snprintf(path, sizeof path, "%s", file);
  // The image is read once: what the kernel confirmed is what becomes the
  // default, and the old default stays whole until the new one is complete
  // on disk.
  Replacement next_default(default_path);
  int32_t imported = 0;
  int result = db_import(db, path, &next_default, &imported);
  if (result != RESULT_OK) {
    // The kernel gets the saved database back.
    db_import(db, default_path);
    return result;
  }
  if (!next_default.commit()) return RESULT_COPY_FAILED;
  report_result(imported, nullptr);
  return 0;
}

int db_clear_command(const Database &db) {
  db_clean(db);
  return report_ok();
}
