// The gateway programs the tool runs (vekctl, veklog, dt_srv, killall, date):
// each records its arguments in the journal, does what the program does to
// the simulated gateway, and exits with the status the scenario set.
#pragma once

#include <string>
#include <vector>

#include "common.h"

int run_program(const SimRoot &r, const std::string &name, const std::vector<std::string> &args);
