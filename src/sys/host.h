// The checks of host names and addresses that the ss host list takes.
#pragma once

// 1 for a non-empty text shorter than 256 characters made of runs of ASCII
// letters and digits joined by single dots (no leading, doubled or trailing
// dot; hyphens and underscores are refused); else 0.
int is_valid_host_name(const char *text);
// 1 when the text is an IPv4 address or, failing that, an IPv6 address in a
// standard presentation form; else 0.
int is_valid_ip_address(const char *text);
