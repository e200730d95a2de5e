#include "db/database.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "engine/interface.h"
#include "result.h"
#include "sys/handles.h"
#include "sys/procfs.h"
#include "sys/replace.h"
#include "sys/scan.h"
#include "sys/shell.h"
#include "sys/source.h"
#include "sys/sysroot.h"

const Database kGroupDatabase = {kGroupDatabaseFile, kGrpxdbClean, kGrpxdbInfo, kGrpxdbSize, kGrpxdbImport};
const Database kAppDatabase = {kAppDatabaseFile, kSidxdbClean, kSidxdbInfo, kSidxdbSize, kSidxdbImport};
const Database kRuleDatabase = {kRuleDatabaseFile, kXrClean, kXrInfo, kXrSize, kXrImport};

namespace {

// The kernel needs a moment after a clean; it is asked ten times, 100 ms apart.
const int kReadyAttempts = 10;
const useconds_t kReadyPause = 100000;

// Streams `size` bytes of the image to the import file, one write per
// block of at most 512 bytes, stopping at the first the kernel refuses, and
// hands the same blocks to `keep`. The bytes the kernel took.
long long stream_image(const char *import_path, int in, long long size, Replacement *keep) {
  Fd out(open(SysPath(import_path), O_WRONLY | O_NONBLOCK | O_CLOEXEC));
  if (!out.ok()) return 0;
  long long taken = read_blocks(in, size, [&](const char *block, size_t count) {
    if (write(out.get(), block, count) != static_cast<ssize_t>(count)) return false;
    if (keep) keep->write(block, count);
    return true;
  });
  return taken < 0 ? 0 : taken;
}

bool kernel_ready(const Database &db) {
  db_info info;
  return db_info_read(db, &info) && info.writable == 1 && info.size == 0 && info.epoch == 0;
}

}  // namespace

bool db_info_parse(const char *text, db_info *info) {
  if (!text) return false;
  db_info parsed = {0, 0, 0};
  if (scan32(text, "writable: %d\nsize: %d\nepoch: %llu", &parsed.writable, &parsed.size,
             &parsed.epoch) != 3)
    return false;
  if (info) *info = parsed;
  return true;
}

bool db_info_read(const Database &db, db_info *info) {
  OwnedText text;
  if (read_proc_file(db.info_path, &text, nullptr) != 0) return false;
  return db_info_parse(text.get(), info);
}

void data_file_path(const char *var, const char *name, char *out, unsigned int size) {
  snprintf(out, size < 300 ? size : 300, "%s/%s", var, name);
}

void db_clean(const Database &db) {
  char target[SYSROOT_PATH_MAX + 8];
  run_command("echo \"1\" > %s", shell_path(target, sizeof target, db.clean_path));
}

int db_import(const Database &db, const char *path, Replacement *keep, int32_t *imported) {
  if (!path) return RESULT_NO_FILE;
  long long size = 0;
  Fd in(open_source(path, &size));
  // The size goes to the kernel as a signed 32-bit number: a larger image
  // would be announced as a fraction of itself.
  if (!in.ok() || size < 1 || size > INT32_MAX) return RESULT_FILE_MISSING;

  db_clean(db);
  int attempt = 0;
  while (!kernel_ready(db)) {
    usleep(kReadyPause);
    if (++attempt == kReadyAttempts) return RESULT_ENGINE_INFO;
  }

  // The size goes as four raw bytes in the machine's order, not as text.
  int32_t announced = static_cast<int32_t>(size);
  write_proc_data(db.size_path, &announced, sizeof announced);
  long long taken = stream_image(db.import_path, in.get(), size, keep);

  db_info info;
  if (!db_info_read(db, &info) || info.writable != 0 || info.size != announced || info.epoch == 0)
    return RESULT_ENGINE_INFO;
  if (imported) *imported = static_cast<int32_t>(taken);
  return RESULT_OK;
}

int db_reload_default(const Database &db, const char *var) {
  char default_path[300];
  data_file_path(var, db.file, default_path, sizeof default_path);
  return db_import(db, default_path);
}
