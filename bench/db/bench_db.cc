// Runs one database operation of vektool, as the tool runs it, against the
// gateway under VEKTOOL_SYSROOT:
//   bench_db push APP_ID     the application categories to /proc/vek/kctrl
//   bench_db import IMAGE    the group database import handshake
// Exit status: the operation's result.
#include <cstdio>
#include <cstring>

#include "db/appid.h"
#include "db/database.h"
#include "engine/interface.h"

int main(int argc, char **argv) {
  if (argc != 3) {
    fprintf(stderr, "usage: bench_db push|import FILE\n");
    return 2;
  }
  if (strcmp(argv[1], "push") == 0) return app_c6y_push(argv[2], kKctrl);
  if (strcmp(argv[1], "import") == 0) return db_import(kGroupDatabase, argv[2]);
  fprintf(stderr, "bench_db: unknown operation %s\n", argv[1]);
  return 2;
}
