// Control files: one verb per write, whole-file reads that do not trust the
// size procfs reports, and tagged records ("d:qnum:42").
#pragma once

#include "sys/text.h"

// Every control file is opened without blocking, so that a FIFO in its place
// never holds the tool: with no writer it reads as empty, with no reader it
// cannot be opened for writing. A reader takes at most CONTROL_FILE_MAX bytes
// from one file. The engine's largest files (device and rule lists,
// statistics) stay within some tens of kilobytes; a file that goes on past
// 4 MiB is no engine file (/dev/zero in its place, a module that ignores the
// read offset) and is given up as unreadable rather than allowed to fill a
// gateway's memory.
enum { CONTROL_FILE_MAX = 4 << 20 };

// One formatted verb (512 bytes at most) in one write call; the file is
// neither created nor truncated. Bytes written, -1 when the file cannot be
// opened, 0 for a null format.
int write_proc_line(const char *path, const char *format, ...) __attribute__((format(printf, 2, 3)));
// Writes in pieces of at most 128 bytes. Bytes written, or -1.
int write_proc_data(const char *path, const void *data, int length);
// Whole file in 128-byte chunks until end of file. 0 when it was opened (data
// stays null for an empty file), -1 when not or when it holds more than
// CONTROL_FILE_MAX bytes (the outputs are left alone).
int read_proc_file(const char *path, OwnedText *data, int *length);
// The same for a file a daemon keeps in a world-writable place ("/tmp/bs/
// bs.json"): its directory and the file itself are opened without following
// links, and only a regular file that has no other name is read. Anything
// else reads as a missing file (-1).
int read_daemon_file(const char *path, OwnedText *data, int *length);
// One read of up to `size` bytes; the buffer is always terminated. Count or -1.
int read_file_into(const char *path, char *buffer, int size);
// First line beginning with `tag`, newline included. 1 when the file cannot be
// opened or runs past CONTROL_FILE_MAX bytes before that line, else 0; `line`
// is left untouched when no line carries the tag.
int find_record(const char *path, const char *tag, OwnedText *line);
// Copies a file (opened as open_source does: only a regular file) into an
// existing file such as a control file, one write per block of at most 512
// bytes. Bytes copied; -1 when the source cannot be opened or a write falls
// short; -2 when the destination cannot be opened (it is never created).
int copy_file(const char *destination, const char *source);
