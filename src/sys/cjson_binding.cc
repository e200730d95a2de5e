// cJSON, bound when a command first uses it.
//
// Most runs never touch JSON (`mon get-conn-count`, `qos get-algo --json` print
// with printf), yet a binary linked against libcjson.so.1 has the dynamic
// loader map and relocate it at every start, and every symbol lookup of the
// run passes its table: about 40k instructions of a 500k-instruction command.
// Debian ships cJSON only as a shared library, so the tool is not linked
// against it: the functions below carry cJSON's own names and signatures
// (callers include <cjson/cJSON.h> and call cJSON as usual) and open
// libcjson.so.1 on the first call of any of them, then resolve each function
// once, at its own first call, as the loader's lazy binding would.
//
// The per-function pointers and the library handle are the only process-wide
// state here; they stand where the loader's GOT entries would.
//
// A library that cannot be opened, or lacks a function, ends the run as the
// dynamic loader ends one: its message on stderr and status 127.
#include <cjson/cJSON.h>
#include <dlfcn.h>
#include <stdio.h>
#include <unistd.h>

namespace {

const char kLibrary[] = "libcjson.so.1";

[[noreturn]] void binding_failed() {
  const char *why = dlerror();
  fprintf(stderr, "vektool: error while loading shared libraries: %s\n", why ? why : kLibrary);
  _exit(127);
}

void *cjson_function(const char *name) {
  static void *library;
  if (library == nullptr) {
    library = dlopen(kLibrary, RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) binding_failed();
  }
  void *function = dlsym(library, name);
  if (function == nullptr) binding_failed();
  return function;
}

}  // namespace

// Each forwarder resolves its function on its first call; a zero-initialised
// pointer needs no guard, and the tool runs on one thread.
#define VEK_CJSON(ret, name, params, args)                     \
  ret name params {                                            \
    using Function = ret(*) params;                            \
    static Function function;                                  \
    if (function == nullptr)                                   \
      function = reinterpret_cast<Function>(cjson_function(#name)); \
    return function args;                                      \
  }

extern "C" {
VEK_CJSON(cJSON *, cJSON_Parse, (const char *value), (value))
VEK_CJSON(char *, cJSON_PrintUnformatted, (const cJSON *item), (item))
VEK_CJSON(void, cJSON_Delete, (cJSON *item), (item))
VEK_CJSON(void, cJSON_free, (void *object), (object))
VEK_CJSON(int, cJSON_GetArraySize, (const cJSON *array), (array))
VEK_CJSON(cJSON *, cJSON_GetArrayItem, (const cJSON *array, int index), (array, index))
VEK_CJSON(cJSON *, cJSON_GetObjectItem, (const cJSON *const object, const char *const string),
          (object, string))
VEK_CJSON(char *, cJSON_GetStringValue, (const cJSON *const item), (item))
VEK_CJSON(double, cJSON_GetNumberValue, (const cJSON *const item), (item))
VEK_CJSON(cJSON_bool, cJSON_IsNumber, (const cJSON *const item), (item))
VEK_CJSON(cJSON_bool, cJSON_IsArray, (const cJSON *const item), (item))
VEK_CJSON(cJSON_bool, cJSON_IsObject, (const cJSON *const item), (item))
VEK_CJSON(cJSON *, cJSON_CreateTrue, (void), ())
VEK_CJSON(cJSON *, cJSON_CreateNumber, (double num), (num))
VEK_CJSON(cJSON *, cJSON_CreateString, (const char *string), (string))
VEK_CJSON(cJSON *, cJSON_CreateArray, (void), ())
VEK_CJSON(cJSON *, cJSON_CreateObject, (void), ())
VEK_CJSON(cJSON *, cJSON_CreateIntArray, (const int *numbers, int count), (numbers, count))
VEK_CJSON(cJSON_bool, cJSON_AddItemToArray, (cJSON *array, cJSON *item), (array, item))
VEK_CJSON(cJSON_bool, cJSON_AddItemToObject, (cJSON *object, const char *string, cJSON *item),
          (object, string, item))
VEK_CJSON(cJSON *, cJSON_DetachItemFromObject, (cJSON *object, const char *string),
          (object, string))
VEK_CJSON(cJSON_bool, cJSON_ReplaceItemInArray, (cJSON *array, int which, cJSON *newitem),
          (array, which, newitem))
VEK_CJSON(cJSON_bool, cJSON_ReplaceItemInObject, (cJSON *object, const char *string, cJSON *newitem),
          (object, string, newitem))
VEK_CJSON(cJSON *, cJSON_AddNumberToObject,
          (cJSON *const object, const char *const name, const double number), (object, name, number))
VEK_CJSON(cJSON *, cJSON_AddStringToObject,
          (cJSON *const object, const char *const name, const char *const string),
          (object, name, string))
}
