// The engine's three signature databases and their import handshake with the
// kernel modules: clean, wait until empty and writable, announce the size,
// stream the image, verify.
#pragma once

#include <cstdint>

class Replacement;

struct Database {
  const char *file;         // default file in the data directory
  const char *clean_path;   // control files of the module
  const char *info_path;
  const char *size_path;
  const char *import_path;
};

extern const Database kGroupDatabase;  // vek.xdb, kmod_xdn grpxdb
extern const Database kAppDatabase;    // app.xdb, kmod_xdn sidxdb
extern const Database kRuleDatabase;   // vek.xr,  kmod_xapp xr

// The kernel's account of a database: "writable: %d\nsize: %d\nepoch: %llu".
struct db_info {
  int32_t writable;
  int32_t size;
  unsigned long long epoch;
};

// true when all three fields convert; `info` is then set.
bool db_info_parse(const char *text, db_info *info);
// Reads and parses the info control file. true when it was read and valid.
bool db_info_read(const Database &db, db_info *info);

// A file of the data directory `var` (a database's default file, app.id):
// "<var>/<name>", cut to 300 bytes and to `size`.
void data_file_path(const char *var, const char *name, char *out, unsigned int size);

// Runs the module's clean command through the shell; its status is ignored.
void db_clean(const Database &db);

// The import handshake; the caller holds the engine lock (sys/lock.h). The
// image is read once, as a regular file (open_source), and every block read
// goes to the engine and, when `keep` is given, to it as well (a failed
// write there does not stop the import). 0 on success, with the bytes
// imported in `imported` (when given); 4 with no path; 20 for a file that is
// missing, unreadable, empty or larger than the kernel's 32-bit size can
// announce (nothing is written to the engine then); 71 when the kernel does
// not get ready or does not confirm the image.
int db_import(const Database &db, const char *path, Replacement *keep = nullptr,
              int32_t *imported = nullptr);
// Imports the default file from the data directory `var` (lock held).
int db_reload_default(const Database &db, const char *var);
