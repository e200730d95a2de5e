#include "state.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "engine/interface.h"

const char *const kPrograms[] = {kControlProgram, kLogProgram, kTopologyDaemon, "killall", "date", nullptr};

bool is_program(const std::string &name) {
  for (const char *const *p = kPrograms; *p; p++)
    if (name == *p) return true;
  return false;
}

int program_status(const SimRoot &r, const std::string &program) {
  std::string text;
  long status = 0;
  if (read_file(r.sim() + "/exit/" + program, &text) && parse_int(trim(text), &status))
    return static_cast<int>(status);
  return 0;
}

std::string program_stderr(const SimRoot &r, const std::string &program) {
  std::string text;
  read_file(r.sim() + "/stderr/" + program, &text);
  return text;
}

bool set_program_status(const SimRoot &r, const std::string &program, int status,
                        const std::string *stderr_text) {
  if (!write_file(r.sim() + "/exit/" + program, strprintf("%d\n", status))) return false;
  std::string err_path = r.sim() + "/stderr/" + program;
  if (stderr_text) return write_file(err_path, *stderr_text);
  return remove_tree(err_path);
}

static bool all_digits(const std::string &s) {
  if (s.empty()) return false;
  for (char c : s)
    if (c < '0' || c > '9') return false;
  return true;
}

std::vector<Process> process_list(const SimRoot &r) {
  std::vector<Process> procs;
  std::string proc = r.backing("/proc");
  for (const std::string &name : list_dir(proc)) {
    if (!all_digits(name)) continue;
    std::string comm;
    if (!read_file(proc + "/" + name + "/comm", &comm)) continue;
    procs.push_back({atol(name.c_str()), trim(comm)});
  }
  std::sort(procs.begin(), procs.end(), [](const Process &a, const Process &b) { return a.pid < b.pid; });
  return procs;
}

bool process_running(const SimRoot &r, const std::string &name) {
  for (const Process &p : process_list(r))
    if (p.name == name) return true;
  return false;
}

static long usual_pid(const std::string &name) {
  if (name == "init") return 1;
  if (name == "dnsmasq") return 812;
  if (name == kServiceName) return 1021;
  if (name == kTopologyDaemon) return 1187;
  return 0;
}

long process_start(const SimRoot &r, const std::string &name, long pid) {
  std::string proc = r.backing("/proc");
  if (pid == 0) {
    pid = usual_pid(name);
    if (pid == 0 || path_exists(proc + "/" + std::to_string(pid))) {
      pid = 2000;
      while (path_exists(proc + "/" + std::to_string(pid))) pid++;
    }
  } else if (path_exists(proc + "/" + std::to_string(pid))) {
    return -1;
  }
  std::string dir = proc + "/" + std::to_string(pid);
  // The kernel keeps at most 15 characters of a command name.
  std::string comm = name.substr(0, 15) + "\n";
  if (!make_dirs(dir) || !write_file(dir + "/comm", comm)) return -1;
  return pid;
}

int process_stop(const SimRoot &r, const std::string &name) {
  int stopped = 0;
  for (const Process &p : process_list(r)) {
    if (p.name != name.substr(0, 15)) continue;
    if (remove_tree(r.backing("/proc/" + std::to_string(p.pid)))) stopped++;
  }
  return stopped;
}

ServiceMode service_mode(const SimRoot &r) {
  ServiceMode m;
  std::string text;
  if (!read_file(r.sim() + "/service/mode", &text)) return m;
  std::vector<std::string> words = split_words(text);
  if (!words.empty() && is_service_mode(words[0])) m.mode = words[0];
  long ms = 0;
  if (words.size() > 1 && parse_int(words[1], &ms) && ms >= 0) m.ms = ms;
  return m;
}

bool is_service_mode(const std::string &mode) {
  return mode == "normal" || mode == "silent" || mode == "slow" || mode == "pieces" || mode == "down" ||
         mode == "close" || mode == "reset";
}

std::string service_reply_path(const SimRoot &r, const std::string &method) {
  return r.sim() + "/service/" + method;
}

std::string slow_path(const SimRoot &r) { return r.sim() + "/kernel/slow"; }

long import_delay_ms(const SimRoot &r) {
  std::string text;
  long ms = 0;
  if (!read_file(slow_path(r), &text) || !parse_int(trim(text), &ms) || ms < 0) return 0;
  return ms;
}

// R/.sim/tz holds "OFFSET [MIB|forever]".
DateOutput date_output(const SimRoot &r) {
  DateOutput out;
  std::string text;
  if (!read_file(r.sim() + "/tz", &text)) return out;
  std::vector<std::string> words = split_words(text);
  if (words.empty()) return out;
  out.offset = words[0];
  if (words.size() > 1) {
    out.forever = words[1] == "forever";
    if (!out.forever && !parse_int(words[1], &out.flood_mib)) out.flood_mib = 0;
  }
  return out;
}

std::string ini_path(const SimRoot &r) { return r.host("/usr/vek/bin/vek.ini"); }

std::string ini_value(const SimRoot &r, const std::string &section, const std::string &key) {
  std::string text;
  if (!read_file(ini_path(r), &text)) return "";
  std::string current;
  size_t pos = 0;
  while (pos < text.size()) {
    size_t end = text.find('\n', pos);
    if (end == std::string::npos) end = text.size();
    std::string line = trim(text.substr(pos, end - pos));
    pos = end + 1;
    if (line.empty() || line[0] == ';' || line[0] == '#') continue;
    if (line[0] == '[') {
      size_t close = line.find(']');
      current = trim(line.substr(1, close == std::string::npos ? std::string::npos : close - 1));
      continue;
    }
    size_t eq = line.find('=');
    if (eq == std::string::npos || current != section) continue;
    if (trim(line.substr(0, eq)) == key) return trim(line.substr(eq + 1));
  }
  return "";
}
