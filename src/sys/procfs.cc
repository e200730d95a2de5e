#include "sys/procfs.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <memory>

#include "sys/handles.h"
#include "sys/scan.h"
#include "sys/shell.h"
#include "sys/sysroot.h"

namespace {

// Storage that getline grows as it reads.
struct LineStorage {
  char *text = nullptr;
  size_t capacity = 0;
  LineStorage() = default;
  LineStorage(const LineStorage &) = delete;
  LineStorage &operator=(const LineStorage &) = delete;
  ~LineStorage() { free(text); }
};

// Opens a gateway path. Only copy_file creates files (as fopen's "w" would);
// control files are never created or truncated.
int open_path(const char *path, int flags) {
  if (!path) return -1;
  return open(SysPath(path), flags | O_CLOEXEC, 0666);
}

bool is_directory(const char *path) {
  struct stat st;
  return stat(SysPath(path), &st) == 0 && S_ISDIR(st.st_mode);
}

// The text after `tag` on its record line, trimmed, as a new allocation.
int read_tagged_text(const char *path, const char *tag, OwnedText *text) {
  OwnedText line;
  if (find_record(path, tag, &line) != 0 || !line) return 1;
  OwnedText value = str_dup(line.get() + strlen(tag));
  if (!value) return 1;
  trim(value.get());
  if (text) *text = std::move(value);
  return 0;
}

}  // namespace

int write_proc_line(const char *path, const char *format, ...) {
  if (!format) return 0;
  char verb[512];
  va_list args;
  va_start(args, format);
  vsnprintf(verb, sizeof verb, format, args);
  va_end(args);
  Fd fd(open_path(path, O_WRONLY));
  if (!fd.ok()) return -1;
  // The engine takes one verb per write: never split it.
  return static_cast<int>(write(fd.get(), verb, strlen(verb)));
}

int write_proc_data(const char *path, const void *data, int length) {
  Fd fd(open_path(path, O_WRONLY));
  if (!fd.ok()) return -1;
  if (!data || length < 1) return 0;
  const char *bytes = static_cast<const char *>(data);
  int total = 0;
  while (total < length) {
    int piece = length - total < 128 ? length - total : 128;
    ssize_t n = write(fd.get(), bytes + total, static_cast<size_t>(piece));
    if (n < 1) break;
    total += static_cast<int>(n);
  }
  return total;
}

int read_proc_file(const char *path, OwnedText *data, int *length) {
  Fd fd(open_path(path, O_RDONLY));
  if (!fd.ok()) return -1;
  // procfs reports a size of 0: read until the end, whatever stat says.
  TextBuffer buffer;
  char chunk[128];
  for (;;) {
    ssize_t n = read(fd.get(), chunk, sizeof chunk);
    if (n < 1) break;  // end of file, or an error taken as the end
    text_buffer_reserve(&buffer, static_cast<unsigned int>(n));
    text_buffer_append(&buffer, chunk, static_cast<unsigned int>(n));
  }
  unsigned int count = 0;
  OwnedText text = text_buffer_take(&buffer, &count);
  if (data) *data = std::move(text);
  if (length) *length = static_cast<int>(count);
  return 0;
}

int read_file_into(const char *path, char *buffer, int size) {
  if (!buffer || size < 1) return -1;
  Fd fd(open_path(path, O_RDONLY));
  if (!fd.ok()) {
    buffer[0] = '\0';
    return -1;
  }
  ssize_t n = read(fd.get(), buffer, static_cast<size_t>(size));
  if (n < 0) {
    buffer[0] = '\0';
    return -1;
  }
  // A full read loses its last byte to the terminator.
  buffer[n < size ? n : size - 1] = '\0';
  return static_cast<int>(n);
}

int find_record(const char *path, const char *tag, OwnedText *line) {
  if (!path) return 1;
  File file(fopen(SysPath(path), "re"));
  if (!file) return 1;
  if (!tag) return 0;
  const size_t tag_length = strlen(tag);
  LineStorage storage;
  ssize_t n;
  while ((n = getline(&storage.text, &storage.capacity, file.get())) >= 0) {
    if (static_cast<size_t>(n) < tag_length) continue;
    if (memcmp(storage.text, tag, tag_length) != 0) continue;
    if (line) {
      line->reset(storage.text);
      storage.text = nullptr;
    }
    return 0;
  }
  return 0;
}

int copy_file(const char *destination, const char *source) {
  Fd in(open_path(source, O_RDONLY));
  if (!in.ok()) return -1;
  Fd out(open_path(destination, O_WRONLY | O_CREAT | O_TRUNC));
  if (!out.ok()) return -2;
  char block[512];
  int total = 0;
  for (;;) {
    ssize_t n = read(in.get(), block, sizeof block);
    if (n < 1) break;
    if (write(out.get(), block, static_cast<size_t>(n)) != n) return -1;
    total += static_cast<int>(n);
  }
  return total;
}

long file_size(const char *path) {
  Fd fd(open_path(path, O_RDONLY));
  if (!fd.ok()) return 0;
  off_t end = lseek(fd.get(), 0, SEEK_END);
  return end < 0 ? 0 : static_cast<long>(end);
}

int engine_loaded() { return is_directory("/proc/vek") ? 1 : 0; }

int service_alive() {
  long pid = find_pid_by_name("vek_service");
  if (pid < 0) return 0;
  char path[64];
  snprintf(path, sizeof path, "/proc/%ld", pid);
  return is_directory(path) ? 1 : 0;
}

int read_hyqos_rate(OwnedText *text) {
  return read_tagged_text("/proc/vek/qoe_config", "j:hyqos_rate:", text);
}

int read_queue_number(int *count) {
  OwnedText line;
  if (find_record("/proc/vek/qos_ctrl", "d:qnum:", &line) != 0 || !line) return 1;
  int value = 0;
  if (scan32(line.get(), "d:qnum:%d", &value) != 1) return 1;
  if (count) *count = value;
  return 0;
}

int read_dbdev(OwnedText *text) { return read_tagged_text("/proc/vek/dbdev", "j:devs:", text); }
