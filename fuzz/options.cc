// The option parser over every group's option table: the first byte picks
// the group, the rest are its words (cut at NUL bytes). The parse must keep
// only words it was given, in their order, end the vector with a null, and
// leave the JSON flag no lower than 0; option errors and --help end in exit(),
// which the trap turns into a status of 0 or 1.
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "argparse.h"
#include "context.h"
#include "fuzz_common.h"
#include "groups/groups.h"

namespace {

struct Parse {
  const GroupFrame *frame;
  std::vector<char *> *vector;
  int kept;
};

void parse(void *arg) {
  Parse *p = static_cast<Parse *>(arg);
  argparse parser;
  argparse_init(&parser, p->frame->options, nullptr, ARGPARSE_IGNORE_UNKNOWN_ARGS);
  argparse_usage_text(&parser, p->frame->usage);
  argparse_describe(&parser, p->frame->description, p->frame->epilog);
  p->kept = argparse_parse(&parser, static_cast<int>(p->vector->size()) - 1, p->vector->data());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  if (size < 1) return 0;
  fuzz_root();
  const GroupEntry &group = kGroups[data[0] % kGroupCount];
  std::vector<std::string> words = fuzz_words(data + 1, size - 1, 24);
  words.insert(words.begin(), group.name);
  std::vector<char *> vector;
  for (std::string &word : words) vector.push_back(&word[0]);
  vector.push_back(nullptr);
  const std::vector<char *> given(vector);

  g_options.json = 0;
  Parse p{group.frame, &vector, -1};
  int exited = fuzz_trap_exit(parse, &p);
  if (exited >= 0) {
    if (exited != 0 && exited != 1) abort();
    return 0;
  }
  int count = static_cast<int>(given.size()) - 1;
  if (p.kept < 0 || p.kept > count - 1 || vector[static_cast<size_t>(p.kept)] != nullptr) abort();
  // Kept words are words of the line, in the order given.
  size_t from = 1;
  for (int i = 0; i < p.kept; i++) {
    while (from < given.size() && given[from] != vector[static_cast<size_t>(i)]) from++;
    if (from == given.size()) abort();
    from++;
  }
  if (g_options.json < 0) abort();
  return 0;
}
