// Built into every program of a sanitizer build (VEKTOOL_SANITIZE=ON), however
// it is started: the first report ends the program with status 86, so that no
// test can pass over one. Leaks count. The environment's ASAN_OPTIONS and
// UBSAN_OPTIONS still add to these or change them (the transcripts' runner
// sends reports to files that way).
extern "C" {

const char *__asan_default_options() {
  return "halt_on_error=1:exitcode=86:detect_leaks=1:detect_stack_use_after_return=1:"
         "check_initialization_order=1:strict_init_order=1:strict_string_checks=1";
}

const char *__ubsan_default_options() {
  return "halt_on_error=1:exitcode=86:print_stacktrace=1";
}

}  // extern "C"
