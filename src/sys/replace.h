// Replacing a file as a whole: readers of the destination see either the old
// content or the new one, never a half-written file. What ends up there is
// always a regular file of mode 0644, whatever the umask, the old file's mode
// or what stood at the destination (a link or a FIFO is replaced itself,
// never followed or written through; a directory is removed).
#pragma once

#include <signal.h>

#include <cstddef>

// A new file being made to replace `destination` (a gateway path). It is made
// in the destination's directory: unnamed (O_TMPFILE) where the file system
// has that, so that nothing is left when the process dies; else as a named
// temporary file ".<name>.vektool-<pid>-XXXXXX", after removing those that a
// process no longer alive left behind. A named file is also removed when
// TERM, INT or HUP ends the process. Without a commit the new file is
// discarded and the destination stays as it was. While one lives, a write
// past the file-size limit fails instead of ending the process (SIGXFSZ).
class Replacement {
 public:
  // `unnamed` false makes a named temporary file even where O_TMPFILE works.
  explicit Replacement(const char *destination, bool unnamed = true);
  ~Replacement();
  Replacement(const Replacement &) = delete;
  Replacement &operator=(const Replacement &) = delete;

  // True while the file exists and every write to it succeeded.
  bool ok() const { return fd_ >= 0 && !failed_; }
  // Appends bytes; false (and from then on not ok) when a write fails.
  bool write(const char *bytes, size_t count);
  // Mode 0644, flushed to disk, renamed over the destination, the directory
  // flushed. False when it could not be put in place (or was not ok).
  bool commit();

 private:
  bool start_named(bool by_link);
  void drop_temp();

  int dir_fd_ = -1;
  int fd_ = -1;
  bool failed_ = false;
  bool named_ = false;    // temp_ exists in the directory
  bool armed_ = false;    // and the end signals remove it
  char name_[256] = "";   // the destination's last component
  char temp_[320] = "";   // the named temporary file
  struct sigaction saved_xfsz_;
  bool xfsz_saved_ = false;
};

// Copies `source` (opened as open_source does) over `destination` through a
// Replacement. Bytes copied; 0 for an empty source (nothing is replaced); -1
// when the source cannot be read or a write fails (full disk, file-size
// limit); -2 when the new file cannot be made. On failure the destination is
// left as it was.
long long replace_file(const char *destination, const char *source);
