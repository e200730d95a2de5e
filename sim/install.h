// Preparing a sysroot: the gateway's installation (vek.ini, data files, the
// engine's programs) and the engine's state as it is right after boot.
#pragma once

#include <string>

#include "common.h"

// Lays out the installation: files that exist are kept (a scenario may have
// edited them), the program wrappers are always rewritten so that they run
// `sim_exe` for this root. Lays the boot state too when there is none yet.
bool install_sysroot(const SimRoot &r, const std::string &sim_exe, std::string *error);

// Puts the simulated kernel, the processes and every scenario knob back to
// their state after boot. The journal is kept.
bool reset_state(const SimRoot &r, std::string *error);

// Lays the /proc/vek tree alone, as loading the engine module does.
bool load_engine_module(const SimRoot &r);
