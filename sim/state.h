// The scenario knobs and the simulated process table, all kept as plain files
// under R/.sim so that every command edits them directly and the daemon sees
// the change on its next request.
#pragma once

#include <string>
#include <vector>

#include "common.h"

// The programs whose exit status a scenario sets.
extern const char *const kPrograms[];
bool is_program(const std::string &name);
int program_status(const SimRoot &r, const std::string &program);  // 0 unless set
std::string program_stderr(const SimRoot &r, const std::string &program);
bool set_program_status(const SimRoot &r, const std::string &program, int status,
                        const std::string *stderr_text);

struct Process {
  long pid;
  std::string name;
};
// Running simulated processes, by ascending pid.
std::vector<Process> process_list(const SimRoot &r);
bool process_running(const SimRoot &r, const std::string &name);
// Starts a process named `name`: with pid 0 the usual pid of that program (or
// the first free one from 2000); returns its pid, or -1 when the pid is taken.
long process_start(const SimRoot &r, const std::string &name, long pid);
// Ends every process of that name; returns how many there were.
int process_stop(const SimRoot &r, const std::string &name);

// Service behaviour: "normal", "silent", "slow", "pieces", "close", "reset"
// or "down", with an optional number of milliseconds (slow: the delay;
// pieces: the pause after the first piece).
struct ServiceMode {
  std::string mode = "normal";
  long ms = -1;  // -1: the mode's default
};
ServiceMode service_mode(const SimRoot &r);
bool is_service_mode(const std::string &mode);
std::string service_reply_path(const SimRoot &r, const std::string &method);

// How long each write of a database image or a rule set is held before the
// engine takes it (`vek-sim slow MS`; 0: not at all). Reset clears it.
std::string slow_path(const SimRoot &r);
long import_delay_ms(const SimRoot &r);

// What the simulated `date +%z` prints: the offset and a line end, then
// `flood_mib` MiB of line ends; or, `forever`, the offset line again and again
// (as `yes OFFSET` would) until its reader goes away.
struct DateOutput {
  std::string offset = "+0800";
  long flood_mib = 0;
  bool forever = false;
};
DateOutput date_output(const SimRoot &r);

// A key of vek.ini, as the installation wrote it ("" when absent).
std::string ini_value(const SimRoot &r, const std::string &section, const std::string &key);
std::string ini_path(const SimRoot &r);  // host path of the installation's vek.ini
