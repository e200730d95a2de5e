#include "config/service.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <functional>
#include <string>
#include <thread>

#include "scratch_sysroot.h"

namespace {

// A service on "/run/vek.sock" under the scratch sysroot that takes one
// connection and plays `script` on it.
class ServiceTest : public ScratchSysroot {
 protected:
  void SetUp() override {
    ScratchSysroot::SetUp();
    ASSERT_EQ(mkdir((root_ + "/run").c_str(), 0755), 0);
  }
  void TearDown() override {
    if (server_.joinable()) server_.join();
    if (listener_ >= 0) close(listener_);
    ScratchSysroot::TearDown();
  }

  void serve(std::function<void(int)> script) {
    listener_ = socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_GE(listener_, 0);
    struct sockaddr_un addr = {};
    addr.sun_family = AF_UNIX;
    snprintf(addr.sun_path, sizeof addr.sun_path, "%s/run/vek.sock", root_.c_str());
    ASSERT_EQ(bind(listener_, reinterpret_cast<struct sockaddr *>(&addr), sizeof addr), 0);
    ASSERT_EQ(listen(listener_, 1), 0);
    server_ = std::thread([this, script] {
      int fd = accept(listener_, nullptr, nullptr);
      if (fd < 0) return;
      script(fd);
      close(fd);
    });
  }

  // Reads the request until the client stops sending for 100 ms.
  static std::string read_request(int fd) {
    std::string request;
    char buf[4096];
    struct timeval wait = {0, 100000};
    setsockopt(fd, SOL_SOCKET, SO_RCVTIMEO, &wait, sizeof wait);
    for (ssize_t n; (n = recv(fd, buf, sizeof buf, 0)) > 0;) request.append(buf, static_cast<size_t>(n));
    return request;
  }

  int ask(const std::string &request, std::string *reply) {
    OwnedText text;
    unsigned int length = 99;
    int status = service_request("/run/vek.sock", request.data(), request.size(), &text, &length);
    *reply = text ? std::string(text.get(), length) : "<none:" + std::to_string(length) + ">";
    return status;
  }

  int listener_ = -1;
  std::thread server_;
};

TEST_F(ServiceTest, MissingOrDeadSocketFailsAtOnce) {
  std::string reply;
  EXPECT_EQ(ask("{}", &reply), SERVICE_NO_SOCKET);
  EXPECT_EQ(reply, "<none:99>");
  FILE *file = fopen((root_ + "/run/vek.sock").c_str(), "w");
  ASSERT_NE(file, nullptr);
  fclose(file);
  EXPECT_EQ(ask("{}", &reply), SERVICE_NO_CONNECT);
  EXPECT_EQ(service_request(nullptr, "{}", 2, nullptr, nullptr), SERVICE_NO_SOCKET);
}

// Both ways longer than one 1024-byte chunk; the reply's bytes, a NUL among
// them, come back exactly with their length.
TEST_F(ServiceTest, LongRequestAndLongReplyArriveWhole) {
  std::string request(2500, 'x'), received;
  request.front() = '{';
  request.back() = '}';
  std::string answer = "{\"return\":0,\"result\":\"" + std::string(5000, 'y') + "\"}\n";
  answer[100] = '\0';
  serve([&received, &answer](int fd) {
    received = read_request(fd);
    send(fd, answer.data(), answer.size(), MSG_NOSIGNAL);
  });
  std::string reply;
  EXPECT_EQ(ask(request, &reply), SERVICE_OK);
  EXPECT_EQ(reply, answer);
  server_.join();
  EXPECT_EQ(received, request);
}

TEST_F(ServiceTest, HangingUpWithoutAByteIsNoReply) {
  serve([](int fd) { read_request(fd); });
  std::string reply;
  EXPECT_EQ(ask("{\"v\":1,\"method\":\"get-cs\"}", &reply), SERVICE_OK);
  EXPECT_EQ(reply, "<none:0>");
}

// Pieces 8 ms apart each fit in 10 ms, but not in 10 ms shared by all
// passes: the reply is cut after the first piece or two. (A late scheduler
// can only cut it sooner.)
TEST_F(ServiceTest, PiecesShareOneReceiveBudget) {
  serve([](int fd) {
    read_request(fd);
    for (int i = 0; i < 6; i++) {
      if (send(fd, "piece;", 6, MSG_NOSIGNAL) != 6) return;
      std::this_thread::sleep_for(std::chrono::milliseconds(8));
    }
  });
  std::string reply;
  EXPECT_EQ(ask("{}", &reply), SERVICE_OK);
  EXPECT_TRUE(reply == "piece;" || reply == "piece;piece;") << reply;
}

}  // namespace
