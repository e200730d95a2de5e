// The simulated vek_service: answers one JSON request per connection on the
// socket in the run directory, the way the scenario's service mode says.
#pragma once

#include <memory>
#include <string>

#include "common.h"

class Service {
 public:
  Service();
  ~Service();  // stops, joins every thread, removes the socket file
  Service(const Service &) = delete;
  Service &operator=(const Service &) = delete;

  // Binds `socket_path` (host path) and starts answering; `gateway_path` is
  // the path the gateway knows it by, for the journal.
  bool start(const SimRoot &r, const std::string &socket_path, const std::string &gateway_path,
             std::string *error);
  void stop();

  // Where the socket file is put while the service is "down": renamed away,
  // so the path is gone but the listening socket survives for a later mode.
  static std::string parked_path(const std::string &socket_path);

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};
