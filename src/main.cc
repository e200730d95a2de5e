// vektool <group> <command> [args] [options]: finds the installation, reads
// the global options and the configuration, and hands the rest of the line to
// one command group. The exit status is the group's result.
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "config/config.h"
#include "context.h"
#include "groups/groups.h"
#include "result.h"
#include "sys/environ.h"
#include "sys/text.h"

namespace {

// What dirname(3) makes of `path`, cutting it in place: "." when it has no
// directory part, "/" for the root ("//" when it begins with exactly two
// slashes); trailing slashes do not count. Done here rather than by the C
// library, whose every function costs a symbol lookup at its first call.
const char *directory_of(char *path) {
  static char dot[] = ".";
  char *last = nullptr;
  for (char *p = path; *p; p++) {
    if (*p == '/') last = p;
  }
  if (last && last != path && last[1] == '\0') {
    // A trailing slash: the one before the slashes that end the path.
    char *run = last;
    while (run != path && run[-1] == '/') run--;
    if (run != path) {
      last = nullptr;
      for (char *p = run; p != path;) {
        if (*--p == '/') {
          last = p;
          break;
        }
      }
    }
  }
  if (!last) return dot;
  char *end = last;
  while (end != path && end[-1] == '/') end--;
  if (end == path) end = last == path + 1 ? last + 1 : path + 1;
  *end = '\0';
  return path;
}

// Finds the installation from the executable's link: exe_dir is its
// directory, root_dir the parent of that. Nothing is checked: an unreadable
// link leaves whatever dirname makes of an empty text.
void find_installation() {
  get_exe_path(g_context.root_dir, sizeof g_context.root_dir);
  g_context.root_dir[sizeof g_context.root_dir - 1] = '\0';
  const char *dir = directory_of(g_context.root_dir);
  copy_text(g_context.exe_dir, sizeof g_context.exe_dir, dir);
  dir = directory_of(g_context.root_dir);
  if (dir != g_context.root_dir) {
    copy_text(g_context.root_dir, sizeof g_context.root_dir, dir);
  }
}

// The global options may stand anywhere; a value word is looked at again as a
// possible option, and an option that is the last word is ignored.
void prescan(int argc, char **argv) {
  for (int i = 0; i < argc; i++) {
    const char *word = argv[i];
    bool has_next = i + 1 < argc;
    if (!has_next) break;
    if (word[0] != '-') continue;
    if (strcmp(word, "-i") == 0 || strcmp(word, "--ini") == 0) {
      g_options.ini_file = argv[i + 1];
    } else if (strcmp(word, "-l") == 0 || strcmp(word, "--log") == 0) {
      g_options.log_file = argv[i + 1];
    } else if (strcmp(word, "--json") == 0) {
      g_options.json = 1;
    }
  }
}

// The result line is the caller's answer: one that could not be written (a
// full disk, a closed descriptor) is a failure, not the command's status.
// fclose writes what is still buffered and closes the descriptor, and tells
// of a failure of either; a print that failed earlier has set the stream's
// error flag, and its reason is the last one recorded unless the final write
// gives one of its own.
int finish_output(int status) {
  bool failed = ferror(stdout) != 0;
  // errno is looked at only after a failure: the C library's errno location
  // is one more symbol lookup at every start.
  int reason = failed ? errno : 0;
  if (fclose(stdout) != 0) {
    failed = true;
    reason = errno;
  }
  if (!failed) return status;
  fprintf(stderr, "vektool: write error: %s\n", strerror(reason != 0 ? reason : EIO));
  return 1;
}

// g_context and g_options are static storage: zero when the process starts,
// and main runs once.
int run(int argc, char **argv) {
  find_installation();
  prescan(argc, argv);

  if (config_load(&g_context.config, g_context.exe_dir, g_options.ini_file) != 0) {
    report_result(RESULT_NO_CONFIG, nullptr);
    return -1;
  }
  if (g_options.log_file) {
    snprintf(g_context.config.log_file, sizeof g_context.config.log_file, "%s",
             g_options.log_file);
  }

  int status;
  if (argc > 1 && run_group(argv[1], argc - 1, argv + 1, &status)) return status;
  report_result(RESULT_UNKNOWN_GROUP, nullptr);
  return -1;
}

}  // namespace

// Help leaves through exit() in the option parser and keeps ignoring write
// errors; every other run comes back here.
int main(int argc, char **argv) {
  keep_standard_descriptors();
  return finish_output(run(argc, argv));
}
