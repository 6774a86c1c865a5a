#include "args/tcp_address.h"

namespace k7host {
namespace {

constexpr char kPort[] = "23";
constexpr int kMostPort = 65535;

bool IsPort(const std::string& text) {
  if (text.empty() || text.size() > 5) return false;
  if (text.find_first_not_of("0123456789") != text.npos) return false;
  const int port = std::stoi(text);
  return port > 0 && port <= kMostPort;
}

}  // namespace

std::optional<TcpAddress> ParseTcpAddress(const std::string& text, std::string& error) {
  TcpAddress address{text, kPort};
  std::size_t colon = text.rfind(':');
  const std::size_t bracket = text.starts_with('[') ? text.find(']') : text.npos;
  if (bracket != text.npos) {
    address.host = text.substr(1, bracket - 1);
    colon = bracket + 1 < text.size() ? bracket + 1 : text.npos;
  } else if (colon != text.npos && text.find(':') == colon) {
    address.host = text.substr(0, colon);
  } else {
    colon = text.npos;  // none, or those of an address without a port
  }
  if (colon != text.npos) address.port = text.substr(colon + 1);
  if (address.host.empty() || (colon != text.npos && text[colon] != ':')) {
    error = "'" + text + "' is no HOST or HOST:PORT";
    return std::nullopt;
  }
  if (!IsPort(address.port)) {
    error = "'" + address.port + "' is no port; expected 1 to 65535";
    return std::nullopt;
  }
  return address;
}

}  // namespace k7host
