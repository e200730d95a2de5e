/* The floor of the category push: the same system calls as vektool's (read
 * the file line by line, then open, write one verb and close the control
 * file for every application), with nothing else around them.
 *   floor_push HOST_PATH_OF_APP_ID   (VEKTOOL_SYSROOT: the gateway) */
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

static unsigned char c6y[65536];

int main(int argc, char **argv) {
  const char *root = getenv("VEKTOOL_SYSROOT");
  char control[4096], verb[512], name[32];
  char *line = NULL;
  size_t capacity = 0;
  int current = 0, a, b;
  FILE *file;
  if (argc != 2 || !root) return 2;
  snprintf(control, sizeof control, "%s/proc/vek/kctrl", root);
  file = fopen(argv[1], "r");
  if (!file) return 4;
  while (getline(&line, &capacity, file) >= 0) {
    if (sscanf(line, "#%d,%d,%31s", &a, &b, name) == 3 && (unsigned)a <= 127) {
      current = a;
    } else if (sscanf(line, "%d:", &a) == 1 && (unsigned)a < 65536) {
      c6y[a] = (unsigned char)current;
    }
  }
  free(line);
  fclose(file);
  for (a = 0; a < 65536; a++) {
    int fd, n;
    if (!c6y[a]) continue;
    n = snprintf(verb, sizeof verb, "set-appid-c6y %d %hhu", a, c6y[a]);
    fd = open(control, O_WRONLY);
    if (fd < 0) continue;
    if (write(fd, verb, (size_t)n) < 0) { /* ignored, as the tool does */ }
    close(fd);
  }
  return 0;
}
