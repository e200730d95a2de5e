// The simulated engine: what each control file holds after the modules have
// loaded, and how the engine answers each verb written to one of them.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "common.h"
#include "engine/interface.h"

// One signature database of the kmod_xdn / kmod_xapp modules.
struct Database {
  const char *name;  // "grpxdb": its word in vek-sim's commands and its state files
  const char *file;  // "vek.xdb": its file in the data directory
  const char *clean, *info, *size, *import;  // its control files
};
extern const Database kDatabases[3];
const Database *find_database(const std::string &name);

// Every control file the engine offers, with the content it has after load.
struct ControlFile {
  std::string path;
  std::string content;
};
std::vector<ControlFile> engine_control_files();

// The info record of a database, as the module prints it.
std::string db_info_text(int writable, long size, unsigned long long epoch);
// The epoch the module gives the image accepted after `count` earlier ones.
unsigned long long db_epoch(long count);

// Where the module keeps its transfer state (under R/.sim/kernel).
std::string db_state_path(const SimRoot &r, const Database &db, const char *what);

// Applies one write() call to the control file at the gateway path `path`.
// Returns the byte count to report to the writer, or a negative errno when
// the engine refuses the verb (the content then stays as it was).
long engine_write(const SimRoot &r, const std::string &path, const char *data, size_t len);

// Normalises a MAC text the way the engine stores it ("aa:bb:cc:dd:ee:ff");
// false when it is not twelve hex digits with optional ':'/'-' separators.
bool normalize_mac(const std::string &text, std::string *out);
