// The engine lock: the engine's multi-step changes (a database import with
// what follows it, a rule load) must not interleave with another caller's,
// as the web page and scripts do call the tool at the same time. It is an
// advisory lock (flock) on "<run>/vektool.lock", held until the EngineLock
// goes. flock locks belong to the open file, so a process takes it once, in
// the outermost operation; what runs inside assumes it.
#pragma once

enum {
  ENGINE_LOCK_WAIT_MS = 30000,  // how long a caller waits for another's change
  ENGINE_LOCK_POLL_MS = 10,     // how often it looks in the meantime
};

class EngineLock {
 public:
  EngineLock() = default;
  ~EngineLock();
  EngineLock(const EngineLock &) = delete;
  EngineLock &operator=(const EngineLock &) = delete;

  // Takes the lock in the run directory `run_dir` (a gateway path), waiting
  // up to `wait_ms`. False only when another caller held it all that time.
  // A lock file that cannot be had (no run directory, or something other
  // than a regular file in its place) gives true without a lock: the
  // command then runs as it would alone.
  bool take(const char *run_dir, int wait_ms = ENGINE_LOCK_WAIT_MS);
  // True when the lock is held.
  bool held() const { return fd_ >= 0; }

 private:
  int fd_ = -1;
};
