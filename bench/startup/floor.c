/* The floor of a start-up: the least any tool doing vektool's job does for one
 * read command. It loads the same vek.ini with iniparser, opens the same
 * control file, finds the same record and prints the text after its tag
 * (with --json inside {"return":0,"result":...}).
 *
 *   floor VEK_INI CONTROL_FILE TAG [--json]
 */
#include <iniparser.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

int main(int argc, char **argv) {
  if (argc < 4) return 2;
  dictionary *ini = iniparser_load(argv[1]);
  if (!ini) return 255;
  FILE *file = fopen(argv[2], "r");
  if (!file) {
    iniparser_freedict(ini);
    return 1;
  }
  size_t tag_len = strlen(argv[3]);
  char *line = NULL;
  size_t cap = 0;
  ssize_t len;
  int status = 1;
  while ((len = getline(&line, &cap, file)) >= 0) {
    if (strncmp(line, argv[3], tag_len) != 0) continue;
    while (len > 0 && (line[len - 1] == '\n' || line[len - 1] == ' ')) line[--len] = '\0';
    if (argc > 4 && strcmp(argv[4], "--json") == 0)
      printf("{\"return\":0,\"result\":%s}\n", line + tag_len);
    else
      printf("%s\n", line + tag_len);
    status = 0;
    break;
  }
  free(line);
  fclose(file);
  iniparser_freedict(ini);
  return status;
}
