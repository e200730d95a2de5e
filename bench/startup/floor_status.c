/* The floor of `vektool vek status`: the least any tool doing that job does.
 * It loads the same vek.ini with iniparser, finds the service's pid by the
 * names in ROOT/proc, checks that the engine is loaded, reads the same dozen
 * control files and builds and prints the same document with cJSON, as the
 * command must (the cloud switch is read from JSON too).
 *
 *   floor_status VEK_INI ROOT
 */
#include <cjson/cJSON.h>
#include <dirent.h>
#include <iniparser.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>

static const char *root;

/* The first line of ROOT/PATH, its line end and outer blanks cut ("" when unreadable). */
static const char *first_line(const char *path, char *text, size_t size) {
  char full[512];
  snprintf(full, sizeof full, "%s%s", root, path);
  text[0] = '\0';
  FILE *file = fopen(full, "r");
  if (!file) return text;
  if (!fgets(text, (int)size, file)) text[0] = '\0';
  fclose(file);
  size_t n = strlen(text);
  while (n > 0 && (text[n - 1] == '\n' || text[n - 1] == ' ')) text[--n] = '\0';
  char *start = text;
  while (*start == ' ') start++;
  return start;
}

/* The text after TAG on its line of ROOT/PATH. */
static const char *record(const char *path, const char *tag, char *text, size_t size) {
  char full[512];
  snprintf(full, sizeof full, "%s%s", root, path);
  text[0] = '\0';
  FILE *file = fopen(full, "r");
  if (!file) return text;
  size_t tag_len = strlen(tag);
  while (fgets(text, (int)size, file)) {
    if (strncmp(text, tag, tag_len) != 0) continue;
    text[strcspn(text, "\n")] = '\0';
    fclose(file);
    return text + tag_len;
  }
  fclose(file);
  text[0] = '\0';
  return text;
}

static unsigned long long epoch(const char *path) {
  char text[512];
  return strtoull(record(path, "epoch: ", text, sizeof text), NULL, 10);
}

static long service_pid(void) {
  char path[512];
  snprintf(path, sizeof path, "%s/proc", root);
  DIR *proc = opendir(path);
  if (!proc) return -1;
  long found = -1;
  struct dirent *entry;
  while (found < 0 && (entry = readdir(proc)) != NULL) {
    char *end;
    long pid = strtol(entry->d_name, &end, 10);
    if (end == entry->d_name || *end) continue;
    char comm_path[64], comm[64];
    snprintf(comm_path, sizeof comm_path, "/proc/%ld/comm", pid);
    if (strcmp(first_line(comm_path, comm, sizeof comm), "vek_service") == 0) found = pid;
  }
  closedir(proc);
  return found;
}

int main(int argc, char **argv) {
  if (argc < 3) return 2;
  root = argv[2];
  dictionary *ini = iniparser_load(argv[1]);
  if (!ini) return 255;
  long pid = service_pid();
  char path[512];
  struct stat st;
  snprintf(path, sizeof path, "%s/proc/vek", root);
  if (pid < 0 || stat(path, &st) != 0 || !S_ISDIR(st.st_mode)) {
    puts("{\"return\":103}");
    iniparser_freedict(ini);
    return 0;
  }
  char text[512];
  cJSON *doc = cJSON_CreateObject();
  cJSON_AddNumberToObject(doc, "return", 0);
  cJSON *state = cJSON_AddObjectToObject(doc, "status");
  cJSON_AddStringToObject(state, "version", record("/proc/vek/version", "s:major:", text, sizeof text));
  cJSON_AddStringToObject(state, "tag", record("/proc/vek/version", "s:minor:", text, sizeof text));
  cJSON_AddNumberToObject(state, "service_pid", pid);
  cJSON_AddNumberToObject(state, "qos", atoi(first_line("/proc/vek/qos_enabled", text, sizeof text)) != 0);
  cJSON_AddNumberToObject(state, "parental control",
                          atoi(first_line("/proc/vek/iam_enabled", text, sizeof text)) != 0);
  cJSON *cloud = cJSON_Parse(first_line("/proc/vek/fc_ctrl", text, sizeof text));
  const cJSON *ec = cJSON_GetObjectItem(cloud, "ec");
  cJSON_AddNumberToObject(state, "cloud", cJSON_IsNumber(ec) && ec->valueint != 0);
  cJSON_AddNumberToObject(state, "flows_limitation",
                          strtol(first_line("/proc/vek/conn_max", text, sizeof text), NULL, 10));
  cJSON_AddStringToObject(state, "cache0_max_size", first_line("/proc/vek/dbcf_max_size", text, sizeof text));
  cJSON_AddNumberToObject(state, "cache0_limitation",
                          strtol(first_line("/proc/vek/dbcf_max_count", text, sizeof text), NULL, 10));
  cJSON_AddStringToObject(state, "qos_mode", first_line("/proc/vek/qos_mode", text, sizeof text));
  cJSON_AddStringToObject(state, "upstream_port", first_line("/proc/vek/malnet_up", text, sizeof text));
  cJSON_AddStringToObject(state, "downstream_port", first_line("/proc/vek/malnet_dw", text, sizeof text));
  cJSON_AddNumberToObject(state, "vek_xdb_date", epoch("/proc/kmod_xdn/grpxdb_info"));
  cJSON_AddNumberToObject(state, "app_xdb_date", epoch("/proc/kmod_xdn/sidxdb_info"));
  cJSON_AddNumberToObject(state, "vek_xr_date", epoch("/proc/kmod_xapp/xr_info"));
  char *printed = cJSON_PrintUnformatted(doc);
  puts(printed);
  cJSON_free(printed);
  cJSON_Delete(doc);
  cJSON_Delete(cloud);
  iniparser_freedict(ini);
  return 0;
}
