// Growable text buffer, in-place trimming, copies, comparisons that tolerate
// null strings, and the program's own strtok.
#pragma once

#include <cstdlib>
#include <memory>

// The tool never sets a locale, so white space follows the C locale: plain
// ASCII. Tested here rather than through the C library, whose calls each cost
// a symbol lookup at the first use in every run.
inline bool is_space(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
// Whether `text` begins with `prefix`: a loop of its own for the words every
// start compares, where strncmp would cost a symbol lookup at its first call.
inline bool begins_with(const char *text, const char *prefix) {
  while (*prefix && *text == *prefix) {
    text++;
    prefix++;
  }
  return *prefix == '\0';
}

struct FreeDeleter {
  void operator()(void *p) const { free(p); }
};
// A text allocated with malloc, freed when it goes out of scope.
using OwnedText = std::unique_ptr<char, FreeDeleter>;

// A zero-filled record is an empty buffer; the destructor frees what is left.
struct TextBuffer {
  unsigned int capacity = 0;  // bytes allocated
  unsigned int length = 0;    // bytes used, not counting the terminator
  char *data = nullptr;       // null until the first append or reserve; then terminated

  TextBuffer() = default;
  TextBuffer(const TextBuffer &) = delete;
  TextBuffer &operator=(const TextBuffer &) = delete;
  ~TextBuffer() { free(data); }
};

// Grows to length + count + 256 bytes when length + count + 1 >= capacity.
// Nothing happens for null bytes or a zero count; a failed growth leaves the
// text as it was.
void text_buffer_append(TextBuffer *buffer, const void *bytes, unsigned int count);
// Makes room for `capacity` bytes in all (terminator included) when the
// buffer has less, for a reader that expects much text: it then grows in a few
// large steps instead of one per append. 0, or -1 when the memory cannot be
// had (the buffer stays as it was).
int text_buffer_reserve(TextBuffer *buffer, unsigned int capacity);
// Formats into 512 bytes (cut) and appends the text when it is not empty.
void text_buffer_appendf(TextBuffer *buffer, const char *format, ...)
    __attribute__((format(printf, 2, 3)));
// Hands the text (may be null) to the caller and empties the buffer.
OwnedText text_buffer_take(TextBuffer *buffer, unsigned int *length);

// Removes leading and trailing white space in place; returns `text`.
char *trim(char *text);
char *trim_spaces(char *text);

// Copies `text` into `size` bytes at `buffer`, cut to fit and always
// terminated: what snprintf with "%s" makes of it, without the formatting
// machinery, which costs more than the copy at every start. Returns `buffer`.
char *copy_text(char *buffer, size_t size, const char *text);
// As copy_text with `second` after `first`.
char *join_text(char *buffer, size_t size, const char *first, const char *second);

OwnedText str_dup(const char *text);
OwnedText str_ndup(const void *bytes, unsigned int count);

// 0 when both are null or both equal; 1 when exactly one is null; when the
// lengths differ, strlen(b) - strlen(a); else strcmp.
int str_equal(const char *a, const char *b);
// As str_equal with a case-insensitive final comparison.
int str_equal_nocase(const char *a, const char *b);
// 0 when both are null, 1 when exactly one is null, else strcmp.
int str_compare(const char *a, const char *b);

// The program's own strtok (declared by <cstring>) replaces the C library's
// for the whole process; see text.cc for how it differs.
