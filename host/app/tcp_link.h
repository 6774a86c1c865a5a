// A TCP connection to a controller, for AttachLink.
#pragma once

#include <string>

#include "k7/driver.h"

namespace k7host {

struct TcpLink {
  k7::LinkHandle link = nullptr;  // an open socket; null: not connected
  std::string host;               // of "HOST" or "HOST:PORT"
  std::string error;              // one line, when not connected
};

// Connects to "HOST" or "HOST:PORT", port 23 unless given. The socket takes overlapped operations,
// as the driver makes them. Who gets it closes it, and calls WSACleanup. [host]
TcpLink ConnectTcp(const std::string& address);

}  // namespace k7host
