// "HOST", "HOST:PORT" and "[HOST]:PORT", as --tcp takes them.
#pragma once

#include <optional>
#include <string>

namespace k7host {

struct TcpAddress {
  std::string host;
  std::string port;  // a number from 1 to 65535
};

// None, and why in `error`, when the text is no address. Without a port it is 23. [any]
std::optional<TcpAddress> ParseTcpAddress(const std::string& text, std::string& error);

}  // namespace k7host
