// Operating-system helpers: file tests, directory creation, finding a process
// by name, and shell commands with or without their output.
#pragma once

#include <cstddef>

#include "sys/text.h"

// 1 if the path exists (access F_OK), 0 if not or null.
int file_exists(const char *path);
// The same on a path formatted into 512 bytes; 0 for a null format.
int file_exists_fmt(const char *format, ...) __attribute__((format(printf, 1, 2)));
// Creates the path and its missing parents: parents 0700, the last one 0755.
// 0 when the path already exists, else mkdir's result for the last component.
int make_dirs(const char *path);
// Id of the first process under /proc whose command name equals `name`, or -1.
long find_pid_by_name(const char *name);
// Both runners put "<sysroot>/usr/sbin" in front of PATH twice before the
// first program of a run (nothing but those programs reads PATH).
// Formats a command line (512 bytes), runs it through the shell and returns
// the wait status shifted right by 8 bits; 0 for a null format.
int run_command(const char *format, ...) __attribute__((format(printf, 1, 2)));
enum { CAPTURE_DISCARD = 1 };
// Runs the command with its standard output read through a pipe, up to the
// end of its first line; then the pipe is closed and the shell reaped, so a
// command that prints more is stopped by SIGPIPE. Returns that line as fgets
// gives it (at most 511 characters, its line end included; up to a NUL byte
// in it), or null when discarded or the pipe could not be opened. A command
// that prints nothing gives an empty text, not null: callers that pass the
// text on test for both.
OwnedText run_command_capture(int flags, const char *command);

// Writes `word` into `out` as one shell word: unchanged when it holds only
// characters the shell leaves alone, else single-quoted. Returns `out`
// (cut to `size`, always terminated).
const char *shell_word(char *out, size_t size, const char *word);
// A gateway path as one shell word, with the sysroot in front of it.
const char *shell_path(char *out, size_t size, const char *path);
