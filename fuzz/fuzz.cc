// The fuzz targets, one per surface that takes hostile bytes, in one libFuzzer
// binary that runs the one VEKTOOL_FUZZ_TARGET names (fuzz/run-target). They
// share a frame: a scratch gateway of regular files that VEKTOOL_SYSROOT points
// at, group entries run as `vektool` runs them, and exit() trapped so that an
// option error or --help does not end the run. ASan and UBSan watch them all;
// the checks here add what the sanitizers cannot see.
#include <arpa/inet.h>
#include <ftw.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csetjmp>
#include <cstring>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

#include "config/config.h"
#include "context.h"
#include "db/appid.h"
#include "db/database.h"
#include "groups/groups.h"
#include "sys/host.h"
#include "sys/mac.h"
#include "sys/scan.h"

// The linker sends every exit() of the tool's code here (-Wl,--wrap=exit).
extern "C" [[noreturn]] void __real_exit(int status);

static jmp_buf *g_trap;
static int g_trapped_status;

extern "C" [[noreturn]] void __wrap_exit(int status) {
  if (!g_trap) __real_exit(status);
  g_trapped_status = status;
  longjmp(*g_trap, 1);
}

namespace {

using Words = std::vector<std::string>;

// The status `body` gave exit(), or -1 when it returned: what it calls owns
// nothing that the jump would leak.
int trap_exit(const std::function<void()> &body) {
  jmp_buf trap;
  int status = -1;
  fflush(stdout);
  g_trap = &trap;
  if (setjmp(trap) == 0) body();
  else status = g_trapped_status;
  g_trap = nullptr;
  return status;
}

void fuzz_file(const std::string &gateway_path, const std::string &content);

// The scratch gateway, made on first use and removed at exit.
const std::string &fuzz_root() {
  static std::string root;
  if (!root.empty()) return root;
  char templ[] = "/tmp/vekfuzz-XXXXXX";
  if (!mkdtemp(templ)) abort();
  root = templ;
  setenv("VEKTOOL_SYSROOT", templ, 1);
  atexit([] { nftw(root.c_str(), [](const char *path, const struct stat *, int, FTW *) { return remove(path); },
                   16, FTW_DEPTH | FTW_PHYS); });
  // The installation as the tool finds it before any command runs.
  fuzz_file("/var/run/vek/.keep", "");
  fuzz_file("/usr/vek/bin/vek.ini", "[vek]\nbin = /usr/vek/bin\nrun = /var/run/vek\nvar = /usr/vek/var\n");
  if (config_parse_file(&g_context.config, "/usr/vek/bin/vek.ini") != 0) abort();
  snprintf(g_context.root_dir, sizeof g_context.root_dir, "/usr/vek");
  if (!freopen("/dev/null", "w", stdout)) abort();  // the fuzzer reports on standard error
  return root;
}

// Creates or replaces a file of the gateway, directories included.
void fuzz_file(const std::string &gateway_path, const std::string &content) {
  std::string path = fuzz_root() + gateway_path;
  for (size_t slash = path.find('/', 1); slash != std::string::npos; slash = path.find('/', slash + 1))
    mkdir(path.substr(0, slash).c_str(), 0755);
  FILE *file = fopen(path.c_str(), "wb");
  if (!file) abort();
  fwrite(content.data(), 1, content.size(), file);
  fclose(file);
}

// The status of group words[0] run with the words, or the status it gave exit().
int fuzz_run(Words words, int json) {
  const GroupEntry *group = std::find_if(kGroups, kGroups + kGroupCount, [&](const GroupEntry &g) {
    return words[0] == g.name; });
  std::vector<char *> vector;
  for (std::string &word : words) vector.push_back(&word[0]);  // writable, as main's
  vector.push_back(nullptr);
  g_options.json = json;
  int status = 0;
  int exited = trap_exit([&] { status = group->main(static_cast<int>(words.size()), vector.data()); });
  fflush(stdout);
  return exited >= 0 ? exited : status;
}

Words split(const std::string &text, char at) {
  Words words;
  for (size_t from = 0; from <= text.size(); from += words.back().size() + 1)
    words.push_back(text.substr(from, text.find(at, from) - from));
  return words;
}

// The option parser over every group's option table: the first byte picks the
// group, the rest are its words (cut at NUL bytes). It keeps only words it was
// given, in their order, and ends the vector with a null; an option error or
// --help ends in exit() with 1 or 0.
void options(const std::string &in) {
  const GroupEntry &group = kGroups[static_cast<uint8_t>(in[0]) % kGroupCount];
  Words words = split(in.substr(1), '\0');
  words.resize(std::min<size_t>(words.size(), 24));
  words.insert(words.begin(), group.name);
  std::vector<char *> vector;
  for (std::string &word : words) vector.push_back(&word[0]);
  vector.push_back(nullptr);
  const std::vector<char *> given(vector);
  g_options.json = 0;
  int kept = -1;
  int exited = trap_exit([&] {
    argparse parser;
    argparse_init(&parser, group.frame->options, nullptr, ARGPARSE_IGNORE_UNKNOWN_ARGS);
    argparse_usage_text(&parser, group.frame->usage);
    argparse_describe(&parser, group.frame->description, group.frame->epilog);
    kept = argparse_parse(&parser, static_cast<int>(words.size()), vector.data());
  });
  if (exited > 1) abort();
  if (exited >= 0) return;
  if (kept < 0 || kept >= static_cast<int>(words.size()) || vector[kept] || g_options.json < 0) abort();
  for (size_t i = 0, from = 1; i < static_cast<size_t>(kept); i++, from++) {
    while (from < words.size() && given[from] != vector[i]) from++;
    if (from == words.size()) abort();
  }
}

// The argument checks and the 32-bit number readers, held to independent
// references where there are some: inet_pton, strtoll; a MAC that passes has
// 12 hex digits.
void checks(const std::string &in) {
  const char *t = in.c_str();  // up to the first NUL, as an argument would be
  auto hex = [](char c) { return isxdigit(static_cast<unsigned char>(c)) != 0; };
  if (is_valid_mac(t) && std::count_if(t, t + strlen(t), hex) < 12) abort();
  unsigned char address[16];
  bool parses = inet_pton(AF_INET, t, address) == 1 || inet_pton(AF_INET6, t, address) == 1;
  if ((is_valid_ip_address(t) != 0) != parses) abort();
  is_valid_host_name(t);
  errno = 0;
  char *end64 = nullptr, *end32 = nullptr;
  long long wide = strtoll(t, &end64, 0);
  bool wide_range = errno == ERANGE;
  long narrow = strtol32(t, &end32, 0);
  long long held = std::min<long long>(std::max<long long>(wide, INT_MIN), INT_MAX);
  if (end32 != end64 || narrow != held || (errno == ERANGE) != (wide_range || held != wide)) abort();
  strtoul32(t, nullptr, 0);
  arg_int(t);
  int a, b;  // the record readers' formats
  unsigned char byte;
  unsigned long long epoch;
  char name[32];
  scan32(t, "j:qoe:[%d,%d]", &a, &b);
  scan32(t, "%hhu", &byte);
  scan32(t, "writable: %d\nsize: %d\nepoch: %llu", &a, &b, &epoch);
  scan32(t, "#%d,%d,%31s", &a, &b, name);
  for (const char *type : {"0", "1", "2", "3"})  // the limiter's targets: refused or written
    if (fuzz_run({"limiter", "set", t, "--type", type}, 1) > 1) abort();
}

// vek.ini: any bytes as the file.
void ini(const std::string &in) {
  fuzz_file("/etc/vek/vek.ini", in);
  tool_config config;
  memset(&config, 0, sizeof config);  // as at start-up
  config_load(&config, "/nowhere", "/etc/vek/vek.ini");
}

// app.id, and the database information record: any bytes. A category stays at
// most 127, on ids up to the largest taken.
void appid(const std::string &in) {
  static std::unique_ptr<app_c6y_table> table(new app_c6y_table);
  FILE *file = fmemopen(const_cast<char *>(in.data()), in.size(), "rb");
  memset(table.get(), 0, sizeof *table);
  app_c6y_parse(table.get(), file);
  fclose(file);
  for (int id = 0; id < APP_ID_COUNT; id++)
    if (table->c6y[id] > APP_C6Y_MAX || (table->c6y[id] && id > table->max_app_id)) abort();
  db_info info;
  db_info_parse(in.c_str(), &info);
}

// What the kernel modules and the daemons leave in their files: the first byte
// picks a file and the commands that read it ("|" between them), the rest is
// its content. Each command ends with 0, 1 or 71, in plain and JSON mode.
const std::string kQosCtrl = "d:algorithm:1\nj:qoe:[1,1]\nj:hyqos:[0]\nd:qnum:8\n";
const std::vector<std::pair<std::string, std::string>> kFiles = {
    {"/proc/vek/qos_ctrl", "qos get-algo|qos get-qoe-active|qos get-qoe-profile|qos get-hyqos-active|"
                           "qos get-hw-queue-num|qos set-hyqos-queue 1 3 100|"
                           "qos set-hyqos-queues [[[\"a\",10]],[[\"b\",20]]]|"
                           "qos add-hyqos-devs [[\"00:11:22:33:44:55\",1,2]]"},
    {"/proc/vek/qoe_config", "qos get-qoe-profile-settings|qos get-hyqos-queues"},
    {"/proc/vek/qos_mode", "qos get"}, {"/proc/vek/qoe_optimization", "qos get-qoe-optimization"},
    {"/proc/vek/qoe_config2", "qos get-qoe-bwctl"}, {"/proc/vek/conn_ctx", "qos get-dscp"},
    {"/proc/vek/dbdev", "qos get-hyqos-devs|dev get|dev get-default-queue"},
    {"/proc/vek/monitor", "mon get-conn-count block|mon get-conn-count category|mon get-conn-count priority"},
    {"/proc/vek/limiter_ctrl", "limiter get"}, {"/proc/vek/gc", "gc get"}, {"/proc/vek/ss", "ss get"},
    {"/proc/vek/iam_ctrl", "iam get"}, {"/proc/vek/pc_rule_export", "iam get-rules"},
    {"/tmp/bs/bs.json", "dt get"}, {"/proc/vek/version", "vek status"}, {"/proc/vek/fc_ctrl", "vek status"},
    {"/proc/vek/qos_traffic", "vek stats"}, {"/proc/vek/malnet_mode", "vek get-mode"},
    {"/proc/vek/dst_ctrl", "vek get-cache-status"}, {"/proc/kmod_xdn/grpxdb_info", "xdn get|vek status"},
    {"/proc/kmod_xdn/sidxdb_info", "xapp getxdb"}, {"/proc/kmod_xapp/xr_info", "xapp getxr"},
};

void engine_files(const std::string &in) {
  [[maybe_unused]] static const bool booted = [] {
    for (const auto &file : kFiles) fuzz_file(file.first, "");
    fuzz_file("/proc/vek/qos_ctrl", kQosCtrl);
    fuzz_file("/proc/1021/comm", "vek_service\n");  // the service and the topology daemon run
    fuzz_file("/proc/1187/comm", "dt_srv\n");
    fuzz_file("/usr/vek/bin/dt_srv", "");
    return true;
  }();
  const auto &file = kFiles[static_cast<uint8_t>(in[0]) % kFiles.size()];
  fuzz_file(file.first, in.substr(1));
  for (const std::string &command : split(file.second, '|'))
    for (int json : {0, 1})
      if (int status = fuzz_run(split(command, ' '), json); status != 0 && status != 1 && status != 71)
        abort();
  if (file.first == "/proc/vek/qos_ctrl") fuzz_file(file.first, kQosCtrl);  // the setters read it
}

// Every command that parses a JSON argument: the first byte picks it, the rest
// is the argument (up to a NUL, as on a command line). Eight hardware queues.
void json_args(const std::string &in) {
  [[maybe_unused]] static const bool booted = [] {
    for (const char *file : {"qoe_config", "dbdev", "qoe_config2", "conn_ctx"})
      fuzz_file(std::string("/proc/vek/") + file, "");
    fuzz_file("/proc/vek/qos_ctrl", "d:algorithm:2\nj:qoe:[1,1]\nj:hyqos:[1]\nd:qnum:8\n");
    return true;
  }();
  static const Words commands = split("set-qoe-profile-settings set-hyqos-queues add-hyqos-devs del-hyqos-devs set-qoe-bwctl "
                                      "set-dscp-mapping", ' ');
  for (int json : {0, 1})
    if (fuzz_run({"qos", commands[static_cast<uint8_t>(in[0]) % 6], in.c_str() + 1}, json) > 1) abort();
}

// The service's replies to `cloud get` and `diag get`: any bytes, served on the
// gateway's socket, then closed. Both commands exit 0 in plain and JSON mode.
std::mutex g_lock;
std::string g_reply;

void serve(int listener) {
  for (;;) {
    int fd = accept(listener, nullptr, nullptr);
    char request[1024];
    if (fd < 0) continue;
    std::lock_guard<std::mutex> hold(g_lock);  // the next reply waits until the tool has hung up
    ssize_t n = recv(fd, request, sizeof request, 0);
    for (size_t sent = 0; n > 0 && sent < g_reply.size(); sent += static_cast<size_t>(n))
      n = send(fd, g_reply.data() + sent, g_reply.size() - sent, MSG_NOSIGNAL);
    close(fd);
  }
}

void service_reply(const std::string &in) {
  [[maybe_unused]] static const bool listening = [] {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    snprintf(address.sun_path, sizeof address.sun_path, "%s/var/run/vek/vek.sock", fuzz_root().c_str());
    int listener = socket(AF_UNIX, SOCK_STREAM, 0);
    if (bind(listener, reinterpret_cast<sockaddr *>(&address), sizeof address) != 0 || listen(listener, 8) != 0)
      abort();
    std::thread(serve, listener).detach();
    return true;
  }();
  {
    std::lock_guard<std::mutex> hold(g_lock);
    g_reply = in;
  }
  for (const char *group : {"cloud", "diag"})
    for (int json : {0, 1})
      if (fuzz_run({group, "get"}, json) != 0) abort();
}

const std::pair<const char *, void (*)(const std::string &)> kTargets[] = {
    {"options", options}, {"checks", checks}, {"ini", ini}, {"appid", appid}, {"engine_files", engine_files},
    {"json_args", json_args}, {"service_reply", service_reply}};
void (*g_target)(const std::string &);

}  // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***) {
  const char *name = getenv("VEKTOOL_FUZZ_TARGET");
  for (const auto &target : kTargets)
    if (name && strcmp(name, target.first) == 0) g_target = target.second;
  if (!g_target) {
    fprintf(stderr, "VEKTOOL_FUZZ_TARGET: the name of a target in fuzz/fuzz.cc\n");
    abort();
  }
  fuzz_root();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  if (size > 0) g_target(std::string(reinterpret_cast<const char *>(data), size));
  return 0;
}
