// The commands that the xdn and xapp groups share for each signature
// database: get (the kernel's info record), load (import, fall back, keep the
// new file as the default) and clear.
#pragma once

#include "db/database.h"

// Prints the info line, or reports 71. Returns 0 or 71.
int db_get_command(const Database &db);
// Imports `file` (or the default file of the data directory `var` when
// null), holding the engine lock. A failed import reloads the default file
// and returns the import's code; a good one replaces the default file with
// the image imported and reports its bytes. 21 when that copy fails; 71 when
// the lock stays busy.
int db_load_command(const Database &db, const char *var, const char *file);
// Runs the clean command and reports 0.
int db_clear_command(const Database &db);
