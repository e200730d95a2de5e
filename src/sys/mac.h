// The one rule by which every MAC argument is checked. MACs are passed to the
// engine exactly as typed.
#pragma once

// 1 for twelve hex digits bare ("aabbccddeeff") or as six pairs after each of
// the first five of which stands "-" or ":" (mixed freely); else 0.
int is_valid_mac(const char *text);
