// What the tool reads of the engine's state: whether the module is loaded and
// the service runs, and the records the traffic-shaping commands share.
#pragma once

#include "sys/text.h"

// 1 if /proc/vek is a directory.
int engine_loaded();
// The id of the process named vek_service when /proc/<pid> is a directory,
// else -1.
long service_pid();
// 1 if service_pid finds the service.
int service_alive();

// Typed readers: 0 on success, 1 when the file cannot be opened, the record is
// missing or does not parse; the output is set only on success.
int read_hyqos_rate(OwnedText *text);  // "j:hyqos_rate:" of /proc/vek/qoe_config, trimmed
int read_queue_number(int *count);     // "d:qnum:" of /proc/vek/qos_ctrl
int read_dbdev(OwnedText *text);       // "j:devs:" of /proc/vek/dbdev, trimmed
