// The daemon: the FUSE filesystem that plays the kernel's /proc at R/proc,
// the service socket and the watch on an owning process.
#pragma once

#include <string>

#include "common.h"

// Exit status of `vek-sim start` when FUSE cannot mount here.
enum { EXIT_CANNOT_MOUNT = 77 };

struct DaemonOptions {
  long owner_pid = 0;  // 0: none; else end once that process is gone
  int ready_fd = -1;   // gets one status line, then is closed (see below)
};

// Mounts R/proc and serves until SIGTERM/SIGINT/SIGHUP, the owner's end, or
// an unmount from outside. Reports on `ready_fd`: "ready\n" once the mount
// and the service are up, or "mount <reason>\n" / "error <reason>\n".
// Returns the process exit status.
int run_daemon(const SimRoot &r, const DaemonOptions &o);

// Paths the daemon and the commands agree on.
std::string daemon_lock_path(const SimRoot &r);  // held by a running daemon
std::string daemon_pid_path(const SimRoot &r);
std::string service_socket_path(const SimRoot &r);  // host path
std::string service_socket_gateway_path(const SimRoot &r);

// True when `path` is a mount point of this mount namespace.
bool is_mount_point(const std::string &path);
