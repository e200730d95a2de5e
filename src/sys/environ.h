// The process environment of a run: where the executable lies and PATH.
#pragma once

// Reads the link /proc/self/exe into `buffer` (at most `size` bytes, not
// terminated by itself: pass a zeroed buffer). Returns readlink's result.
int get_exe_path(char *buffer, int size);
// Formats a directory (256 bytes) and puts it in front of PATH, followed by ":"
// and the old value when PATH was set (512 bytes in all). Null does nothing.
void prepend_path_env(const char *format, ...) __attribute__((format(printf, 1, 2)));
// Makes sure descriptors 0, 1 and 2 are open: a missing one becomes /dev/null
// (the system's own, whatever the sysroot), read-only, so that no file the
// tool opens later takes its number (a result line written into a control
// file), and writing to it fails as it would on a closed descriptor.
void keep_standard_descriptors();
