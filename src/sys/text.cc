#include "sys/text.h"

#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstring>

// Slack kept after every growth, so that a run of small appends does not
// reallocate each time.
static const unsigned int kGrowthSlack = 256;

void text_buffer_append(TextBuffer *buffer, const void *bytes, unsigned int count) {
  if (!buffer || !bytes || count == 0) return;
  if (count > UINT_MAX - kGrowthSlack - buffer->length) return;  // would wrap: treat as a failed growth
  if (buffer->length + count + 1 >= buffer->capacity) {
    unsigned int size = buffer->length + count + kGrowthSlack;
    char *grown = static_cast<char *>(realloc(buffer->data, size));
    if (!grown) return;  // the text stays as it was
    buffer->data = grown;
    buffer->capacity = size;
  }
  memcpy(buffer->data + buffer->length, bytes, count);
  buffer->length += count;
  buffer->data[buffer->length] = '\0';
}

int text_buffer_reserve(TextBuffer *buffer, unsigned int capacity) {
  if (!buffer) return -1;
  if (capacity <= buffer->capacity) return 0;
  char *grown = static_cast<char *>(realloc(buffer->data, capacity));
  if (!grown) return -1;
  if (!buffer->data) grown[0] = '\0';
  buffer->data = grown;
  buffer->capacity = capacity;
  return 0;
}

void text_buffer_appendf(TextBuffer *buffer, const char *format, ...) {
  if (!format) return;
  char text[512];
  va_list args;
  va_start(args, format);
  int n = vsnprintf(text, sizeof text, format, args);
  va_end(args);
  if (n <= 0) return;
  text_buffer_append(buffer, text, static_cast<unsigned int>(strlen(text)));
}

OwnedText text_buffer_take(TextBuffer *buffer, unsigned int *length) {
  if (!buffer) {
    if (length) *length = 0;
    return OwnedText();
  }
  OwnedText text(buffer->data);
  if (length) *length = buffer->length;
  buffer->data = nullptr;
  buffer->length = 0;
  buffer->capacity = 0;
  return text;
}

// Letter case as in the C locale (see is_space).
static int lower(unsigned char c) { return c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c; }

char *trim(char *text) {
  if (!text || text[0] == '\0') return text;
  char *start = text;
  while (*start && is_space(*start)) ++start;
  if (*start == '\0') {
    text[0] = '\0';
    return text;
  }
  // Cut trailing white space; `start` holds a non-blank character, so the walk
  // stops before it.
  char *end = start + strlen(start) - 1;
  while (end > start && is_space(*end)) *end-- = '\0';
  if (start != text) memmove(text, start, strlen(start) + 1);
  return text;
}

char *trim_spaces(char *text) { return trim(text); }

static size_t min_size(size_t a, size_t b) { return a < b ? a : b; }

// Not join_text with an empty second text: vek.ini's thirty values are
// copied at every start.
char *copy_text(char *buffer, size_t size, const char *text) {
  if (size == 0) return buffer;
  size_t used = min_size(strlen(text), size - 1);
  memcpy(buffer, text, used);
  buffer[used] = '\0';
  return buffer;
}

char *join_text(char *buffer, size_t size, const char *first, const char *second) {
  if (size == 0) return buffer;
  // strlen, not strnlen: both texts are terminated, and strlen is bound
  // already (each C library function costs a symbol lookup at its first call).
  size_t used = min_size(strlen(first), size - 1);
  memcpy(buffer, first, used);
  size_t more = min_size(strlen(second), size - 1 - used);
  memcpy(buffer + used, second, more);
  buffer[used + more] = '\0';
  return buffer;
}

OwnedText str_dup(const char *text) {
  if (!text) return OwnedText();
  return str_ndup(text, static_cast<unsigned int>(strlen(text)));
}

OwnedText str_ndup(const void *bytes, unsigned int count) {
  if (!bytes) return OwnedText();
  char *copy = static_cast<char *>(malloc(static_cast<size_t>(count) + 1));
  if (!copy) return OwnedText();
  memcpy(copy, bytes, count);
  copy[count] = '\0';
  return OwnedText(copy);
}

int str_equal(const char *a, const char *b) {
  if (!a && !b) return 0;
  if (!a || !b) return 1;
  size_t la = strlen(a), lb = strlen(b);
  if (la != lb) return static_cast<int>(lb) - static_cast<int>(la);
  return strcmp(a, b);
}

int str_equal_nocase(const char *a, const char *b) {
  if (!a && !b) return 0;
  if (!a || !b) return 1;
  size_t la = strlen(a), lb = strlen(b);
  if (la != lb) return static_cast<int>(lb) - static_cast<int>(la);
  for (;; a++, b++) {
    int d = lower(static_cast<unsigned char>(*a)) - lower(static_cast<unsigned char>(*b));
    if (d != 0 || *a == '\0') return d;
  }
}

int str_compare(const char *a, const char *b) {
  if (!a && !b) return 0;
  if (!a || !b) return 1;
  return strcmp(a, b);
}

// The tokenizer's position between calls: one pointer for the whole process,
// shared by every caller, like the C library's.
static char *g_token_position = nullptr;

// The process's strtok. It differs from the C library's on purpose:
//  - a non-null empty text gives null and keeps the old position, so a
//    following call with null goes on with the previous text;
//  - when the token runs to the end of the text, the position becomes null
//    rather than pointing at the terminator;
//  - when only delimiters are left, the position is set to the terminator.
extern "C" char *strtok(char *text, const char *delimiters) noexcept {
  if (text) {
    if (text[0] == '\0') return nullptr;
    g_token_position = text;
  } else if (!g_token_position || g_token_position[0] == '\0') {
    return nullptr;
  }
  char *token = g_token_position + strspn(g_token_position, delimiters);
  if (*token == '\0') {
    g_token_position = token;
    return nullptr;
  }
  char *end = token + strcspn(token, delimiters);
  if (*end == '\0') {
    g_token_position = nullptr;
  } else {
    *end = '\0';
    g_token_position = end + 1;
  }
  return token;
}
