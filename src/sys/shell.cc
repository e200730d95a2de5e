#include "sys/shell.h"

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "sys/environ.h"
#include "sys/handles.h"
#include "sys/sysroot.h"

namespace {

// Only the programs the tool runs look at PATH: the engine's directory goes in
// front of it right before the first one runs, and twice on purpose, as the
// engine's scripts expect it.
void prepare_program_path() {
  static bool prepared = false;
  if (prepared) return;
  prepared = true;
  prepend_path_env("%s/usr/sbin", sysroot_prefix());
  prepend_path_env("%s/usr/sbin", sysroot_prefix());
}

// Closes a pipe from popen; pclose also reaps the shell.
struct Pipe {
  FILE *stream;
  explicit Pipe(FILE *s) : stream(s) {}
  Pipe(const Pipe &) = delete;
  Pipe &operator=(const Pipe &) = delete;
  ~Pipe() { close(); }
  void close() {
    if (stream) pclose(stream);
    stream = nullptr;
  }
};

}  // namespace

int file_exists(const char *path) {
  if (!path) return 0;
  return access(SysPath(path), F_OK) == 0 ? 1 : 0;
}

int file_exists_fmt(const char *format, ...) {
  if (!format) return 0;
  char path[512];
  va_list args;
  va_start(args, format);
  vsnprintf(path, sizeof path, format, args);
  va_end(args);
  return file_exists(path);
}

int make_dirs(const char *path) {
  if (!path) return -1;
  if (file_exists(path)) return 0;
  char dir[256];
  snprintf(dir, sizeof dir, "%s", path);
  size_t length = strlen(dir);
  if (length > 0 && dir[length - 1] == '/') dir[length - 1] = '\0';
  // Parents are private to the engine (0700); only the directory asked for is
  // opened up to others (0755).
  for (char *p = dir + 1; *p; ++p) {
    if (*p != '/') continue;
    *p = '\0';
    mkdir(SysPath(dir), 0700);
    *p = '/';
  }
  return mkdir(SysPath(dir), 0755);
}

long find_pid_by_name(const char *name) {
  if (!name) return -1;
  Dir proc(opendir(SysPath("/proc")));
  if (!proc) return -1;
  const size_t name_length = strlen(name);
  while (const struct dirent *entry = readdir(proc.get())) {
    char *end = nullptr;
    long pid = strtol(entry->d_name, &end, 10);
    if (end == entry->d_name || *end != '\0') continue;  // ".", ".." and non-process entries
    char path[64];
    snprintf(path, sizeof path, "/proc/%ld/comm", pid);
    File comm(fopen(SysPath(path), "r"));
    if (!comm) continue;
    char line[512];
    if (!fgets(line, sizeof line, comm.get())) continue;
    line[strcspn(line, "\r\n")] = '\0';
    if (strlen(line) == name_length && strcmp(line, name) == 0) return pid;
  }
  return -1;
}

int run_command(const char *format, ...) {
  if (!format) return 0;
  char command[512];
  va_list args;
  va_start(args, format);
  vsnprintf(command, sizeof command, format, args);
  va_end(args);
  // Whatever this process printed so far comes before the command's output.
  fflush(stdout);
  prepare_program_path();
  int status = system(command);
  return status >> 8;
}

OwnedText run_command_capture(int flags, const char *command) {
  if (!command) return OwnedText();
  fflush(stdout);
  prepare_program_path();
  Pipe pipe(popen(command, "r"));
  if (!pipe.stream) return OwnedText();
  // Callers take one-line answers: the first line is all that is read, and
  // closing the pipe then tells a program that goes on printing to stop (it
  // gets SIGPIPE), so that neither memory nor time depends on what it prints.
  char line[512];
  if (!fgets(line, sizeof line, pipe.stream)) line[0] = '\0';
  pipe.close();
  if (flags & CAPTURE_DISCARD) return OwnedText();
  return str_dup(line);
}

namespace {

// Characters no shell gives a meaning to inside a word.
bool is_plain_word_char(char c) {
  if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')) return true;
  return strchr("_@%+=:,./-", c) != nullptr && c != '\0';
}

bool is_plain_word(const char *word) {
  if (!word[0]) return false;
  for (const char *p = word; *p; ++p)
    if (!is_plain_word_char(*p)) return false;
  return true;
}

}  // namespace

const char *shell_word(char *out, size_t size, const char *word) {
  if (!out || size == 0) return out;
  if (!word) word = "";
  if (is_plain_word(word)) {
    snprintf(out, size, "%s", word);
    return out;
  }
  // Single quotes keep everything literal; a quote itself is closed, escaped
  // and reopened. A text too long for `out` is cut between characters, still
  // inside one closed pair of quotes, so it stays one word.
  if (size < 3) {
    out[0] = '\0';
    return out;
  }
  size_t n = 0;
  out[n++] = '\'';
  for (const char *p = word; *p; ++p) {
    const char *piece = *p == '\'' ? "'\\''" : nullptr;
    size_t piece_length = piece ? 4 : 1;
    if (n + piece_length + 2 > size) break;  // room for the closing quote and terminator
    if (piece) {
      memcpy(out + n, piece, piece_length);
    } else {
      out[n] = *p;
    }
    n += piece_length;
  }
  out[n++] = '\'';
  out[n] = '\0';
  return out;
}

const char *shell_path(char *out, size_t size, const char *path) {
  char full[SYSROOT_PATH_MAX];
  return shell_word(out, size, sysroot_path(path, full, sizeof full));
}
