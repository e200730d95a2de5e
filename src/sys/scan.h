// Reading numbers out of engine records and arguments with the answer of the
// 32-bit gateways. The C library's "%d" reads a long and stores it into an
// int: on a 64-bit build 5000000000 wraps to 705032704, on the gateway's
// 32-bit long it stops at 2147483647. These readers always give the gateway's
// answer, whatever the word size of the build.
#pragma once

// sscanf for the conversions the tool uses on engine text: "%d", "%hhu",
// "%llu", "%Ns" (a width is required), each with an optional "*" that reads
// without storing. A blank in the format matches any run of white space, any
// other character itself. Returns the number of values stored, or -1 when the
// text ends before the first conversion, as sscanf does.
int scan32(const char *text, const char *format, ...);

// strtol/strtoul of a 32-bit gateway: the value held to the range of long and
// unsigned long there (int and unsigned int), errno set to ERANGE when it was
// held (and, as by strtol, left alone when nothing went wrong: a caller that
// looks at it clears it first). `end` as in strtol (may be null); base as in
// strtol.
long strtol32(const char *text, char **end, int base);
unsigned long strtoul32(const char *text, char **end, int base);
