// Replacing a file as a whole: readers of the destination see either the old
// content or the new one, never a half-written file.
#pragma once

// Copies `source` over `destination` through a temporary file in the
// destination's directory, flushed to disk and renamed over the old file.
// Bytes copied; 0 for an empty source (nothing is replaced); -1 when the source cannot be read or a write fails (full
// disk, file-size limit); -2 when the temporary file cannot be created. On
// failure the destination is left exactly as it was.
long replace_file(const char *destination, const char *source);
