// vektool mon: the engine's connection counters (blocked connections, and
// connections per application category and per priority).
#include <cstdio>
#include <cstring>

#include "context.h"
#include "engine/interface.h"
#include "groups/frame.h"
#include "groups/groups.h"
#include "result.h"
#include "sys/procfs.h"
#include "sys/text.h"

namespace {

// Texts in the rows: no addresses for the dynamic loader to relocate.
struct CounterType {
  char word[9];
  char tag[16];
  bool read_twice;  // the JSON counters settle on the second read
};

const CounterType kTypes[] = {
    {"block", "u:block_conns:", false},
    {"category", "j:cat_conns:", true},
    {"priority", "j:prio_conns:", true},
};

int get_conn_count(int argc, char **argv) {
  if (argc <= 1) return wrong_arg_number(argc);

  const CounterType *type = nullptr;
  for (const CounterType &candidate : kTypes) {
    if (str_equal_nocase(argv[1], candidate.word) == 0) {
      type = &candidate;
      break;
    }
  }
  if (!type) {
    report_result(RESULT_FAILED, "Unsupport type: %s\n", argv[1]);
    return 0;
  }

  OwnedText line;
  int status = find_record(kMonitor, type->tag, &line);
  if (status == 0 && type->read_twice) {
    line.reset();
    status = find_record(kMonitor, type->tag, &line);
  }
  if (status != 0) {
    report_result(RESULT_FAILED, "Failed to read file\n");
    return 0;
  }
  if (!line) return 0;

  trim(line.get());
  const char *value = line.get() + strlen(type->tag);
  return print_json_result(value);
}

int clear_conn_count(int, char **) { return write_verb_ok(kMonitor, "clear"); }

const char kUsage[] =
    "vektool mon [options] <command> [args]\0"
    "vektool mon get-conn-count <type>      # block/category/priority\0"
    "vektool mon clear-conn-count\0";

constexpr argparse_option kOptions[] = {
    OPT_HELP(),
    OPT_BOOLEAN(0, "json", &g_options.json, ""),
    OPT_END(),
};

constexpr CommandEntry kCommands[] = {
    {"get-conn-count", get_conn_count},
    {"clear-conn-count", clear_conn_count},
};

}  // namespace

constexpr GroupFrame mon_frame = {kUsage, kOptions, kCommands, countof(kCommands),
                                  nullptr, nullptr, false, nullptr};

int mon_main(int argc, char **argv) { return group_run<mon_frame>(argc, argv); }
