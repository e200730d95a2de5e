// The application-id file ("app.id") and the application-to-category table
// that the engine classifies traffic with.
#pragma once

#include <cstdint>
#include <cstdio>

enum { APP_ID_COUNT = 65536, APP_C6Y_MAX = 127 };

struct app_c6y_table {
  int32_t max_app_id;   // largest id seen
  int32_t num_app_id;   // application lines taken, duplicates counted again
  int32_t current_c6y;  // category of the last valid header; 0 before one
  uint8_t c6y[APP_ID_COUNT];  // category of each id; 0: none
};

// Takes one line of the file into the table: a category header
// "#<category>,<number>,<name>" (category at most 127) sets the current
// category; an application line "<id>:" (id below 65536) gets it. Any other
// line is ignored.
void app_c6y_take_line(app_c6y_table *table, const char *line);
// Reads a whole stream into a cleared table.
void app_c6y_parse(app_c6y_table *table, FILE *file);
// Parses the file and writes "set-appid-c6y <id> <category>" to
// `control_file` for every id with a category, in ascending order, one verb
// per write. 0; 1 with no path; 4 when the file cannot be opened.
int app_c6y_push(const char *app_id_path, const char *control_file);
