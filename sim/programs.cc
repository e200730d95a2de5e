#include "programs.h"

#include <unistd.h>

#include <cstdio>
#include <cstring>

#include "engine/interface.h"
#include "install.h"
#include "state.h"

namespace {

const char *const kTopology =
    "{\"bands\":[{\"band\":\"2.4G\",\"channel\":6},{\"band\":\"5G\",\"channel\":36}],"
    "\"stas\":[{\"mac\":\"00:11:22:33:44:55\",\"band\":\"5G\",\"rssi\":-48},"
    "{\"mac\":\"66:77:88:99:aa:bb\",\"band\":\"2.4G\",\"rssi\":-61}]}\n";

// `vekctl vek on [--wan IF] [--lan IF]` loads the engine when it is not
// loaded, hands it the interfaces and starts the service; `vekctl vek off`
// stops the service (the module stays loaded).
void vekctl(const SimRoot &r, const std::vector<std::string> &args) {
  if (args.size() < 2 || args[0] != "vek") return;
  if (args[1] == "on") {
    if (!path_exists(r.backing(kEngineDir))) load_engine_module(r);
    for (size_t i = 2; i + 1 < args.size(); i++) {
      if (args[i] == "--wan") write_file(r.backing(kMalnetUp), args[i + 1] + "\n");
      if (args[i] == "--lan") write_file(r.backing(kMalnetDw), args[i + 1] + "\n");
    }
    if (!process_running(r, kServiceName)) process_start(r, kServiceName, 0);
  } else if (args[1] == "off") {
    process_stop(r, kServiceName);
  }
}

// The topology daemon: registers itself and writes its topology file when
// there is none yet.
void dt_srv(const SimRoot &r) {
  if (!process_running(r, kTopologyDaemon)) process_start(r, kTopologyDaemon, 0);
  std::string topo = r.host(kTopologyFile);
  if (!path_exists(topo)) write_file(topo, kTopology);
}

// `date +%z`: the scenario's offset line, then its flood. A write that fails
// (the reader went away) ends the output, as it ends `yes`.
void date_offset(const SimRoot &r) {
  DateOutput out = date_output(r);
  std::string line = out.offset + "\n";
  if (out.forever) {
    while (fputs(line.c_str(), stdout) >= 0) {
    }
    return;
  }
  fputs(line.c_str(), stdout);
  const std::string mib(1 << 20, '\n');
  for (long i = 0; i < out.flood_mib; i++)
    if (fwrite(mib.data(), 1, mib.size(), stdout) != mib.size()) return;
}

void killall(const SimRoot &r, const std::vector<std::string> &args) {
  for (const std::string &name : args)
    if (!name.empty() && name[0] != '-') process_stop(r, name);
}

}  // namespace

int run_program(const SimRoot &r, const std::string &name, const std::vector<std::string> &args) {
  std::string line = "run " + name;
  for (const std::string &a : args) line += " " + quote_word(r.hide_root(a));
  r.journal(line);
  int status = program_status(r, name);
  std::string err = program_stderr(r, name);
  if (!err.empty()) {
    if (err.back() != '\n') err += '\n';
    fputs(err.c_str(), stderr);
  }
  if (status == 0) {
    if (name == kControlProgram) vekctl(r, args);
    if (name == kTopologyDaemon) dt_srv(r);
    if (name == "killall") killall(r, args);
    if (name == "date") {
      if (args.size() == 1 && args[0] == "+%z") {
        date_offset(r);
      } else {
        // Anything else is the system's date.
        fflush(stdout);
        std::vector<char *> argv;
        std::string prog = "date";
        argv.push_back(&prog[0]);
        std::vector<std::string> copy = args;
        for (std::string &a : copy) argv.push_back(&a[0]);
        argv.push_back(nullptr);
        execv("/bin/date", argv.data());
        return 127;
      }
    }
  }
  fflush(stdout);
  return status;
}
