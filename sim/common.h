// Small helpers shared by every part of the simulator: owned descriptors,
// whole-file reads and atomic replacement, the sysroot layout and the journal.
#pragma once

#include <dirent.h>
#include <sys/types.h>

#include <cstddef>
#include <cstdio>
#include <string>
#include <vector>

// An owned file descriptor.
class Fd {
 public:
  Fd() = default;
  explicit Fd(int fd) : fd_(fd) {}
  Fd(const Fd &) = delete;
  Fd &operator=(const Fd &) = delete;
  Fd(Fd &&o) noexcept : fd_(o.release()) {}
  Fd &operator=(Fd &&o) noexcept;
  ~Fd();
  int get() const { return fd_; }
  bool ok() const { return fd_ >= 0; }
  int release();
  void reset(int fd = -1);

 private:
  int fd_ = -1;
};

// An owned directory stream.
class DirHandle {
 public:
  explicit DirHandle(const char *path);
  DirHandle(const DirHandle &) = delete;
  DirHandle &operator=(const DirHandle &) = delete;
  ~DirHandle();
  DIR *get() const { return dir_; }

 private:
  DIR *dir_ = nullptr;
};

// Whole-file access. read_file is false when the file cannot be opened.
bool read_file(const std::string &path, std::string *out);
// Writes through a temporary file and a rename, so a reader sees either the
// old or the new content; the new file gets `mode`.
bool write_file(const std::string &path, const std::string &data, mode_t mode = 0644);
bool append_file(const std::string &path, const std::string &data);
bool make_dirs(const std::string &path, mode_t mode = 0755);
bool remove_tree(const std::string &path);
bool path_exists(const std::string &path);  // lstat succeeds
bool is_dir(const std::string &path);
std::string dir_name(const std::string &path);
std::string base_name(const std::string &path);
// Names in a directory (not "." and ".."), unsorted.
std::vector<std::string> list_dir(const std::string &path);

std::string trim(const std::string &s);
std::vector<std::string> split_words(const std::string &s);
bool parse_int(const std::string &s, long *out);  // whole text, base 10
std::string strprintf(const char *format, ...) __attribute__((format(printf, 1, 2)));

// Journal escaping: printable ASCII stays, backslash becomes "\\", newline
// "\n", tab "\t", every other byte "\xHH".
std::string escape_bytes(const char *data, size_t len);
// A program argument as the journal shows it: bare when it is non-empty and
// holds only printable characters other than space, '"' and '\'; otherwise
// in double quotes with the escapes above and '"' as "\"".
std::string quote_word(const std::string &word);

// The layout of a simulated gateway under its sysroot R.
struct SimRoot {
  std::string root;  // R, absolute, no trailing slash

  std::string sim() const { return root + "/.sim"; }
  // Where the simulated kernel keeps the file a gateway path names: control
  // files and process entries under /proc live in the backing tree
  // R/.sim/proc, every other path is R followed by the path.
  std::string backing(const std::string &gateway_path) const;
  std::string host(const std::string &gateway_path) const { return root + gateway_path; }
  std::string journal_path() const { return sim() + "/journal"; }
  void journal(const std::string &line) const;
  // A path as the journal shows it: R replaced by "$R" where it starts a
  // path component run (R followed by "/" or the end).
  std::string hide_root(const std::string &text) const;
};

// Absolute form of a path (relative to the current directory).
std::string absolute_path(const std::string &path);
// The running program's own executable.
std::string self_exe();
