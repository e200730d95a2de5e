#include "db/appid.h"

#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <memory>

#include "result.h"
#include "sys/handles.h"
#include "sys/procfs.h"
#include "sys/scan.h"
#include "sys/source.h"

namespace {

struct LineStorage {
  char *text = nullptr;
  size_t capacity = 0;
  LineStorage() = default;
  LineStorage(const LineStorage &) = delete;
  LineStorage &operator=(const LineStorage &) = delete;
  ~LineStorage() { free(text); }
};

struct TableDeleter {
  void operator()(app_c6y_table *table) const { free(table); }
};

}  // namespace

void app_c6y_take_line(app_c6y_table *table, const char *line) {
  int category = 0, flags = 0;
  char name[32];
  if (scan32(line, "#%d,%d,%31s", &category, &flags, name) == 3 &&
      static_cast<unsigned int>(category) <= APP_C6Y_MAX) {
    table->current_c6y = category;
    return;
  }
  int id = 0;
  if (scan32(line, "%d:", &id) == 1 && static_cast<unsigned int>(id) < APP_ID_COUNT) {
    table->c6y[id] = static_cast<uint8_t>(table->current_c6y);
    if (id > table->max_app_id) table->max_app_id = id;
    table->num_app_id++;
  }
}

void app_c6y_parse(app_c6y_table *table, FILE *file) {
  memset(table, 0, sizeof *table);
  LineStorage line;
  while (getline(&line.text, &line.capacity, file) >= 0) app_c6y_take_line(table, line.text);
}

int app_c6y_push(const char *app_id_path, const char *control_file) {
  if (!app_id_path) return RESULT_FAILED;
  std::unique_ptr<app_c6y_table, TableDeleter> table(
      static_cast<app_c6y_table *>(calloc(1, sizeof(app_c6y_table))));
  if (!table) return RESULT_NO_MEMORY;
  int fd = open_source(app_id_path, nullptr);
  if (fd < 0) return RESULT_NO_FILE;
  File file(fdopen(fd, "r"));
  if (!file) {
    close(fd);
    return RESULT_NO_FILE;
  }
  app_c6y_parse(table.get(), file.get());
  file.reset();
  for (int id = 0; id < APP_ID_COUNT; id++) {
    unsigned char category = table->c6y[id];
    if (category != 0) write_proc_line(control_file, "set-appid-c6y %d %hhu", id, category);
  }
  return RESULT_OK;
}
