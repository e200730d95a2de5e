#include "install.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "engine.h"
#include "state.h"

namespace {

const char *const kVekIni =
    "; Configuration of the vek engine on the simulated gateway.\n"
    "[vek]\n"
    "bin = /usr/vek/bin\n"
    "lib = /usr/vek/lib\n"
    "klib = /usr/vek/klib\n"
    "etc = /usr/vek/etc\n"
    "run = /var/run/vek\n"
    "tmp = /tmp/vek\n"
    "share = /usr/vek/share\n"
    "var = /usr/vek/var\n"
    "var_lib = /usr/vek/var/lib\n"
    "var_log = /var/log/vek\n"
    "var_tmp = /usr/vek/var/tmp\n"
    "qos = 1\n"
    "iam = 1\n"
    "cs = 1\n"
    "upstream_port = eth0\n"
    "downstream_port = br0\n"
    "hw_up_if = eth0\n"
    "hw_dw_if = eth1\n"
    "max_conn_count = 65536\n"
    "max_db_entries = 32768\n"
    "qos_mode = 1\n"
    "skbmark = 0x100000\n"
    "max_cache_size = 16\n"
    "server = cloud.example.com\n"
    "host = gw-0001.example.com\n"
    "product = vek-gw\n"
    "auth_id = gw-0001\n"
    "auth_pwd = secret\n"
    "log_level = 3\n"
    "\n"
    "[logger]\n"
    "max_db_size = 1048576\n";

// Eight applications in four categories; the engine's kctrl counts them.
const char *const kAppId =
    "# vek application categories: \"#category,flags,name\" then \"id:name\"\n"
    "#1,0,web\n"
    "80:http\n"
    "443:https\n"
    "#4,0,video\n"
    "1001:youtube\n"
    "1002:netflix\n"
    "#9,0,gaming\n"
    "2001:steam\n"
    "2002:xbox-live\n"
    "#12,0,voip\n"
    "3001:sip\n"
    "3002:teams\n";

const char *const kCloudReply =
    "{\"return\":0,\"result\":{\"enabled\":1,\"state\":\"connected\","
    "\"server\":\"cloud.example.com\",\"since\":1700000000}}\n";
const char *const kDiagReply =
    "{\"return\":0,\"result\":{\"uptime\":86400,\"cpu\":7,\"mem_free_kb\":51234,"
    "\"flows\":128,\"engine\":\"3.2.1\"}}\n";

// A small database image: a magic word, then bytes of a fixed sequence.
std::string db_image(const char *magic, size_t size) {
  std::string img(magic);
  unsigned int x = 2463534242u;
  while (img.size() < size) {
    x ^= x << 13;
    x ^= x >> 17;
    x ^= x << 5;
    img += static_cast<char>(x & 0xff);
  }
  img.resize(size);
  return img;
}

std::string shell_quote(const std::string &s) {
  std::string out = "'";
  for (char c : s) {
    if (c == '\'')
      out += "'\\''";
    else
      out += c;
  }
  return out + "'";
}

bool write_program(const SimRoot &r, const std::string &sim_exe, const std::string &gateway_path) {
  std::string script = "#!/bin/sh\n# The simulated " + base_name(gateway_path) +
                       ": records its arguments in the simulator's journal.\nexec " +
                       shell_quote(sim_exe) + " --root " + shell_quote(r.root) + " program " +
                       base_name(gateway_path) + " \"$@\"\n";
  return write_file(r.host(gateway_path), script, 0755);
}

bool write_if_missing(const std::string &path, const std::string &data, mode_t mode = 0644) {
  if (path_exists(path)) return true;
  return write_file(path, data, mode);
}

std::string var_dir(const SimRoot &r) {
  std::string var = ini_value(r, "vek", "var");
  return var.empty() ? "/usr/vek/var" : var;
}

}  // namespace

bool load_engine_module(const SimRoot &r) {
  const std::string dir = std::string(kEngineDir) + "/";
  for (const ControlFile &f : engine_control_files()) {
    if (f.path.compare(0, dir.size(), dir) != 0) continue;
    if (!write_file(r.backing(f.path), f.content)) return false;
  }
  return true;
}

bool reset_state(const SimRoot &r, std::string *error) {
  for (const char *dir : {"/proc", "/kernel", "/exit", "/stderr", "/service"}) {
    if (!remove_tree(r.sim() + dir)) {
      *error = strprintf("cannot clear %s%s: %s", r.sim().c_str(), dir, strerror(errno));
      return false;
    }
  }
  bool ok = true;
  for (const ControlFile &f : engine_control_files()) ok = ok && write_file(r.backing(f.path), f.content);
  // The modules loaded the databases from the data directory at boot.
  for (const Database &db : kDatabases) {
    std::string image;
    if (read_file(r.host(var_dir(r) + "/" + db.file), &image) && !image.empty()) {
      ok = ok && write_file(db_state_path(r, db, "image"), image);
      ok = ok && write_file(r.backing(db.info),
                            db_info_text(0, static_cast<long>(image.size()), db_epoch(0)));
    }
    ok = ok && write_file(db_state_path(r, db, "count"), "0\n");
    ok = ok && write_file(db_state_path(r, db, "mode"), "normal\n");
  }
  std::string exe_dir = r.backing("/proc/self");
  ok = ok && make_dirs(exe_dir);
  ok = ok && symlink("/usr/vek/bin/vektool", (exe_dir + "/exe").c_str()) == 0;
  for (const char *name : {"init", "dnsmasq", kServiceName}) ok = ok && process_start(r, name, 0) > 0;
  for (const char *const *p = kPrograms; *p; p++) ok = ok && set_program_status(r, *p, 0, nullptr);
  ok = ok && write_file(r.sim() + "/service/mode", "normal\n");
  ok = ok && write_file(service_reply_path(r, "get-cs"), kCloudReply);
  ok = ok && write_file(service_reply_path(r, "get-diag"), kDiagReply);
  ok = ok && write_file(r.sim() + "/tz", "+0800\n");
  if (!ok) *error = strprintf("cannot lay the boot state under %s: %s", r.sim().c_str(), strerror(errno));
  return ok;
}

bool install_sysroot(const SimRoot &r, const std::string &sim_exe, std::string *error) {
  bool ok = make_dirs(r.root);
  ok = ok && write_if_missing(ini_path(r), kVekIni);
  std::string var = r.host(var_dir(r));
  ok = ok && write_if_missing(var + "/" + kGroupDatabaseFile, db_image("VEKXDB01", 1536));
  ok = ok && write_if_missing(var + "/" + kAppDatabaseFile, db_image("VEKSID01", 1100));
  ok = ok && write_if_missing(var + "/" + kRuleDatabaseFile, db_image("VEKXR001", 300));
  ok = ok && write_if_missing(var + "/" + kAppIdFile, kAppId);
  for (const char *dir : {"/proc", "/var/run/vek", "/var/log/vek", "/tmp/vek", "/usr/vek/lib",
                          "/usr/vek/klib", "/usr/vek/etc", "/usr/vek/share"})
    ok = ok && make_dirs(r.host(dir));
  for (const char *prog : {"/usr/sbin/vekctl", "/usr/sbin/killall", "/usr/sbin/date",
                           "/usr/vek/bin/veklog", "/usr/vek/bin/dt_srv"})
    ok = ok && write_program(r, sim_exe, prog);
  if (!ok) {
    *error = strprintf("cannot lay out the installation under %s: %s", r.root.c_str(), strerror(errno));
    return false;
  }
  // The installation's vektool is the one built beside the simulator, so
  // that a shell in the sysroot finds it where the gateway has it.
  std::string tool = dir_name(sim_exe) + "/vektool";
  std::string link = r.host("/usr/vek/bin/vektool");
  struct stat st;
  if (lstat(link.c_str(), &st) != 0 || S_ISLNK(st.st_mode)) {
    unlink(link.c_str());
    if (access(tool.c_str(), X_OK) == 0) symlink(tool.c_str(), link.c_str());
  }
  if (!path_exists(r.sim() + "/proc")) return reset_state(r, error);
  return true;
}
