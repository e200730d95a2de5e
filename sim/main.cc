// vek-sim: a simulated gateway for vektool. See sim/README.md.
#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>
#include <vector>

#include "common.h"
#include "engine.h"
#include "fs.h"
#include "install.h"
#include "programs.h"
#include "service.h"
#include "state.h"

namespace {

const char *const kUsage =
    "usage: vek-sim [--root R] COMMAND [ARGS]\n"
    "The sysroot R is --root or else $VEKTOOL_SYSROOT.\n"
    "\n"
    "  start [--owner PID] [--foreground]   prepare R, mount R/proc, start the service\n"
    "  stop                                  unmount and end the simulator\n"
    "  status                                say whether the simulator runs (exit 0) or not (1)\n"
    "  shell                                 a shell in which vektool talks to a simulator\n"
    "  reset                                 put the engine and every scenario knob back to boot state\n"
    "  file PATH [TEXT]                      set a file's content (standard input without TEXT)\n"
    "  missing PATH                          make a file or directory absent\n"
    "  unreadable PATH                       make opening a control file for reading fail (EACCES)\n"
    "  cat PATH                              print a file's current content\n"
    "  exit PROGRAM STATUS [STDERR]          exit status (and error text) of vekctl, veklog,\n"
    "                                        dt_srv, killall or date\n"
    "  proc start NAME [PID] | proc stop NAME | proc list\n"
    "  service normal|silent|slow|pieces|close|reset|down [MS]\n"
    "  reply METHOD [TEXT]                   the service's reply to a method\n"
    "  kernel normal|busy|reject|reject-once [grpxdb|sidxdb|xr]\n"
    "  slow MS                               each write of an image or a rule set takes MS more\n"
    "  image grpxdb|sidxdb|xr                print the bytes the module holds\n"
    "  exe TARGET                            where /proc/self/exe points\n"
    "  tz OFFSET [MIB|forever]               what `date +%z` prints: the offset line, then MIB\n"
    "                                        MiB of line ends, or the offset line without end\n"
    "  journal [--clear]                     print (or empty) the journal\n";

int fail(const char *format, ...) __attribute__((format(printf, 1, 2)));
int fail(const char *format, ...) {
  va_list ap;
  va_start(ap, format);
  fputs("vek-sim: ", stderr);
  vfprintf(stderr, format, ap);
  fputc('\n', stderr);
  va_end(ap);
  return 1;
}

int usage_error() {
  fputs(kUsage, stderr);
  return 2;
}

std::string read_stdin() {
  std::string data;
  char buf[4096];
  for (;;) {
    ssize_t n = read(0, buf, sizeof buf);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) break;
    data.append(buf, static_cast<size_t>(n));
  }
  return data;
}

bool write_out(const std::string &data) {
  return fwrite(data.data(), 1, data.size(), stdout) == data.size() && fflush(stdout) == 0;
}

bool prepared(const SimRoot &r) { return is_dir(r.sim() + "/proc") && path_exists(ini_path(r)); }

int ensure_prepared(const SimRoot &r) {
  if (prepared(r)) return 0;
  std::string error;
  if (!install_sysroot(r, self_exe(), &error)) return fail("%s", error.c_str());
  return 0;
}

bool is_proc_path(const std::string &p) { return p == "/proc" || p.compare(0, 6, "/proc/") == 0; }

// Closes every inherited descriptor but `keep`, so that the daemon holds no
// pipe of whoever started it.
void close_inherited(int keep) {
  std::vector<int> fds;
  for (const std::string &name : list_dir("/proc/self/fd")) {
    int fd = atoi(name.c_str());
    if (fd > 2 && fd != keep) fds.push_back(fd);
  }
  for (int fd : fds) close(fd);
}

void sleep_ms(long ms) {
  struct timespec ts = {ms / 1000, (ms % 1000) * 1000000};
  while (nanosleep(&ts, &ts) != 0 && errno == EINTR) {
  }
}

double now_ms() {
  struct timespec ts;
  clock_gettime(CLOCK_MONOTONIC, &ts);
  return static_cast<double>(ts.tv_sec) * 1000.0 + static_cast<double>(ts.tv_nsec) / 1e6;
}

// True while a daemon holds the lock of this root.
bool daemon_running(const SimRoot &r) {
  Fd lock(open(daemon_lock_path(r).c_str(), O_RDWR | O_CLOEXEC));
  if (!lock.ok()) return false;
  if (flock(lock.get(), LOCK_EX | LOCK_NB) == 0) return false;
  return errno == EWOULDBLOCK;
}

long daemon_pid(const SimRoot &r) {
  std::string text;
  long pid = 0;
  if (read_file(daemon_pid_path(r), &text) && parse_int(trim(text), &pid)) return pid;
  return 0;
}

// Unmounts a mount the daemon left behind (it was killed).
void clear_stale_mount(const SimRoot &r) {
  std::string mp = r.host("/proc");
  if (!is_mount_point(mp)) return;
  if (umount2(mp.c_str(), MNT_DETACH) == 0) return;
  pid_t pid = fork();
  if (pid == 0) {
    Fd null(open("/dev/null", O_RDWR));
    if (null.ok()) {
      dup2(null.get(), 1);
      dup2(null.get(), 2);
    }
    execlp("fusermount3", "fusermount3", "-u", "-z", mp.c_str(), static_cast<char *>(nullptr));
    _exit(127);
  }
  if (pid > 0) waitpid(pid, nullptr, 0);
}

int cmd_start(const SimRoot &r, long owner, bool foreground) {
  if (daemon_running(r)) return fail("a simulator already runs in %s", r.root.c_str());
  clear_stale_mount(r);
  std::string error;
  if (!install_sysroot(r, self_exe(), &error)) return fail("%s", error.c_str());
  DaemonOptions o;
  o.owner_pid = owner;
  if (foreground) return run_daemon(r, o);
  int p[2];
  if (pipe2(p, O_CLOEXEC) != 0) return fail("pipe: %s", strerror(errno));
  Fd ready_read(p[0]), ready_write(p[1]);
  fflush(stdout);
  fflush(stderr);
  pid_t pid = fork();
  if (pid < 0) return fail("fork: %s", strerror(errno));
  if (pid == 0) {
    ready_read.reset();
    setsid();
    if (chdir("/") != 0) _exit(1);
    close_inherited(ready_write.get());
    Fd null(open("/dev/null", O_RDWR));
    Fd log(open((r.sim() + "/daemon.log").c_str(), O_WRONLY | O_CREAT | O_APPEND, 0644));
    if (null.ok()) dup2(null.get(), 0);
    if (log.ok()) {
      dup2(log.get(), 1);
      dup2(log.get(), 2);
    }
    null.reset();
    log.reset();
    o.ready_fd = ready_write.release();
    _exit(run_daemon(r, o));
  }
  ready_write.reset();
  std::string line;
  char c;
  while (read(ready_read.get(), &c, 1) == 1 && c != '\n') line += c;
  if (line == "ready") {
    // The daemon serves from here on; wait until the mount answers.
    std::string probe = r.host("/proc/self");
    double deadline = now_ms() + 5000;
    struct stat st;
    while (!(is_mount_point(r.host("/proc")) && lstat(probe.c_str(), &st) == 0)) {
      if (now_ms() > deadline) return fail("the mount at %s/proc does not answer", r.root.c_str());
      sleep_ms(2);
    }
    return 0;
  }
  int status = 0;
  waitpid(pid, &status, 0);
  std::string log;
  read_file(r.sim() + "/daemon.log", &log);
  log = trim(log);
  size_t last = log.find_last_of('\n');
  if (last != std::string::npos) log = log.substr(last + 1);
  if (line.compare(0, 6, "mount ") == 0) {
    fail("cannot mount %s/proc: %s%s%s", r.root.c_str(), line.c_str() + 6, log.empty() ? "" : ": ",
         log.c_str());
    return EXIT_CANNOT_MOUNT;
  }
  if (line.compare(0, 6, "error ") == 0) return fail("%s", line.c_str() + 6);
  return fail("the simulator ended while starting%s%s", log.empty() ? "" : ": ", log.c_str());
}

int cmd_stop(const SimRoot &r) {
  if (daemon_running(r)) {
    double deadline = now_ms() + 5000;
    long pid = 0;
    while ((pid = daemon_pid(r)) == 0 && daemon_running(r) && now_ms() < deadline) sleep_ms(2);
    if (pid > 0) kill(static_cast<pid_t>(pid), SIGTERM);
    while (daemon_running(r) && now_ms() < deadline) sleep_ms(2);
    if (daemon_running(r) && pid > 0) {
      kill(static_cast<pid_t>(pid), SIGKILL);
      deadline = now_ms() + 2000;
      while (daemon_running(r) && now_ms() < deadline) sleep_ms(5);
    }
    if (daemon_running(r)) return fail("the simulator in %s does not end", r.root.c_str());
  }
  clear_stale_mount(r);
  if (is_mount_point(r.host("/proc"))) return fail("%s/proc is still mounted", r.root.c_str());
  return 0;
}

int cmd_status(const SimRoot &r) {
  if (!daemon_running(r)) {
    printf("stopped\n");
    return 1;
  }
  printf("running %ld\n", daemon_pid(r));
  return 0;
}

int cmd_file(const SimRoot &r, const std::vector<std::string> &args) {
  if (args.empty() || args.size() > 2 || args[0].empty() || args[0][0] != '/') return usage_error();
  std::string data = args.size() == 2 ? args[1] : read_stdin();
  if (!write_file(r.backing(args[0]), data, 0644))
    return fail("cannot write %s: %s", args[0].c_str(), strerror(errno));
  return 0;
}

int cmd_missing(const SimRoot &r, const std::vector<std::string> &args) {
  if (args.size() != 1 || args[0].empty() || args[0][0] != '/') return usage_error();
  if (args[0] == "/proc" || args[0] == "/") return fail("%s cannot be made missing", args[0].c_str());
  if (!remove_tree(r.backing(args[0]))) return fail("cannot remove %s: %s", args[0].c_str(), strerror(errno));
  return 0;
}

int cmd_unreadable(const SimRoot &r, const std::vector<std::string> &args) {
  if (args.size() != 1) return usage_error();
  if (!is_proc_path(args[0])) return fail("only files under /proc can be made unreadable");
  std::string path = r.backing(args[0]);
  struct stat st;
  if (stat(path.c_str(), &st) != 0 || !S_ISREG(st.st_mode)) return fail("%s: no such file", args[0].c_str());
  if (chmod(path.c_str(), 0200) != 0) return fail("chmod %s: %s", args[0].c_str(), strerror(errno));
  return 0;
}

int cmd_cat(const SimRoot &r, const std::vector<std::string> &args) {
  if (args.size() != 1) return usage_error();
  std::string data;
  if (!read_file(r.backing(args[0]), &data)) return fail("%s: no such file", args[0].c_str());
  return write_out(data) ? 0 : 1;
}

int cmd_exit(const SimRoot &r, const std::vector<std::string> &args) {
  long status = 0;
  if (args.size() < 2 || args.size() > 3) return usage_error();
  if (!is_program(args[0])) return fail("%s is not a simulated program", args[0].c_str());
  if (!parse_int(args[1], &status) || status < 0 || status > 255)
    return fail("exit status must be 0-255: %s", args[1].c_str());
  if (!set_program_status(r, args[0], static_cast<int>(status), args.size() == 3 ? &args[2] : nullptr))
    return fail("cannot set the exit status of %s", args[0].c_str());
  return 0;
}

int cmd_proc(const SimRoot &r, const std::vector<std::string> &args) {
  if (args.size() == 1 && args[0] == "list") {
    for (const Process &p : process_list(r)) printf("%ld %s\n", p.pid, p.name.c_str());
    return 0;
  }
  if (args.size() >= 2 && args.size() <= 3 && args[0] == "start") {
    long pid = 0;
    if (args.size() == 3 && (!parse_int(args[2], &pid) || pid <= 0)) return fail("bad pid: %s", args[2].c_str());
    if (args[1].empty() || args[1].find('\n') != std::string::npos) return fail("bad process name");
    if (pid == 0 && process_running(r, args[1])) return 0;
    long got = process_start(r, args[1], pid);
    if (got < 0) return fail("pid %ld is taken", pid);
    printf("%ld\n", got);
    return 0;
  }
  if (args.size() == 2 && args[0] == "stop") {
    process_stop(r, args[1]);
    return 0;
  }
  return usage_error();
}

int cmd_service(const SimRoot &r, const std::vector<std::string> &args) {
  long ms = -1;
  if (args.empty() || args.size() > 2 || !is_service_mode(args[0])) return usage_error();
  if (args.size() == 2 && (!parse_int(args[1], &ms) || ms < 0)) return fail("bad milliseconds: %s", args[1].c_str());
  std::string text = args[0] + (args.size() == 2 ? " " + args[1] : "") + "\n";
  if (!write_file(r.sim() + "/service/mode", text)) return fail("cannot set the service mode");
  // Down: the socket file goes away (the service is not there to connect
  // to); any other mode puts it back.
  std::string sock = service_socket_path(r), parked = Service::parked_path(sock);
  if (args[0] == "down" && path_exists(sock)) rename(sock.c_str(), parked.c_str());
  if (args[0] != "down" && path_exists(parked)) rename(parked.c_str(), sock.c_str());
  return 0;
}

int cmd_reply(const SimRoot &r, const std::vector<std::string> &args) {
  if (args.empty() || args.size() > 2 || args[0].empty() || args[0].find('/') != std::string::npos)
    return usage_error();
  std::string data = args.size() == 2 ? args[1] : read_stdin();
  if (!write_file(service_reply_path(r, args[0]), data)) return fail("cannot set the reply");
  return 0;
}

int cmd_kernel(const SimRoot &r, const std::vector<std::string> &args) {
  if (args.empty() || args.size() > 2) return usage_error();
  if (args[0] != "normal" && args[0] != "busy" && args[0] != "reject" &&
      args[0] != "reject-once")
    return usage_error();
  bool any = false;
  for (const Database &db : kDatabases) {
    if (args.size() == 2 && args[1] != db.name) continue;
    any = true;
    if (!write_file(db_state_path(r, db, "mode"), args[0] + "\n")) return fail("cannot set the kernel mode");
  }
  if (!any) return fail("no database %s (grpxdb, sidxdb, xr)", args[1].c_str());
  return 0;
}

int cmd_slow(const SimRoot &r, const std::vector<std::string> &args) {
  long ms = 0;
  if (args.size() != 1) return usage_error();
  if (!parse_int(args[0], &ms) || ms < 0) return fail("bad milliseconds: %s", args[0].c_str());
  return write_file(slow_path(r), args[0] + "\n") ? 0 : fail("cannot set the delay");
}

int cmd_image(const SimRoot &r, const std::vector<std::string> &args) {
  const Database *db = args.size() == 1 ? find_database(args[0]) : nullptr;
  if (!db) return usage_error();
  std::string image;
  read_file(db_state_path(r, *db, "image"), &image);
  return write_out(image) ? 0 : 1;
}

int cmd_exe(const SimRoot &r, const std::vector<std::string> &args) {
  if (args.size() != 1) return usage_error();
  std::string link = r.backing("/proc/self/exe");
  make_dirs(dir_name(link));
  remove_tree(link);
  if (symlink(args[0].c_str(), link.c_str()) != 0) return fail("symlink: %s", strerror(errno));
  return 0;
}

int cmd_tz(const SimRoot &r, const std::vector<std::string> &args) {
  if (args.empty() || args.size() > 2 || split_words(args[0]).size() != 1) return usage_error();
  long mib = 0;
  if (args.size() == 2 && args[1] != "forever" && !(parse_int(args[1], &mib) && mib >= 0))
    return fail("tz: %s is neither a number of MiB nor forever", args[1].c_str());
  std::string text = args[0] + (args.size() == 2 ? " " + args[1] : "") + "\n";
  return write_file(r.sim() + "/tz", text) ? 0 : fail("cannot set the offset");
}

int cmd_journal(const SimRoot &r, const std::vector<std::string> &args) {
  if (args.size() == 1 && args[0] == "--clear") {
    Fd fd(open(r.journal_path().c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644));
    return fd.ok() ? 0 : fail("cannot clear the journal: %s", strerror(errno));
  }
  if (!args.empty()) return usage_error();
  std::string data;
  read_file(r.journal_path(), &data);
  return write_out(data) ? 0 : 1;
}

int cmd_reset(const SimRoot &r) {
  std::string error;
  if (!reset_state(r, &error)) return fail("%s", error.c_str());
  std::string sock = service_socket_path(r), parked = Service::parked_path(sock);
  if (path_exists(parked)) rename(parked.c_str(), sock.c_str());
  return 0;
}

int cmd_shell(const std::string &given_root) {
  std::string root = given_root;
  bool temporary = root.empty();
  if (temporary) {
    char tmpl[] = "/tmp/vek-sim.XXXXXX";
    if (!mkdtemp(tmpl)) return fail("mkdtemp: %s", strerror(errno));
    root = tmpl;
  }
  SimRoot r{root};
  int status = cmd_start(r, static_cast<long>(getpid()), false);
  if (status != 0) {
    if (temporary) remove_tree(root);
    return status;
  }
  std::string exe_dir = dir_name(self_exe());
  fprintf(stderr,
          "vek-sim: a simulated gateway runs in %s\n"
          "vek-sim: vektool talks to it (VEKTOOL_SYSROOT is set); `vek-sim journal` shows what it\n"
          "vek-sim: saw, `vek-sim --help` how to change it. Leave the shell to stop it.\n",
          root.c_str());
  fflush(stderr);
  struct sigaction ignore, old_int, old_quit;
  memset(&ignore, 0, sizeof ignore);
  ignore.sa_handler = SIG_IGN;
  sigaction(SIGINT, &ignore, &old_int);
  sigaction(SIGQUIT, &ignore, &old_quit);
  pid_t pid = fork();
  if (pid == 0) {
    sigaction(SIGINT, &old_int, nullptr);
    sigaction(SIGQUIT, &old_quit, nullptr);
    const char *path = getenv("PATH");
    std::string new_path = exe_dir + (path && *path ? ":" + std::string(path) : "");
    setenv("PATH", new_path.c_str(), 1);
    setenv("VEKTOOL_SYSROOT", root.c_str(), 1);
    const char *sh = getenv("SHELL");
    if (!sh || !*sh) sh = "/bin/sh";
    execl(sh, sh, static_cast<char *>(nullptr));
    fail("cannot run %s: %s", sh, strerror(errno));
    _exit(127);
  }
  int wstatus = 0;
  if (pid > 0)
    while (waitpid(pid, &wstatus, 0) < 0 && errno == EINTR) {
    }
  sigaction(SIGINT, &old_int, nullptr);
  sigaction(SIGQUIT, &old_quit, nullptr);
  int stopped = cmd_stop(r);
  if (temporary && stopped == 0 && !is_mount_point(r.host("/proc"))) remove_tree(root);
  if (pid < 0) return fail("fork: %s", strerror(errno));
  return WIFEXITED(wstatus) ? WEXITSTATUS(wstatus) : 1;
}

}  // namespace

int main(int argc, char **argv) {
  std::vector<std::string> args(argv + 1, argv + argc);
  std::string root;
  bool root_given = false;
  while (!args.empty()) {
    if (args[0] == "--root" && args.size() >= 2) {
      root = args[1];
      root_given = true;
      args.erase(args.begin(), args.begin() + 2);
    } else if (args[0].compare(0, 7, "--root=") == 0) {
      root = args[0].substr(7);
      root_given = true;
      args.erase(args.begin());
    } else {
      break;
    }
  }
  if (args.empty()) return usage_error();
  if (args[0] == "-h" || args[0] == "--help" || args[0] == "help") {
    fputs(kUsage, stdout);
    return 0;
  }
  if (!root_given) {
    const char *env = getenv("VEKTOOL_SYSROOT");
    if (env) root = env;
  }
  std::string cmd = args[0];
  std::vector<std::string> rest(args.begin() + 1, args.end());
  if (cmd == "shell") {
    if (!rest.empty()) return usage_error();
    return cmd_shell(root.empty() ? root : absolute_path(root));
  }
  if (root.empty()) return fail("no sysroot: give --root R or set VEKTOOL_SYSROOT");
  SimRoot r{absolute_path(root)};
  if (r.root == "/") return fail("the sysroot cannot be /");

  if (cmd == "program") {
    if (rest.empty()) return usage_error();
    return run_program(r, rest[0], std::vector<std::string>(rest.begin() + 1, rest.end()));
  }
  if (cmd == "start") {
    long owner = 0;
    bool foreground = false;
    for (size_t i = 0; i < rest.size(); i++) {
      if (rest[i] == "--owner" && i + 1 < rest.size() && parse_int(rest[i + 1], &owner) && owner > 0) {
        i++;
      } else if (rest[i] == "--foreground") {
        foreground = true;
      } else {
        return usage_error();
      }
    }
    return cmd_start(r, owner, foreground);
  }
  if (cmd == "stop") return rest.empty() ? cmd_stop(r) : usage_error();
  if (cmd == "status") return rest.empty() ? cmd_status(r) : usage_error();

  if (int prep = ensure_prepared(r)) return prep;
  if (cmd == "reset") return rest.empty() ? cmd_reset(r) : usage_error();
  if (cmd == "file") return cmd_file(r, rest);
  if (cmd == "missing") return cmd_missing(r, rest);
  if (cmd == "unreadable") return cmd_unreadable(r, rest);
  if (cmd == "cat") return cmd_cat(r, rest);
  if (cmd == "exit") return cmd_exit(r, rest);
  if (cmd == "proc") return cmd_proc(r, rest);
  if (cmd == "service") return cmd_service(r, rest);
  if (cmd == "reply") return cmd_reply(r, rest);
  if (cmd == "kernel") return cmd_kernel(r, rest);
  if (cmd == "slow") return cmd_slow(r, rest);
  if (cmd == "image") return cmd_image(r, rest);
  if (cmd == "exe") return cmd_exe(r, rest);
  if (cmd == "tz") return cmd_tz(r, rest);
  if (cmd == "journal") return cmd_journal(r, rest);
  return usage_error();
}
