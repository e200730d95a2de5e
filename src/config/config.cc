#include "config/config.h"

#include <errno.h>
#include <fcntl.h>
#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include <iniparser.h>

#include "sys/handles.h"
#include "sys/scan.h"
#include "sys/sysroot.h"
#include "sys/text.h"

namespace {

struct DictionaryDeleter {
  void operator()(dictionary *d) const { iniparser_freedict(d); }
};
using Dictionary = std::unique_ptr<dictionary, DictionaryDeleter>;

// vek.ini is a few hundred bytes written by the installation. A candidate
// larger than 64 KiB is no configuration; 64 KiB is also what a pipe holds
// without asking (load_bytes).
constexpr unsigned int kIniMax = 64 * 1024;

// The library reports every line it cannot parse, quoting it, through this
// hook. `-i` may name any file (/etc/shadow), and the tool runs as root: not
// one of those lines may reach the terminal.
int discard_library_message(const char *, ...) { return 0; }

// Room for one byte more than a configuration may hold, so that a longer
// file shows itself. On the stack: no allocation to make and give back.
using IniBytes = char[kIniMax + 1];

// Reads a candidate that is a regular file of at most kIniMax bytes and
// returns its length; -1 for anything else, which the search skips as it
// skips a missing file. The file is opened without blocking, so that a FIFO
// or a device in its place cannot hold the tool, and it is read once: the
// library is given exactly these bytes.
long read_candidate(const char *path, IniBytes &bytes) {
  Fd fd(open(SysPath(path), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  if (!fd.ok()) return -1;
  struct stat st;
  if (fstat(fd.get(), &st) != 0 || !S_ISREG(st.st_mode)) return -1;
  if (st.st_size > static_cast<off_t>(kIniMax)) return -1;
  // Files under /proc and /sys report a size of 0: the count read is what bounds.
  unsigned int length = 0;
  for (;;) {
    ssize_t n = read(fd.get(), bytes + length, sizeof bytes - length);
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) return -1;
    if (n == 0) return length;
    length += static_cast<unsigned int>(n);
    if (length > kIniMax) return -1;
  }
}

// "/proc/self/fd/<fd>", formatted by hand: printf's machinery is a cost at
// every start.
void fd_path(char (&path)[32], int fd) {
  static const char kPrefix[] = "/proc/self/fd/";
  memcpy(path, kPrefix, sizeof kPrefix - 1);
  char digits[12];
  int count = 0;
  unsigned int value = static_cast<unsigned int>(fd);
  do {
    digits[count++] = static_cast<char>('0' + value % 10);
    value /= 10;
  } while (value != 0);
  char *out = path + sizeof kPrefix - 1;
  while (count > 0) *out++ = digits[--count];
  *out = '\0';
}

// The library only loads from a path. It is given one end of a pipe that
// holds the bytes already read, so that what it parses is bounded and is the
// file that was checked, whatever happens to that file meanwhile. The path
// names this process's own descriptor, so it is not a gateway path. Both
// ends are closed before this returns and no program runs meanwhile, so
// they need no close-on-exec (pipe2 would need a newer C library version).
Dictionary load_bytes(const char *bytes, unsigned int length) {
  int ends[2];
  if (pipe(ends) != 0) return nullptr;
  Fd read_end(ends[0]);
  {
    Fd write_end(ends[1]);
    // An empty pipe takes PIPE_BUF bytes without waiting, and vek.ini is a
    // few hundred: only a longer file needs room made, and a pipe too small
    // for it must fail, not wait, since nothing reads until the library does.
    if (length > PIPE_BUF) {
      if (fcntl(write_end.get(), F_GETPIPE_SZ) < static_cast<int>(length)) {
        fcntl(write_end.get(), F_SETPIPE_SZ, static_cast<int>(length));
      }
      if (fcntl(write_end.get(), F_SETFL, O_NONBLOCK) != 0) return nullptr;
    }
    unsigned int written = 0;
    while (written < length) {
      ssize_t n = write(write_end.get(), bytes + written, length - written);
      if (n < 1) return nullptr;
      written += static_cast<unsigned int>(n);
    }
  }  // the write end is closed here: the library reads to the end of the bytes
  char path[32];
  fd_path(path, read_end.get());
  iniparser_set_error_callback(discard_library_message);
  return Dictionary(iniparser_load(path));
}

// The library's boolean and integer getters read the value of a section
// named like their key ("[vek:qos]") through a null pointer. The value is
// taken as text here and converted as those getters convert it.
const char *get_value(const dictionary *ini, const char *key) {
  return iniparser_getstring(ini, key, nullptr);
}

// First character y, Y, 1, t or T: 1; n, N, 0, f or F: 0; else `absent`.
int get_boolean(const dictionary *ini, const char *key, int absent) {
  const char *value = get_value(ini, key);
  if (!value) return absent;
  switch (value[0]) {
    case 'y': case 'Y': case '1': case 't': case 'T':
      return 1;
    case 'n': case 'N': case '0': case 'f': case 'F':
      return 0;
    default:
      return absent;
  }
}

// Base by prefix ("0x" hexadecimal, "0" octal), held to int as the 32-bit
// gateway's strtol holds it (a plain cut would wrap on a 64-bit build).
int get_int(const dictionary *ini, const char *key, int absent) {
  const char *value = get_value(ini, key);
  if (!value) return absent;
  return static_cast<int>(strtol32(value, nullptr, 0));
}

// The INI file is written by the installation and trusted, but a value never
// runs past its field: it is cut to the field's size.
template <size_t N>
void copy_string(const dictionary *ini, const char *key, char (&field)[N]) {
  const char *value = get_value(ini, key);
  if (value) copy_text(field, N, value);
}

}  // namespace

int config_parse_file(tool_config *config, const char *path) {
  if (!config || !path) return 1;
  IniBytes bytes;
  long length = read_candidate(path, bytes);
  if (length < 0) return 1;
  Dictionary ini = load_bytes(bytes, static_cast<unsigned int>(length));
  if (!ini) return 1;
  const dictionary *d = ini.get();

  copy_text(config->ini_path, sizeof config->ini_path, path);
  // A boolean that is neither yes nor no counts as absent: on.
  config->qos = get_boolean(d, "vek:qos", 1);
  config->iam = get_boolean(d, "vek:iam", 1);
  config->cs = get_boolean(d, "vek:cs", 1);
  config->log_level = get_int(d, "vek:log_level", 3);

  copy_string(d, "vek:bin", config->bin);
  copy_string(d, "vek:lib", config->lib);
  copy_string(d, "vek:klib", config->klib);
  copy_string(d, "vek:etc", config->etc);
  copy_string(d, "vek:run", config->run);
  copy_string(d, "vek:tmp", config->tmp);
  copy_string(d, "vek:share", config->share);
  copy_string(d, "vek:var", config->var);
  copy_string(d, "vek:var_lib", config->var_lib);
  copy_string(d, "vek:var_log", config->var_log);
  copy_string(d, "vek:var_tmp", config->var_tmp);
  copy_string(d, "vek:upstream_port", config->upstream_port);
  copy_string(d, "vek:downstream_port", config->downstream_port);
  copy_string(d, "vek:hw_up_if", config->hw_up_if);
  copy_string(d, "vek:hw_dw_if", config->hw_dw_if);
  copy_string(d, "vek:max_conn_count", config->max_conn_count);
  copy_string(d, "vek:max_db_entries", config->max_db_entries);
  copy_string(d, "vek:qos_mode", config->qos_mode);
  copy_string(d, "vek:skbmark", config->skbmark);
  copy_string(d, "vek:max_cache_size", config->max_cache_size);
  copy_string(d, "vek:server", config->server);
  copy_string(d, "vek:host", config->host);
  copy_string(d, "vek:product", config->product);
  copy_string(d, "vek:auth_id", config->auth_id);
  copy_string(d, "vek:auth_pwd", config->auth_pwd);
  copy_string(d, "logger:max_db_size", config->logger_max_db_size);

  join_text(config->socket_file, sizeof config->socket_file, config->run, "/vek.sock");
  join_text(config->logd_socket_file, sizeof config->logd_socket_file, config->run,
            "/veklogd.sock");
  return 0;
}

namespace {

// The candidate is `dir` followed by `name`. One that does not fit in 256
// bytes is no candidate, since the cut path could name another file.
int try_candidate(tool_config *config, const char *dir, const char *name) {
  char path[256];
  if (strlen(dir) + strlen(name) >= sizeof path) return 1;
  join_text(path, sizeof path, dir, name);
  // config_parse_file refuses a missing file as it refuses anything but a
  // regular file: no test of its own first.
  return config_parse_file(config, path);
}

}  // namespace

int config_load(tool_config *config, const char *exe_dir, const char *ini_file) {
  // An explicit file that is missing or broken falls back to the search.
  if (ini_file && config && try_candidate(config, ini_file, "") == 0) return 0;
  if (!exe_dir) return 1;
  // The installation's places, in the order the engine's scripts install
  // them. /usr/vek and /usr/vek/vek are tried twice; the second try is kept.
  const char *const dirs[] = {exe_dir,        "/usr/vek",     "/usr/vek/vek",
                              "/usr/vek",     "/usr/vek/vek", "/usr/vek/etc",
                              "/usr/vek/etc/vek", "/etc/vek"};
  for (const char *dir : dirs) {
    if (try_candidate(config, dir, "/vek.ini") == 0) return 0;
  }
  return 1;
}
