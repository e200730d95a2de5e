#include "sim_fixture.h"

#include <fcntl.h>
#include <sched.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

const int kExitCannotMount = 77;
const int kRunTimeoutMs = 30000;

std::string slurp(FILE *f) {
  std::string s;
  char buf[4096];
  rewind(f);
  for (size_t n; (n = fread(buf, 1, sizeof buf, f)) > 0;) s.append(buf, n);
  return s;
}

}  // namespace

bool mounted(const std::string &mount_point) {
  FILE *f = fopen("/proc/self/mountinfo", "re");
  if (!f) return false;
  bool found = slurp(f).find(" " + mount_point + " ") != std::string::npos;
  fclose(f);
  return found;
}

// Standard input, output and error are unlinked temporary files: nothing a
// detaching daemon keeps open can hold the run up.
RunResult run_process(const std::vector<std::string> &argv, const std::vector<std::string> &env,
                      const std::string &input) {
  RunResult res;
  FILE *io[3] = {tmpfile(), tmpfile(), tmpfile()};
  std::vector<char *> cargv;
  for (const std::string &a : argv) cargv.push_back(const_cast<char *>(a.c_str()));
  cargv.push_back(nullptr);
  pid_t pid = -1;
  if (io[0] && io[1] && io[2] && fwrite(input.data(), 1, input.size(), io[0]) == input.size() &&
      fflush(io[0]) == 0) {
    rewind(io[0]);
    for (FILE *f : io) fcntl(fileno(f), F_SETFD, FD_CLOEXEC);
    pid = fork();
  }
  if (pid == 0) {
    for (int i = 0; i < 3; i++) dup2(fileno(io[i]), i);
    for (const std::string &e : env) putenv(const_cast<char *>(e.c_str()));
    execv(cargv[0], cargv.data());
    _exit(127);
  }
  int status = 0;
  for (int waited = 0; pid > 0 && waitpid(pid, &status, WNOHANG) == 0; waited++) {
    if (waited == kRunTimeoutMs) kill(pid, SIGKILL);
    usleep(1000);
  }
  if (pid > 0) {
    res.out = slurp(io[1]);
    res.err = slurp(io[2]);
    res.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  }
  for (FILE *f : io)
    if (f) fclose(f);
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
  started_ = r.status == 0;
  cannot_mount_ = r.status == kExitCannotMount;
  if (!started_) error_ = "vek-sim start exited " + std::to_string(r.status) + ": " + r.err;
}

SimGateway::~SimGateway() {
  if (root_.empty()) return;
  if (started_) {
    EXPECT_EQ(sim({"stop"}).status, 0) << "vek-sim stop";
  }
  // Never remove a tree with a mount in it.
  if (mounted(root_ + "/proc")) {
    ADD_FAILURE() << "a mount is left on " << root_ << "/proc";
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

std::string SimGateway::expect_ok(const std::vector<std::string> &args, const std::string &input) {
  RunResult r = sim(args, input);
  std::string cmd;
  for (const std::string &a : args) cmd += " " + a;
  EXPECT_EQ(r.status, 0) << "vek-sim" << cmd << ": " << r.err;
  return r.out;
}

void SimGateway::set_file(const std::string &path, const std::string &text) { expect_ok({"file", path}, text); }
void SimGateway::missing(const std::string &path) { expect_ok({"missing", path}); }
void SimGateway::unreadable(const std::string &path) { expect_ok({"unreadable", path}); }
std::string SimGateway::cat(const std::string &path) { return expect_ok({"cat", path}); }

void SimGateway::set_exit(const std::string &program, int status, const std::string &stderr_text) {
  std::vector<std::string> args = {"exit", program, std::to_string(status)};
  if (!stderr_text.empty()) args.push_back(stderr_text);
  expect_ok(args);
}

void SimGateway::proc_start(const std::string &name, long pid) {
  std::vector<std::string> args = {"proc", "start", name};
  if (pid > 0) args.push_back(std::to_string(pid));
  expect_ok(args);
}

void SimGateway::proc_stop(const std::string &name) { expect_ok({"proc", "stop", name}); }

void SimGateway::service(const std::string &mode, long ms) {
  std::vector<std::string> args = {"service", mode};
  if (ms >= 0) args.push_back(std::to_string(ms));
  expect_ok(args);
}

void SimGateway::reply(const std::string &method, const std::string &text) { expect_ok({"reply", method}, text); }

void SimGateway::kernel(const std::string &mode, const std::string &db) {
  std::vector<std::string> args = {"kernel", mode};
  if (!db.empty()) args.push_back(db);
  expect_ok(args);
}

std::string SimGateway::journal() { return expect_ok({"journal"}); }

std::vector<std::string> SimGateway::journal_lines() {
  std::vector<std::string> lines;
  std::string text = journal();
  for (size_t pos = 0, end; pos < text.size(); pos = end + 1) {
    end = text.find('\n', pos);
    if (end == std::string::npos) end = text.size();
    lines.push_back(text.substr(pos, end - pos));
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
