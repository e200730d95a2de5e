// What every fuzz target shares: a scratch gateway of regular files that
// VEKTOOL_SYSROOT points at, a way to run one group entry as `vektool` would,
// and a trap that turns the exit() of an option error or of --help into a
// return, so that one input does not end the whole run.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// The scratch gateway's directory, made (with the installation's files) on
// first use.
const std::string &fuzz_root();
// Creates or replaces the file at a gateway path (directories included).
void fuzz_file(const std::string &gateway_path, const void *data, size_t size);
void fuzz_file(const std::string &gateway_path, const std::string &text);

// Runs the group named by words[0] with the rest of the words, as main hands
// them over, the JSON flag set to `json`. The exit status, or the status given
// to exit() inside. A group that is not built yet returns 255.
int fuzz_run(const std::vector<std::string> &words, int json);

// Cuts the bytes into at most `max` words at NUL bytes.
std::vector<std::string> fuzz_words(const uint8_t *data, size_t size, size_t max);

// Runs `body` with exit() trapped: the status given to exit(), or -1 when
// the body returned. The body must not own resources across the trap.
int fuzz_trap_exit(void (*body)(void *), void *arg);
