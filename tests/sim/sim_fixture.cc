#include "sim_fixture.h"

#include <fcntl.h>
#include <poll.h>
#include <sched.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

extern char **environ;

namespace {

const int kExitCannotMount = 77;
const int kRunTimeoutMs = 30000;

class Pipe {
 public:
  Pipe() {
    if (pipe2(fd_, O_CLOEXEC) != 0) fd_[0] = fd_[1] = -1;
  }
  Pipe(const Pipe &) = delete;
  Pipe &operator=(const Pipe &) = delete;
  ~Pipe() {
    close_read();
    close_write();
  }
  int read_end() const { return fd_[0]; }
  int write_end() const { return fd_[1]; }
  void close_read() {
    if (fd_[0] >= 0) close(fd_[0]);
    fd_[0] = -1;
  }
  void close_write() {
    if (fd_[1] >= 0) close(fd_[1]);
    fd_[1] = -1;
  }

 private:
  int fd_[2];
};

double now_ms() {
  struct timespec ts;
  clock_gettime(CLOCK_MONOTONIC, &ts);
  return static_cast<double>(ts.tv_sec) * 1000.0 + static_cast<double>(ts.tv_nsec) / 1e6;
}

bool mounted_below(const std::string &root) {
  FILE *f = fopen("/proc/self/mountinfo", "re");
  if (!f) return false;
  char line[4096];
  bool found = false;
  while (fgets(line, sizeof line, f))
    if (strstr(line, (" " + root + "/").c_str())) found = true;
  fclose(f);
  return found;
}

}  // namespace

RunResult run_process(const std::vector<std::string> &argv, const std::vector<std::string> &env,
                      const std::string &input) {
  RunResult res;
  Pipe in, out, err;
  if (in.read_end() < 0 || out.read_end() < 0 || err.read_end() < 0) return res;
  std::vector<std::string> envs;
  for (char **e = environ; *e; e++) {
    std::string entry = *e;
    bool replaced = false;
    for (const std::string &x : env)
      if (entry.compare(0, x.find('=') + 1, x, 0, x.find('=') + 1) == 0) replaced = true;
    if (!replaced) envs.push_back(entry);
  }
  envs.insert(envs.end(), env.begin(), env.end());
  std::vector<char *> cargv, cenv;
  std::vector<std::string> argv_copy = argv;
  for (std::string &a : argv_copy) cargv.push_back(&a[0]);
  cargv.push_back(nullptr);
  for (std::string &e : envs) cenv.push_back(&e[0]);
  cenv.push_back(nullptr);
  pid_t pid = fork();
  if (pid < 0) return res;
  if (pid == 0) {
    dup2(in.read_end(), 0);
    dup2(out.write_end(), 1);
    dup2(err.write_end(), 2);
    execve(cargv[0], cargv.data(), cenv.data());
    _exit(127);
  }
  in.close_read();
  out.close_write();
  err.close_write();
  size_t written = 0;
  if (input.empty()) in.close_write();
  double deadline = now_ms() + kRunTimeoutMs;
  bool out_open = true, err_open = true;
  char buf[4096];
  while (out_open || err_open) {
    struct pollfd p[3] = {{out.read_end(), POLLIN, 0}, {err.read_end(), POLLIN, 0},
                          {in.write_end(), POLLOUT, 0}};
    int left = static_cast<int>(deadline - now_ms());
    if (left <= 0) {
      kill(pid, SIGKILL);
      break;
    }
    int n = poll(p, in.write_end() >= 0 ? 3 : 2, left);
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) break;
    for (int i = 0; i < 2; i++) {
      if (!(p[i].revents & (POLLIN | POLLHUP | POLLERR))) continue;
      ssize_t got = read(p[i].fd, buf, sizeof buf);
      if (got > 0) {
        (i == 0 ? res.out : res.err).append(buf, static_cast<size_t>(got));
      } else {
        (i == 0 ? out_open : err_open) = false;
        if (i == 0)
          out.close_read();
        else
          err.close_read();
      }
    }
    if (in.write_end() >= 0 && (p[2].revents & (POLLOUT | POLLERR | POLLHUP))) {
      ssize_t w = write(in.write_end(), input.data() + written, input.size() - written);
      if (w > 0) written += static_cast<size_t>(w);
      if (w <= 0 || written == input.size()) in.close_write();
    }
  }
  int status = 0;
  while (waitpid(pid, &status, 0) < 0 && errno == EINTR) {
  }
  res.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  return res;
}

std::string vek_sim_bin() { return VEK_SIM_BIN; }
std::string vektool_bin() { return VEKTOOL_BIN; }

SimGateway::SimGateway() {
  const char *tmp = getenv("TMPDIR");
  std::string tmpl = std::string(tmp && *tmp ? tmp : "/tmp") + "/vek-sim-test.XXXXXX";
  if (!mkdtemp(&tmpl[0])) {
    error_ = std::string("mkdtemp: ") + strerror(errno);
    return;
  }
  root_ = tmpl;
  RunResult r = sim({"start", "--owner", std::to_string(getpid())});
  if (r.status == 0) {
    started_ = true;
  } else {
    cannot_mount_ = r.status == kExitCannotMount;
    error_ = "vek-sim start exited " + std::to_string(r.status) + ": " + r.err;
  }
}

SimGateway::~SimGateway() {
  if (root_.empty()) return;
  if (started_) {
    RunResult r = sim({"stop"});
    EXPECT_EQ(r.status, 0) << "vek-sim stop: " << r.err;
  }
  // Never remove a tree with a mount in it.
  if (mounted_below(root_)) {
    ADD_FAILURE() << "a mount is left below " << root_;
    return;
  }
  RunResult r = run_process({"/bin/rm", "-rf", "--one-file-system", root_});
  EXPECT_EQ(r.status, 0) << r.err;
}

RunResult SimGateway::sim(const std::vector<std::string> &args, const std::string &input) {
  std::vector<std::string> argv = {vek_sim_bin(), "--root", root_};
  argv.insert(argv.end(), args.begin(), args.end());
  return run_process(argv, {}, input);
}

void SimGateway::expect_ok(const std::vector<std::string> &args, const std::string &input) {
  RunResult r = sim(args, input);
  std::string cmd;
  for (const std::string &a : args) cmd += " " + a;
  EXPECT_EQ(r.status, 0) << "vek-sim" << cmd << ": " << r.err;
}

void SimGateway::set_file(const std::string &path, const std::string &text) { expect_ok({"file", path}, text); }
void SimGateway::missing(const std::string &path) { expect_ok({"missing", path}); }
void SimGateway::unreadable(const std::string &path) { expect_ok({"unreadable", path}); }

std::string SimGateway::cat(const std::string &path) {
  RunResult r = sim({"cat", path});
  EXPECT_EQ(r.status, 0) << "vek-sim cat " << path << ": " << r.err;
  return r.out;
}

void SimGateway::set_exit(const std::string &program, int status, const std::string &stderr_text) {
  if (stderr_text.empty())
    expect_ok({"exit", program, std::to_string(status)});
  else
    expect_ok({"exit", program, std::to_string(status), stderr_text});
}

void SimGateway::proc_start(const std::string &name, long pid) {
  if (pid > 0)
    expect_ok({"proc", "start", name, std::to_string(pid)});
  else
    expect_ok({"proc", "start", name});
}

void SimGateway::proc_stop(const std::string &name) { expect_ok({"proc", "stop", name}); }

void SimGateway::service(const std::string &mode, long ms) {
  if (ms >= 0)
    expect_ok({"service", mode, std::to_string(ms)});
  else
    expect_ok({"service", mode});
}

void SimGateway::reply(const std::string &method, const std::string &text) { expect_ok({"reply", method}, text); }

void SimGateway::kernel(const std::string &mode, const std::string &db) {
  if (db.empty())
    expect_ok({"kernel", mode});
  else
    expect_ok({"kernel", mode, db});
}

std::string SimGateway::journal() {
  RunResult r = sim({"journal"});
  EXPECT_EQ(r.status, 0) << "vek-sim journal: " << r.err;
  return r.out;
}

std::vector<std::string> SimGateway::journal_lines() {
  std::vector<std::string> lines;
  std::string text = journal();
  size_t pos = 0;
  while (pos < text.size()) {
    size_t end = text.find('\n', pos);
    if (end == std::string::npos) end = text.size();
    lines.push_back(text.substr(pos, end - pos));
    pos = end + 1;
  }
  return lines;
}

void SimGateway::clear_journal() { expect_ok({"journal", "--clear"}); }

RunResult SimGateway::run(const std::vector<std::string> &args, const std::string &input) {
  std::vector<std::string> argv = {vektool_bin()};
  argv.insert(argv.end(), args.begin(), args.end());
  return run_process(argv, {"VEKTOOL_SYSROOT=" + root_}, input);
}

RunResult SimGateway::sh(const std::string &command) {
  return run_process({"/bin/sh", "-c", command}, {"VEKTOOL_SYSROOT=" + root_, "R=" + root_});
}

void SimTest::SetUp() {
  gw_.reset(new SimGateway);
  if (gw_->cannot_mount()) GTEST_SKIP() << "FUSE cannot mount here: " << gw_->error();
  ASSERT_TRUE(gw_->ok()) << gw_->error();
}

bool enter_private_mount_namespace() {
  if (unshare(CLONE_NEWNS) != 0) return false;
  return mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}
