#include "view/guard.h"

#include <algorithm>
#include <string>

namespace k7sim {

bool IsLoopbackHost(std::string_view host) {
  // The colons of an IPv6 address stand in brackets.
  const std::size_t colon = host.find(':', host.starts_with('[') ? host.find(']') : 0);
  if (colon != host.npos) {
    const std::string_view port = host.substr(colon + 1);
    if (port.empty() || port.find_first_not_of("0123456789") != port.npos) return false;
    host = host.substr(0, colon);
  }
  std::string name(host);
  std::transform(name.begin(), name.end(), name.begin(), [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  });
  return name == "localhost" || name == "127.0.0.1" || name == "[::1]";
}

bool IsOwnPage(const RequestOrigin& request) {
  if (!request.origin.empty() && request.origin != "http://" + std::string(request.host)) {
    return false;
  }
  return request.site.empty() || request.site == "same-origin" || request.site == "none";
}

}  // namespace k7sim
