// The request channel to the engine's service: one JSON request
// per connection on its Unix stream socket, and whatever it answers within
// the time-outs. No retries: a slow or silent service costs at most 3 s.
#pragma once

#include <cstddef>

#include "sys/text.h"

enum {
  SERVICE_OK = 0,          // sent; the reply (possibly none) is in the out-values
  SERVICE_NO_SOCKET = 1,   // the socket path does not exist
  SERVICE_NO_FD = 2,       // socket() failed
  SERVICE_NO_CONNECT = 3,  // connect() failed, or the path does not fit a socket address
  SERVICE_SHORT_SEND = 4,  // a send() sent less than its chunk
  SERVICE_NO_MEMORY = 6,   // the receive step could not allocate its buffer
};

// Connects to `socket_path` (a gateway path), sends `length` bytes of
// `request` in chunks of at most 1024 bytes, waits up to 3 s for the first
// reply bytes and then reads while the service keeps sending within 10 ms of
// waiting in all. A service that stays silent for 3 s gives SERVICE_OK with
// the out-values left as the caller set them; one that closes without a byte
// gives SERVICE_OK with a null reply of length 0.
int service_request(const char *socket_path, const char *request, size_t length, OwnedText *reply,
                    unsigned int *reply_length);

// Reads from a connected descriptor until the peer closes, a receive fails or
// the shared 10 ms budget runs out; the bytes go to the out-values (null and 0
// when none came). 0, or 1 when the buffer cannot be allocated.
int service_receive(int fd, OwnedText *reply, unsigned int *reply_length);
