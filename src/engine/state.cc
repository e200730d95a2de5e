#include "engine/state.h"

#include <sys/stat.h>

#include <cstdio>
#include <cstring>
#include <utility>

#include "engine/interface.h"
#include "sys/procfs.h"
#include "sys/scan.h"
#include "sys/shell.h"
#include "sys/sysroot.h"

namespace {

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

int engine_loaded() { return is_directory(kEngineDir) ? 1 : 0; }

long service_pid() {
  long pid = find_pid_by_name(kServiceName);
  if (pid < 0) return -1;
  char path[64];
  snprintf(path, sizeof path, "/proc/%ld", pid);
  return is_directory(path) ? pid : -1;
}

int service_alive() { return service_pid() >= 0 ? 1 : 0; }

int read_hyqos_rate(OwnedText *text) { return read_tagged_text(kQoeConfig, "j:hyqos_rate:", text); }

int read_queue_number(int *count) {
  OwnedText line;
  if (find_record(kQosCtrl, "d:qnum:", &line) != 0 || !line) return 1;
  int value = 0;
  if (scan32(line.get(), "d:qnum:%d", &value) != 1) return 1;
  if (count) *count = value;
  return 0;
}

int read_dbdev(OwnedText *text) { return read_tagged_text(kDbdev, "j:devs:", text); }
