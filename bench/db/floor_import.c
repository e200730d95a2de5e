/* The floor of the database import: the same system calls as vektool's
 * handshake (the clean command through the shell, info reads until the
 * module is empty, the 4-byte size, the image in 512-byte blocks, the final
 * info read), with nothing else around them.
 *   floor_import HOST_PATH_OF_IMAGE   (VEKTOOL_SYSROOT: the gateway) */
#include <fcntl.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <unistd.h>

static const char *root;

static int read_info(int *writable, int *size, unsigned long long *epoch) {
  char path[4096], text[4096];
  size_t used = 0;
  ssize_t n;
  int fd;
  snprintf(path, sizeof path, "%s/proc/kmod_xdn/grpxdb_info", root);
  fd = open(path, O_RDONLY);
  if (fd < 0) return 0;
  while (used < sizeof text - 1 && (n = read(fd, text + used, 128)) > 0) used += (size_t)n;
  close(fd);
  text[used] = '\0';
  return sscanf(text, "writable: %d\nsize: %d\nepoch: %llu", writable, size, epoch) == 3;
}

int main(int argc, char **argv) {
  char path[4096], command[4200], block[512];
  int writable, size, attempt, in, out;
  unsigned long long epoch;
  int32_t announced;
  off_t end;
  ssize_t n;
  root = getenv("VEKTOOL_SYSROOT");
  if (argc != 2 || !root) return 2;
  in = open(argv[1], O_RDONLY);
  if (in < 0) return 20;
  end = lseek(in, 0, SEEK_END);
  close(in);
  if (end < 1) return 20;
  snprintf(command, sizeof command, "echo \"1\" > %s/proc/kmod_xdn/grpxdb_clean", root);
  if (system(command) < 0) return 71;
  for (attempt = 0;; ) {
    if (read_info(&writable, &size, &epoch) && writable == 1 && size == 0 && epoch == 0) break;
    usleep(100000);
    if (++attempt == 10) return 71;
  }
  announced = (int32_t)end;
  snprintf(path, sizeof path, "%s/proc/kmod_xdn/grpxdb_size", root);
  out = open(path, O_WRONLY);
  if (out >= 0) {
    if (write(out, &announced, sizeof announced) < 0) { /* checked below */ }
    close(out);
  }
  in = open(argv[1], O_RDONLY);
  snprintf(path, sizeof path, "%s/proc/kmod_xdn/grpxdb_import", root);
  out = open(path, O_WRONLY);
  if (in >= 0 && out >= 0) {
    while ((n = read(in, block, sizeof block)) > 0)
      if (write(out, block, (size_t)n) != n) break;
  }
  if (in >= 0) close(in);
  if (out >= 0) close(out);
  if (!read_info(&writable, &size, &epoch) || writable != 0 || size != announced || epoch == 0)
    return 71;
  return 0;
}
