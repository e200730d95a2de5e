// Files the tool reads data from (a database image, app.id, a rule file):
// opened once, never blocking, and only when they are regular files; then
// read in blocks.
#pragma once

#include <unistd.h>

#include <cerrno>
#include <cstddef>

// Opens a gateway path for reading. Anything but a regular file (a FIFO, a
// device, a directory) is refused at once, as a file that cannot be read.
// When the file's directory is writable by everyone (/tmp), a link as its
// last component is refused too; elsewhere links are followed, as data files
// may be links to read-only images. The descriptor, or -1; `size` (when
// given) gets the file's size.
int open_source(const char *path, long long *size);

enum { COPY_BLOCK = 512 };

// Reads `fd` in blocks of at most COPY_BLOCK bytes until its end or until
// `limit` bytes (negative: no limit), and hands each block to
// `sink(block, count)`, which returns false to stop. The bytes handed over,
// or -1 when a read fails.
template <typename Sink>
long long read_blocks(int fd, long long limit, Sink &&sink) {
  char block[COPY_BLOCK];
  long long total = 0;
  while (limit < 0 || total < limit) {
    size_t want = sizeof block;
    if (limit >= 0 && limit - total < static_cast<long long>(want)) want = static_cast<size_t>(limit - total);
    ssize_t n = read(fd, block, want);
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) return -1;
    if (n == 0) break;
    if (!sink(static_cast<const char *>(block), static_cast<size_t>(n))) break;
    total += n;
  }
  return total;
}
