// Owners of the system's handles: each closes its handle when it goes out of
// scope, so that no early return leaks one.
#pragma once

#include <dirent.h>
#include <unistd.h>

#include <cstdio>
#include <memory>

// A file descriptor; -1 holds nothing.
class Fd {
 public:
  explicit Fd(int fd) : fd_(fd) {}
  Fd(const Fd &) = delete;
  Fd &operator=(const Fd &) = delete;
  ~Fd() {
    if (fd_ >= 0) close(fd_);
  }
  int get() const { return fd_; }
  bool ok() const { return fd_ >= 0; }

 private:
  int fd_;
};

struct FileCloser {
  void operator()(FILE *file) const { fclose(file); }
};
using File = std::unique_ptr<FILE, FileCloser>;

struct DirCloser {
  void operator()(DIR *dir) const { closedir(dir); }
};
using Dir = std::unique_ptr<DIR, DirCloser>;
