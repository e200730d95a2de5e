// Prints vektool's bash completion from the group table the tool dispatches
// from (kGroups, with each group's commands and options), so that the
// completion knows exactly the groups, commands and options that are built.
//
//   vektool-completion OUTPUT     (run by the build; "-" writes to stdout)
#include <cstdio>
#include <cstring>

#include "argparse.h"
#include "groups/groups.h"
#include "sys/handles.h"

namespace {

bool takes_value(const argparse_option &option) {
  switch (option.type) {
    case ARGPARSE_OPT_INTEGER:
    case ARGPARSE_OPT_UINTEGER:
    case ARGPARSE_OPT_FLOAT:
    case ARGPARSE_OPT_STRING:
      return true;
    default:
      return false;
  }
}

bool has_word(const GroupFrame &frame, const char *word) {
  for (const argparse_option *o = frame.options; o->type != ARGPARSE_OPT_END; o++) {
    if (word[1] != '-' && o->short_name == word[1] && word[2] == '\0') return true;
    if (word[1] == '-' && o->long_name && strcmp(o->long_name, word + 2) == 0) return true;
  }
  return false;
}

// The option words of one group, space-separated ("-h --help --json ..."),
// then the global options that take a value (-i, --ini, -l, --log), which
// stand anywhere after the group word, where the group has no such option
// itself. With values_only, only the words that take a value.
void print_option_words(FILE *out, const GroupFrame &frame, bool values_only) {
  const char *sep = "";
  for (const argparse_option *o = frame.options; o->type != ARGPARSE_OPT_END; o++) {
    if (o->type == ARGPARSE_OPT_GROUP) continue;
    if (values_only && !takes_value(*o)) continue;
    if (o->short_name) {
      fprintf(out, "%s-%c", sep, o->short_name);
      sep = " ";
    }
    if (o->long_name) {
      fprintf(out, "%s--%s", sep, o->long_name);
      sep = " ";
    }
  }
  static const char *const kGlobals[] = {"-i", "--ini", "-l", "--log"};
  for (const char *global : kGlobals) {
    if (has_word(frame, global)) continue;
    fprintf(out, "%s%s", sep, global);
    sep = " ";
  }
}

void print_script(FILE *out) {
  fputs(
      "# bash completion for vektool: groups, commands and options.\n"
      "# Generated at build time from the tool's own command tables.\n"
      "\n"
      "_vektool() {\n"
      "  local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD-1]}\n"
      "  local commands='' options='' takes_value='' i word have_command=''\n"
      "  COMPREPLY=()\n"
      "  # The global options may stand anywhere after the group word.\n"
      "  case $prev in\n"
      "    -i|--ini|-l|--log)\n"
      "      [ \"$COMP_CWORD\" -gt 2 ] && { COMPREPLY=($(compgen -f -- \"$cur\")); return 0; } ;;\n"
      "  esac\n"
      "  if [ \"$COMP_CWORD\" -eq 1 ]; then\n"
      "    COMPREPLY=($(compgen -W '",
      out);
  for (size_t g = 0; g < kGroupCount; g++) fprintf(out, "%s%s", g ? " " : "", kGroups[g].name);
  fputs(
      "' -- \"$cur\"))\n"
      "    return 0\n"
      "  fi\n"
      "  case ${COMP_WORDS[1]} in\n",
      out);
  for (size_t g = 0; g < kGroupCount; g++) {
    const GroupFrame &frame = *kGroups[g].frame;
    fprintf(out, "    %s)\n      commands='", kGroups[g].name);
    for (size_t c = 0; c < frame.command_count; c++) {
      // A name listed twice runs its first handler: offer it once.
      bool seen = false;
      for (size_t d = 0; d < c; d++) seen = seen || strcmp(frame.commands[d].name, frame.commands[c].name) == 0;
      if (!seen) fprintf(out, "%s%s", c ? " " : "", frame.commands[c].name);
    }
    fputs("'\n      options='", out);
    print_option_words(out, frame, false);
    fputs("'\n      takes_value='", out);
    print_option_words(out, frame, true);
    fputs("' ;;\n", out);
  }
  fputs(
      "    *) return 0 ;;\n"
      "  esac\n"
      "  takes_value=\" $takes_value \"\n"
      "  case $takes_value in *\" $prev \"*) return 0 ;; esac\n"
      "  if [[ $cur == -* ]]; then\n"
      "    COMPREPLY=($(compgen -W \"$options\" -- \"$cur\"))\n"
      "    return 0\n"
      "  fi\n"
      "  # The first word that is neither an option nor an option's value is the\n"
      "  # command; after it come the command's arguments.\n"
      "  for ((i = 2; i < COMP_CWORD; i++)); do\n"
      "    word=${COMP_WORDS[i]}\n"
      "    case $word in\n"
      "      --) break ;;\n"
      "      -*=*) ;;\n"
      "      -?*) case $takes_value in *\" $word \"*) i=$((i + 1)) ;; esac ;;\n"
      "      *) have_command=1; break ;;\n"
      "    esac\n"
      "  done\n"
      "  [ -n \"$have_command\" ] && return 0\n"
      "  COMPREPLY=($(compgen -W \"$commands\" -- \"$cur\"))\n"
      "}\n"
      "complete -F _vektool vektool\n",
      out);
}

}  // namespace

int main(int argc, char **argv) {
  if (argc != 2) {
    fputs("usage: vektool-completion OUTPUT\n", stderr);
    return 2;
  }
  if (strcmp(argv[1], "-") == 0) {
    print_script(stdout);
    return fflush(stdout) == 0 ? 0 : 1;
  }
  File out(fopen(argv[1], "w"));
  if (!out) {
    perror(argv[1]);
    return 1;
  }
  print_script(out.get());
  return ferror(out.get()) ? 1 : 0;
}
