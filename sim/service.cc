#include "service.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <mutex>
#include <thread>
#include <vector>

#include "state.h"

namespace {

const long kSlowMs = 3500;    // past the 3 s the tool waits for a first byte
const size_t kPieceSize = 16;
const int kRequestWaitMs = 1000;

// The method named in a request such as {"v":1,"method":"get-cs"}.
std::string request_method(const std::string &req) {
  size_t pos = req.find("\"method\"");
  if (pos == std::string::npos) return "";
  pos = req.find_first_not_of(" \t\r\n", pos + 8);
  if (pos == std::string::npos || req[pos] != ':') return "";
  pos = req.find_first_not_of(" \t\r\n", pos + 1);
  if (pos == std::string::npos || req[pos] != '"') return "";
  size_t end = req.find('"', pos + 1);
  if (end == std::string::npos) return "";
  return req.substr(pos + 1, end - pos - 1);
}

// True once the text holds one whole JSON object.
bool request_complete(const std::string &req) {
  int depth = 0;
  bool in_string = false, escaped = false, opened = false;
  for (char c : req) {
    if (in_string) {
      if (escaped)
        escaped = false;
      else if (c == '\\')
        escaped = true;
      else if (c == '"')
        in_string = false;
    } else if (c == '"') {
      in_string = true;
    } else if (c == '{') {
      depth++;
      opened = true;
    } else if (c == '}') {
      depth--;
      if (opened && depth == 0) return true;
    }
  }
  return false;
}

}  // namespace

struct Service::Impl {
  SimRoot r;
  std::string socket_path, gateway_path;
  Fd listen_fd;
  Fd stop_read, stop_write;  // a byte in this pipe wakes every wait for good
  std::thread acceptor;
  struct Conn {
    std::thread thread;
    std::shared_ptr<std::atomic<bool>> done;
  };
  std::mutex mu;
  std::vector<Conn> conns;
  bool running = false;

  // Waits up to `ms` (-1: for ever) for `fd` to become readable; false when
  // the service stops first or the time runs out.
  bool wait_readable(int fd, int ms) {
    struct pollfd p[2] = {{fd, POLLIN, 0}, {stop_read.get(), POLLIN, 0}};
    for (;;) {
      int n = poll(p, 2, ms);
      if (n < 0 && errno == EINTR) continue;
      if (n <= 0 || (p[1].revents & POLLIN)) return false;
      return (p[0].revents & (POLLIN | POLLHUP | POLLERR)) != 0;
    }
  }

  // Sleeps `ms`; false when the service stops or the client goes first.
  bool pause(int fd, long ms) {
    if (ms <= 0) return true;
    return !wait_readable(fd, static_cast<int>(ms));
  }

  static bool send_all(int fd, const char *data, size_t len) {
    while (len > 0) {
      ssize_t n = send(fd, data, len, MSG_NOSIGNAL);
      if (n < 0 && errno == EINTR) continue;
      if (n <= 0) return false;
      data += n;
      len -= static_cast<size_t>(n);
    }
    return true;
  }

  void serve(Fd client) {
    std::string req;
    char buf[1024];
    ServiceMode m = service_mode(r);
    int fd = client.get();
    if (m.mode == "reset") {
      // Only looks at the request: closing with it still unread resets the
      // connection, so the client's next receive fails.
      ssize_t n = wait_readable(fd, kRequestWaitMs) ? recv(fd, buf, sizeof buf, MSG_PEEK) : 0;
      if (n > 0) req.assign(buf, static_cast<size_t>(n));
    } else {
      while (!request_complete(req) && wait_readable(fd, kRequestWaitMs)) {
        ssize_t n = read(fd, buf, sizeof buf);
        if (n <= 0) break;
        req.append(buf, static_cast<size_t>(n));
      }
    }
    r.journal("request " + gateway_path + " " + escape_bytes(req.data(), req.size()));
    std::string reply;
    std::string method = request_method(req);
    if (method.empty() || method.find('/') != std::string::npos ||
        !read_file(service_reply_path(r, method), &reply))
      reply = "{\"return\":1,\"detail\":\"unknown method\"}\n";
    if (m.mode == "close") return;  // hangs up without a byte
    if (m.mode == "reset") {
      send_all(fd, reply.data(), std::min(kPieceSize, reply.size()));
      return;
    }
    if (m.mode == "silent") {
      // Holds the connection without a word until the client gives up.
      while (wait_readable(fd, -1) && read(fd, buf, sizeof buf) > 0) {
      }
      return;
    }
    if (m.mode == "slow" && !pause(fd, m.ms < 0 ? kSlowMs : m.ms)) return;
    if (m.mode == "pieces") {
      for (size_t off = 0; off < reply.size(); off += kPieceSize) {
        if (!send_all(fd, reply.data() + off, std::min(kPieceSize, reply.size() - off))) return;
        if (off == 0 && !pause(fd, m.ms)) return;
      }
      return;
    }
    send_all(fd, reply.data(), reply.size());
  }

  void reap(bool all) {
    std::lock_guard<std::mutex> lock(mu);
    for (auto it = conns.begin(); it != conns.end();) {
      if (all || it->done->load()) {
        it->thread.join();
        it = conns.erase(it);
      } else {
        ++it;
      }
    }
  }

  void accept_loop() {
    while (wait_readable(listen_fd.get(), -1)) {
      Fd client(accept4(listen_fd.get(), nullptr, nullptr, SOCK_CLOEXEC));
      reap(false);
      if (!client.ok()) continue;
      auto done = std::make_shared<std::atomic<bool>>(false);
      std::lock_guard<std::mutex> lock(mu);
      conns.push_back({std::thread([this, done](Fd c) {
                         serve(std::move(c));
                         done->store(true);
                       }, std::move(client)),
                       done});
    }
  }
};

Service::Service() : impl_(new Impl) {}

Service::~Service() { stop(); }

std::string Service::parked_path(const std::string &socket_path) {
  return dir_name(socket_path) + "/." + base_name(socket_path) + ".down";
}

bool Service::start(const SimRoot &r, const std::string &socket_path, const std::string &gateway_path,
                    std::string *error) {
  Impl &s = *impl_;
  s.r = r;
  s.socket_path = socket_path;
  s.gateway_path = gateway_path;
  struct sockaddr_un addr;
  memset(&addr, 0, sizeof addr);
  addr.sun_family = AF_UNIX;
  if (socket_path.size() >= sizeof addr.sun_path) {
    *error = "the service socket path is longer than a socket address takes: " + socket_path;
    return false;
  }
  memcpy(addr.sun_path, socket_path.c_str(), socket_path.size());
  make_dirs(dir_name(socket_path));
  unlink(socket_path.c_str());
  unlink(parked_path(socket_path).c_str());
  s.listen_fd.reset(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  if (!s.listen_fd.ok() || bind(s.listen_fd.get(), reinterpret_cast<struct sockaddr *>(&addr), sizeof addr) != 0 ||
      listen(s.listen_fd.get(), 16) != 0) {
    *error = strprintf("cannot listen on %s: %s", socket_path.c_str(), strerror(errno));
    return false;
  }
  if (service_mode(r).mode == "down") rename(socket_path.c_str(), parked_path(socket_path).c_str());
  int p[2];
  if (pipe2(p, O_CLOEXEC) != 0) {
    *error = strprintf("pipe: %s", strerror(errno));
    return false;
  }
  s.stop_read.reset(p[0]);
  s.stop_write.reset(p[1]);
  s.acceptor = std::thread([&s] { s.accept_loop(); });
  s.running = true;
  return true;
}

void Service::stop() {
  Impl &s = *impl_;
  if (!s.running) return;
  s.running = false;
  char c = 0;
  while (write(s.stop_write.get(), &c, 1) < 0 && errno == EINTR) {
  }
  s.acceptor.join();
  s.reap(true);
  unlink(s.socket_path.c_str());
  unlink(parked_path(s.socket_path).c_str());
}
