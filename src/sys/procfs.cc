#include "sys/procfs.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "sys/handles.h"
#include "sys/source.h"
#include "sys/sysroot.h"

namespace {

// The lines of a control file, read in blocks, never more than
// CONTROL_FILE_MAX bytes in all. Only the line being looked at is kept. The
// first block is the reader's own: an engine record file fits in it, and a
// heap block of that size would be the first large allocation after the
// configuration's dictionary was freed, for which the C library first sorts
// every freed chunk.
class LineReader {
 public:
  explicit LineReader(int fd) : fd_(fd), data_(first_) {}
  LineReader(const LineReader &) = delete;
  LineReader &operator=(const LineReader &) = delete;
  ~LineReader() {
    if (data_ != first_) free(data_);
  }

  // The next line, newline included (the last line may lack it): 1 with a
  // line, 0 at the end of the file, -1 when the file runs past the ceiling.
  int next(const char **text, size_t *length) {
    size_t scanned = begin_;
    for (;;) {
      const void *newline = end_ > scanned ? memchr(data_ + scanned, '\n', end_ - scanned) : nullptr;
      if (newline || (at_end_ && begin_ < end_)) {
        size_t stop = newline ? static_cast<size_t>(static_cast<const char *>(newline) - data_) + 1 : end_;
        *text = data_ + begin_;
        *length = stop - begin_;
        begin_ = stop;
        return 1;
      }
      if (at_end_) return 0;
      // Keep only the unfinished line, at the front, and read on after it.
      if (begin_ > 0) {
        memmove(data_, data_ + begin_, end_ - begin_);
        end_ -= begin_;
        begin_ = 0;
      }
      scanned = end_;
      int got = fill();
      if (got < 0) return -1;
      if (got == 0) at_end_ = true;
    }
  }

 private:
  enum { kBlock = 4096 };

  // One block after what is held: 1 when bytes came, 0 at the end (a read
  // error, such as a FIFO with nothing to give, ends the file), -1 past the
  // ceiling or out of memory.
  int fill() {
    if (end_ + kBlock > capacity_) {
      size_t size = capacity_ * 2 > end_ + kBlock ? capacity_ * 2 : end_ + kBlock;
      char *grown;
      if (data_ == first_) {
        grown = static_cast<char *>(malloc(size));
        if (grown) memcpy(grown, data_, end_);
      } else {
        grown = static_cast<char *>(realloc(data_, size));
      }
      if (!grown) return -1;
      data_ = grown;
      capacity_ = size;
    }
    ssize_t n = read(fd_, data_ + end_, kBlock);
    if (n < 1) return 0;
    total_ += static_cast<size_t>(n);
    if (total_ > CONTROL_FILE_MAX) return -1;
    end_ += static_cast<size_t>(n);
    return 1;
  }

  int fd_;
  char first_[kBlock];
  char *data_;
  size_t capacity_ = kBlock;
  size_t begin_ = 0;  // where the next line starts
  size_t end_ = 0;    // end of the bytes held
  size_t total_ = 0;  // bytes read from the file so far
  bool at_end_ = false;
};

// Opens a gateway path, never blocking (a FIFO with no writer opens for
// reading and reads as empty; with no reader it cannot be opened for
// writing). Control files and other files alike ignore the flag. Nothing
// here creates a file.
int open_path(const char *path, int flags) {
  if (!path) return -1;
  return open(SysPath(path), flags | O_NONBLOCK | O_CLOEXEC);
}

}  // namespace

int write_proc_line(const char *path, const char *format, ...) {
  if (!format) return 0;
  char verb[512];
  va_list args;
  va_start(args, format);
  vsnprintf(verb, sizeof verb, format, args);
  va_end(args);
  Fd fd(open_path(path, O_WRONLY));
  if (!fd.ok()) return -1;
  // The engine takes one verb per write: never split it.
  return static_cast<int>(write(fd.get(), verb, strlen(verb)));
}

int write_proc_data(const char *path, const void *data, int length) {
  Fd fd(open_path(path, O_WRONLY));
  if (!fd.ok()) return -1;
  if (!data || length < 1) return 0;
  const char *bytes = static_cast<const char *>(data);
  int total = 0;
  while (total < length) {
    int piece = length - total < 128 ? length - total : 128;
    ssize_t n = write(fd.get(), bytes + total, static_cast<size_t>(piece));
    if (n < 1) break;
    total += static_cast<int>(n);
  }
  return total;
}

namespace {

// The rest of an open file, as read_proc_file hands it out.
int read_whole(int fd, OwnedText *data, int *length) {
  // procfs reports a size of 0: read until the end, whatever stat says.
  TextBuffer buffer;
  char chunk[128];
  for (;;) {
    ssize_t n = read(fd, chunk, sizeof chunk);
    if (n < 1) break;  // end of file, or an error taken as the end
    unsigned int count = static_cast<unsigned int>(n);
    if (buffer.length + count > CONTROL_FILE_MAX) return -1;
    // Room doubles ahead of the appends, so that a large file is not copied
    // over once for every chunk.
    if (buffer.length + count + 1 >= buffer.capacity) {
      text_buffer_reserve(&buffer, buffer.capacity < 2048 ? 4096 : 2 * buffer.capacity);
    }
    text_buffer_append(&buffer, chunk, count);
  }
  unsigned int count = 0;
  OwnedText text = text_buffer_take(&buffer, &count);
  if (data) *data = std::move(text);
  if (length) *length = static_cast<int>(count);
  return 0;
}

}  // namespace

int read_proc_file(const char *path, OwnedText *data, int *length) {
  Fd fd(open_path(path, O_RDONLY));
  if (!fd.ok()) return -1;
  return read_whole(fd.get(), data, length);
}

int read_daemon_file(const char *path, OwnedText *data, int *length) {
  const char *slash = path && path[0] == '/' ? strrchr(path, '/') : nullptr;
  // A directory and a name: "/tmp/bs/bs.json". An empty name ("/tmp/bs/") is
  // one that openat does not find.
  if (!slash || slash == path) return -1;
  char dir[256];
  size_t dir_length = static_cast<size_t>(slash - path);
  if (dir_length >= sizeof dir) return -1;
  memcpy(dir, path, dir_length);
  dir[dir_length] = '\0';
  // Anyone may create or replace the directory or the file: a link in either
  // place is refused, and so is anything but a regular file of one name (a
  // FIFO, which must not hold the tool, or a hard link to another file).
  Fd directory(open(SysPath(dir), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  if (!directory.ok()) return -1;
  Fd fd(openat(directory.get(), slash + 1, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  if (!fd.ok()) return -1;
  struct stat st;
  if (fstat(fd.get(), &st) != 0 || !S_ISREG(st.st_mode) || st.st_nlink != 1) return -1;
  return read_whole(fd.get(), data, length);
}

int read_file_into(const char *path, char *buffer, int size) {
  if (!buffer || size < 1) return -1;
  Fd fd(open_path(path, O_RDONLY));
  if (!fd.ok()) {
    buffer[0] = '\0';
    return -1;
  }
  ssize_t n = read(fd.get(), buffer, static_cast<size_t>(size));
  if (n < 0) {
    buffer[0] = '\0';
    return -1;
  }
  // A full read loses its last byte to the terminator.
  buffer[n < size ? n : size - 1] = '\0';
  return static_cast<int>(n);
}

int find_record(const char *path, const char *tag, OwnedText *line) {
  if (!path) return 1;
  Fd fd(open_path(path, O_RDONLY));
  if (!fd.ok()) return 1;
  if (!tag) return 0;
  const size_t tag_length = strlen(tag);
  LineReader reader(fd.get());
  const char *text;
  size_t length;
  int got;
  while ((got = reader.next(&text, &length)) > 0) {
    // The line holds at least the tag's length, which the comparison reads.
    if (length < tag_length || !begins_with(text, tag)) continue;
    if (line) *line = str_ndup(text, static_cast<unsigned int>(length));
    return 0;
  }
  return got < 0 ? 1 : 0;
}

int copy_file(const char *destination, const char *source) {
  Fd in(open_source(source, nullptr));
  if (!in.ok()) return -1;
  Fd out(open_path(destination, O_WRONLY | O_TRUNC));
  if (!out.ok()) return -2;
  bool short_write = false;
  long long total = read_blocks(in.get(), -1, [&](const char *block, size_t count) {
    short_write = write(out.get(), block, count) != static_cast<ssize_t>(count);
    return !short_write;
  });
  return total < 0 || short_write ? -1 : static_cast<int>(total);
}
