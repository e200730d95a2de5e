#include "config/service.h"

#include <sys/select.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>

#include "sys/handles.h"
#include "sys/sysroot.h"

namespace {

const size_t kChunk = 1024;
const int kFirstReplySeconds = 3;
const long kReceiveBudgetMicroseconds = 10000;

// True when `fd` becomes readable within `timeout`; select counts the time
// value down, so a caller that passes the same one again shares the budget.
bool wait_readable(int fd, struct timeval *timeout) {
  fd_set readable;
  FD_ZERO(&readable);
  FD_SET(fd, &readable);
  return select(fd + 1, &readable, nullptr, nullptr, timeout) > 0 && FD_ISSET(fd, &readable);
}

}  // namespace

int service_receive(int fd, OwnedText *reply, unsigned int *reply_length) {
  // The holder lives on the stack, so it cannot fail to be allocated; only
  // the growth of its text can, which text_buffer_append survives.
  TextBuffer buffer;
  // One budget for the whole reply: it is not reset between passes.
  struct timeval budget = {0, kReceiveBudgetMicroseconds};
  char chunk[1024];
  while (wait_readable(fd, &budget)) {
    ssize_t n = recv(fd, chunk, sizeof chunk, 0);
    if (n < 1) break;  // the service closed, or the connection failed
    // Room doubles ahead of the appends, so that a large reply is not copied
    // over once for every chunk (a 10 MiB reply took 44 s under ASan).
    if (buffer.length + static_cast<unsigned int>(n) + 1 >= buffer.capacity)
      text_buffer_reserve(&buffer, buffer.capacity < 2048 ? 4096 : 2 * buffer.capacity);
    text_buffer_append(&buffer, chunk, static_cast<unsigned int>(n));
  }
  unsigned int length = 0;
  OwnedText text = text_buffer_take(&buffer, &length);
  if (reply) *reply = std::move(text);
  if (reply_length) *reply_length = length;
  return 0;
}

int service_request(const char *socket_path, const char *request, size_t length, OwnedText *reply,
                    unsigned int *reply_length) {
  if (!socket_path) return SERVICE_NO_SOCKET;
  SysPath path(socket_path);
  if (access(path, F_OK) != 0) return SERVICE_NO_SOCKET;

  // A path cut to fit the address could name another socket: one that does
  // not fit whole, terminator included, is never connected to.
  struct sockaddr_un address;
  const size_t path_length = strlen(path.c_str());
  if (path_length >= sizeof address.sun_path) return SERVICE_NO_CONNECT;

  Fd fd(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  if (!fd.ok()) return SERVICE_NO_FD;

  // As the engine's own clients fill it: the length is that of the path plus
  // the family field, not the size of the whole structure.
  memset(&address, 0, sizeof address);
  address.sun_family = AF_UNIX;
  memcpy(address.sun_path, path.c_str(), path_length);
  socklen_t address_length = static_cast<socklen_t>(path_length + sizeof address.sun_family);
  if (connect(fd.get(), reinterpret_cast<struct sockaddr *>(&address), address_length) != 0)
    return SERVICE_NO_CONNECT;

  for (size_t sent = 0; request && sent < length;) {
    size_t chunk = length - sent < kChunk ? length - sent : kChunk;
    // A service that is already gone must not end the tool by a signal.
    ssize_t n = send(fd.get(), request + sent, chunk, MSG_NOSIGNAL);
    if (n < 0 || static_cast<size_t>(n) != chunk) return SERVICE_SHORT_SEND;
    sent += chunk;
  }

  struct timeval first = {kFirstReplySeconds, 0};
  if (!wait_readable(fd.get(), &first)) return SERVICE_OK;  // too slow: no reply
  if (service_receive(fd.get(), reply, reply_length) != 0) return SERVICE_NO_MEMORY;
  return SERVICE_OK;
}
