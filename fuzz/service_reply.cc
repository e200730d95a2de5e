// The replies of the engine's service to `cloud get` and `diag get`: any
// bytes, served by a listener on the scratch gateway's socket, then closed.
// Both commands print what they make of it in plain and JSON mode and must
// exit 0.
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <string>
#include <thread>

#include "fuzz_common.h"

namespace {

std::mutex g_lock;
std::string g_reply;

void serve(int listener) {
  for (;;) {
    int fd = accept(listener, nullptr, nullptr);
    if (fd < 0) continue;
    char request[1024];
    if (recv(fd, request, sizeof request, 0) > 0) {
      std::string reply;
      {
        std::lock_guard<std::mutex> hold(g_lock);
        reply = g_reply;
      }
      for (size_t sent = 0; sent < reply.size();) {
        ssize_t n = send(fd, reply.data() + sent, reply.size() - sent, MSG_NOSIGNAL);
        if (n <= 0) break;
        sent += static_cast<size_t>(n);
      }
    }
    close(fd);
  }
}

void listen_once() {
  static bool listening = false;
  if (listening) return;
  listening = true;
  std::string path = fuzz_root() + "/var/run/vek/vek.sock";
  int listener = socket(AF_UNIX, SOCK_STREAM, 0);
  struct sockaddr_un address;
  memset(&address, 0, sizeof address);
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof address.sun_path) abort();
  memcpy(address.sun_path, path.c_str(), path.size());
  unlink(path.c_str());
  if (bind(listener, reinterpret_cast<struct sockaddr *>(&address), sizeof address) != 0 ||
      listen(listener, 8) != 0)
    abort();
  std::thread(serve, listener).detach();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  listen_once();
  {
    std::lock_guard<std::mutex> hold(g_lock);
    g_reply.assign(reinterpret_cast<const char *>(data), size);
  }
  for (const char *group : {"cloud", "diag"}) {
    for (int json : {0, 1}) {
      if (fuzz_run({group, "get"}, json) != 0) abort();
    }
  }
  return 0;
}
