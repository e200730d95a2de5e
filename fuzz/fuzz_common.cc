#include "fuzz_common.h"

#include <ftw.h>
#include <sys/stat.h>

#include <csetjmp>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "context.h"
#include "groups/groups.h"

// The linker sends every exit() of the tool's code here (-Wl,--wrap=exit).
extern "C" [[noreturn]] void __real_exit(int status);

namespace {

jmp_buf *g_trap;
int g_trapped_status;

int remove_entry(const char *path, const struct stat *, int, struct FTW *) { return remove(path); }

void remove_root() {
  const char *root = getenv("VEKTOOL_SYSROOT");
  if (root && strncmp(root, "/tmp/vekfuzz-", 13) == 0) nftw(root, remove_entry, 16, FTW_DEPTH | FTW_PHYS);
}

void make_parents(const std::string &path) {
  for (size_t slash = path.find('/', 1); slash != std::string::npos; slash = path.find('/', slash + 1))
    mkdir(path.substr(0, slash).c_str(), 0755);
}

struct RunArgs {
  const GroupEntry *group;
  std::vector<char *> *vector;
  int status;
};

void run_group(void *arg) {
  RunArgs *run = static_cast<RunArgs *>(arg);
  run->status = run->group->main(static_cast<int>(run->vector->size()) - 1, run->vector->data());
}

}  // namespace

extern "C" [[noreturn]] void __wrap_exit(int status) {
  if (g_trap) {
    g_trapped_status = status;
    longjmp(*g_trap, 1);
  }
  __real_exit(status);
}

int fuzz_trap_exit(void (*body)(void *), void *arg) {
  jmp_buf trap;
  fflush(stdout);
  if (setjmp(trap) != 0) {
    g_trap = nullptr;
    return g_trapped_status;
  }
  g_trap = &trap;
  body(arg);
  g_trap = nullptr;
  return -1;
}

const std::string &fuzz_root() {
  static std::string root;
  if (!root.empty()) return root;
  char templ[] = "/tmp/vekfuzz-XXXXXX";
  if (!mkdtemp(templ)) abort();
  root = templ;
  setenv("VEKTOOL_SYSROOT", root.c_str(), 1);
  atexit(remove_root);
  // What the tool finds on a gateway before any command runs.
  snprintf(g_context.exe_dir, sizeof g_context.exe_dir, "/usr/vek/bin");
  snprintf(g_context.root_dir, sizeof g_context.root_dir, "/usr/vek");
  snprintf(g_context.config.var, sizeof g_context.config.var, "/usr/vek/var");
  snprintf(g_context.config.bin, sizeof g_context.config.bin, "/usr/vek/bin");
  snprintf(g_context.config.run, sizeof g_context.config.run, "/var/run/vek");
  snprintf(g_context.config.socket_file, sizeof g_context.config.socket_file, "/var/run/vek/vek.sock");
  make_parents(root + "/var/run/vek/x");
  make_parents(root + "/usr/vek/var/x");
  // Output is not what the targets look at; the fuzzer's own report goes to
  // standard error.
  if (!freopen("/dev/null", "w", stdout)) abort();
  return root;
}

void fuzz_file(const std::string &gateway_path, const void *data, size_t size) {
  std::string path = fuzz_root() + gateway_path;
  make_parents(path);
  FILE *file = fopen(path.c_str(), "wb");
  if (!file) abort();
  if (size) fwrite(data, 1, size, file);
  fclose(file);
}

void fuzz_file(const std::string &gateway_path, const std::string &text) {
  fuzz_file(gateway_path, text.data(), text.size());
}

int fuzz_run(const std::vector<std::string> &words, int json) {
  fuzz_root();
  const GroupEntry *group = nullptr;
  for (size_t i = 0; i < kGroupCount; i++)
    if (!words.empty() && words[0] == kGroups[i].name) group = &kGroups[i];
  if (!group) return 255;
  // A writable vector as main hands it over; the parser rewrites it.
  std::vector<std::string> copies(words);
  std::vector<char *> vector;
  for (std::string &word : copies) vector.push_back(&word[0]);
  vector.push_back(nullptr);
  g_options.json = json;
  RunArgs run{group, &vector, 0};
  int exited = fuzz_trap_exit(run_group, &run);
  fflush(stdout);
  return exited >= 0 ? exited : run.status;
}

std::vector<std::string> fuzz_words(const uint8_t *data, size_t size, size_t max) {
  std::vector<std::string> words;
  const char *p = reinterpret_cast<const char *>(data);
  const char *end = p + size;
  while (p <= end && words.size() < max) {
    const char *nul = static_cast<const char *>(memchr(p, '\0', static_cast<size_t>(end - p)));
    if (!nul) nul = end;
    words.emplace_back(p, static_cast<size_t>(nul - p));
    p = nul + 1;
  }
  return words;
}
