// A simulated gateway for one test: a vek-sim in a fresh temporary sysroot,
// the scenario knobs, the journal, and runs of the real vektool against it.
//
//   TEST_F(SimTest, ClearTwice) {
//     gw().run({"mon", "clear-conn-count"});
//     EXPECT_EQ(gw().journal(), "write /proc/vek/monitor clear\n");
//   }
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

struct RunResult {
  std::string out;
  std::string err;
  int status = -1;  // exit status, or 128 + signal
};

// Runs a program with extra environment entries ("NAME=value") and standard
// input; standard output and error are collected apart. Killed after 30 s.
RunResult run_process(const std::vector<std::string> &argv, const std::vector<std::string> &env = {},
                      const std::string &input = "");

// Whether something is mounted on that path (in this mount namespace).
bool mounted(const std::string &mount_point);

// Paths of the built programs.
std::string vek_sim_bin();
std::string vektool_bin();

class SimGateway {
 public:
  // Starts a simulator in a fresh sysroot under $TMPDIR (or /tmp), owned by
  // this process: it ends itself should the test die.
  SimGateway();
  // Stops the simulator and removes the sysroot.
  ~SimGateway();
  SimGateway(const SimGateway &) = delete;
  SimGateway &operator=(const SimGateway &) = delete;

  bool ok() const { return started_; }
  bool cannot_mount() const { return cannot_mount_; }  // FUSE cannot mount here
  const std::string &error() const { return error_; }
  const std::string &root() const { return root_; }
  // R followed by a gateway path: where the tool finds it.
  std::string path(const std::string &gateway_path) const { return root_ + gateway_path; }

  // Scenario knobs; each fails the test when vek-sim refuses it.
  void set_file(const std::string &path, const std::string &text);
  void missing(const std::string &path);
  void unreadable(const std::string &path);
  std::string cat(const std::string &path);  // the simulator's own view
  void set_exit(const std::string &program, int status, const std::string &stderr_text = "");
  void proc_start(const std::string &name, long pid = 0);
  void proc_stop(const std::string &name);
  void service(const std::string &mode, long ms = -1);
  void reply(const std::string &method, const std::string &text);
  void kernel(const std::string &mode, const std::string &db = "");

  std::string journal();
  std::vector<std::string> journal_lines();
  void clear_journal();

  // The real vektool with VEKTOOL_SYSROOT set to this sysroot.
  RunResult run(const std::vector<std::string> &args, const std::string &input = "");
  // vek-sim --root R ARGS.
  RunResult sim(const std::vector<std::string> &args, const std::string &input = "");
  // sh -c COMMAND with VEKTOOL_SYSROOT and R=sysroot in the environment.
  RunResult sh(const std::string &command);

 private:
  // vek-sim --root R ARGS, which must succeed; returns its standard output.
  std::string expect_ok(const std::vector<std::string> &args, const std::string &input = "");

  std::string root_;  // R, a fresh temporary directory
  bool started_ = false;
  bool cannot_mount_ = false;
  std::string error_;
};

// A test with its own simulator; skipped (not passed) where FUSE cannot
// mount.
class SimTest : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override { gw_.reset(); }
  SimGateway &gw() { return *gw_; }

 private:
  std::unique_ptr<SimGateway> gw_;
};

// Moves the test process into a private mount namespace when it may, so that
// no mount outlives it whatever happens; returns false where it may not.
bool enter_private_mount_namespace();
