// The request channel to the service; cloud.t shows the simulator's replies
// (in pieces, cut, none) through the tool.
#include "config/service.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <thread>

#include "scratch_sysroot.h"

namespace {

using ServiceTest = ScratchSysroot;

// A service that reads the request, sends a reply longer than a chunk with a
// NUL inside, then pieces 8 ms apart: each fits in 10 ms, but not in the 10 ms
// one budget gives the whole reply. What came comes back with its exact length.
TEST_F(ServiceTest, OneBudgetForTheWholeReply) {
  std::string answer = "{\"result\":\"" + std::string(5000, 'y') + "\"}\n";
  answer[100] = '\0';
  int listener = socket(AF_UNIX, SOCK_STREAM, 0);
  struct sockaddr_un addr = {};
  addr.sun_family = AF_UNIX;
  snprintf(addr.sun_path, sizeof addr.sun_path, "%s/vek.sock", root_.c_str());
  ASSERT_EQ(bind(listener, reinterpret_cast<struct sockaddr *>(&addr), sizeof addr) + listen(listener, 1), 0);
  std::thread server([&answer, listener] {
    int fd = accept(listener, nullptr, nullptr);
    char request[3] = "";
    if (recv(fd, request, 2, MSG_WAITALL) == 2 && send(fd, answer.data(), answer.size(), MSG_NOSIGNAL) > 0)
      for (int i = 0; i < 6 && send(fd, "piece;", 6, MSG_NOSIGNAL) == 6; i++) usleep(8000);
    close(fd);
  });
  OwnedText text;
  unsigned int length = 0;
  EXPECT_EQ(service_request("/vek.sock", "{}", 2, &text, &length), SERVICE_OK);
  server.join();
  close(listener);
  // Whole pieces, cut before the sixth: a budget renewed on every pass would take all six.
  // How many come first depends on the scheduler, so a loaded machine is not held to one or two.
  std::string reply = text ? std::string(text.get(), length) : "", pieces = reply.substr(std::min(reply.size(), answer.size()));
  EXPECT_EQ(reply.substr(0, answer.size()), answer);
  EXPECT_TRUE(pieces.size() < 36 && pieces.size() % 6 == 0 && pieces.find_first_not_of("piece;") == std::string::npos) << pieces;
  put("/file.sock", "");  // no socket in the socket's place
  EXPECT_EQ(service_request("/file.sock", "{}", 2, &text, &length), SERVICE_NO_CONNECT);
  EXPECT_EQ(service_request("/none.sock", "{}", 2, nullptr, nullptr), SERVICE_NO_SOCKET);
  EXPECT_EQ(service_request(nullptr, "{}", 2, nullptr, nullptr), SERVICE_NO_SOCKET);
}

}  // namespace
