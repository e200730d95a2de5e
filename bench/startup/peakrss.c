/* Runs a command RUNS times and prints the largest peak resident set size
 * (kB) that one run reached, from the kernel's account of the child.
 *
 *   peakrss RUNS COMMAND [ARGS...]
 */
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

int main(int argc, char **argv) {
  if (argc < 3) return 2;
  int runs = atoi(argv[1]);
  long peak = 0;
  for (int i = 0; i < runs; i++) {
    pid_t pid = fork();
    if (pid < 0) return 1;
    if (pid == 0) {
      int null = open("/dev/null", O_WRONLY);
      if (null >= 0) {
        dup2(null, 1);
        dup2(null, 2);
      }
      execv(argv[2], argv + 2);
      _exit(127);
    }
    int status;
    struct rusage usage;
    if (wait4(pid, &status, 0, &usage) < 0) return 1;
    if (usage.ru_maxrss > peak) peak = usage.ru_maxrss;
  }
  printf("%ld\n", peak);
  return 0;
}
