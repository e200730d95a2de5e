// The request channel to the service; cloud.t shows the simulator's replies
// (in pieces, cut, none) through the tool.
#include "config/service.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <functional>
#include <thread>

#include "scratch_sysroot.h"

namespace {

class ServiceTest : public ScratchSysroot {};

// A service on "/run/vek.sock" that takes one connection, reads the request
// and plays `script` (null: a plain file in the socket's place). The reply
// comes back with its exact length.
TEST_F(ServiceTest, RequestsAndReplies) {
  std::string answer = "{\"result\":\"" + std::string(5000, 'y') + "\"}\n";
  answer[100] = '\0';
  const struct { std::function<void(int)> script; int status; std::string reply; } cases[] = {
      {[&](int fd) { send(fd, answer.data(), answer.size(), MSG_NOSIGNAL); }, SERVICE_OK, answer},
      // Pieces 8 ms apart each fit in 10 ms, but not in 10 ms shared by all passes.
      {[](int fd) {
         for (int i = 0; i < 6 && send(fd, "piece;", 6, MSG_NOSIGNAL) == 6; i++) usleep(8000);
       }, SERVICE_OK, "piece;"},
      {nullptr, SERVICE_NO_CONNECT, "<none:99>"},
  };
  for (const auto &c : cases) {
    put("/run/vek.sock", "");
    std::thread server;
    int listener = socket(AF_UNIX, SOCK_STREAM, 0);
    if (c.script) {
      std::filesystem::remove(root_ + "/run/vek.sock");
      struct sockaddr_un addr = {};
      addr.sun_family = AF_UNIX;
      snprintf(addr.sun_path, sizeof addr.sun_path, "%s/run/vek.sock", root_.c_str());
      ASSERT_EQ(bind(listener, reinterpret_cast<struct sockaddr *>(&addr), sizeof addr) + listen(listener, 1), 0);
      server = std::thread([&c, listener] {
        int fd = accept(listener, nullptr, nullptr);
        char request[3] = "";
        if (recv(fd, request, 2, MSG_WAITALL) == 2) c.script(fd);
        close(fd);
      });
    }
    OwnedText text;
    unsigned int length = 99;
    EXPECT_EQ(service_request("/run/vek.sock", "{}", 2, &text, &length), c.status);
    if (server.joinable()) server.join();
    close(listener);
    std::string reply = text ? std::string(text.get(), length) : "<none:" + std::to_string(length) + ">";
    // Whole pieces, cut before the sixth: a budget renewed on every pass would take all six.
    // How many come first depends on the scheduler, so a loaded machine is not held to one or two.
    if (c.reply == "piece;")
      EXPECT_TRUE(!reply.empty() && reply.size() < 36 && reply.size() % 6 == 0 &&
                  reply.find_first_not_of("piece;") == std::string::npos) << reply;
    else EXPECT_EQ(reply, c.reply);
  }
  EXPECT_EQ(service_request("/run/none.sock", "{}", 2, nullptr, nullptr), SERVICE_NO_SOCKET);
  EXPECT_EQ(service_request(nullptr, "{}", 2, nullptr, nullptr), SERVICE_NO_SOCKET);
}

}  // namespace
