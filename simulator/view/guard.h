// Which requests the page's server serves. It listens on the loopback alone, but a browser that
// shows a page from anywhere can send requests there.
#pragma once

#include <string_view>

namespace k7sim {

// What tells where a request comes from; empty for a header that is not there.
struct RequestOrigin {
  std::string_view host;    // Host: the name by which the browser knows this server
  std::string_view origin;  // Origin: the page that sends the request
  std::string_view site;    // Sec-Fetch-Site: the browser's own verdict on that page
};

// True when the name is one of this machine for itself, with any port. Any other name can have been
// made to lead here by the page that uses it.
bool IsLoopbackHost(std::string_view host);

// True unless a browser says that another page than the server's own sends the request. Programs
// that are no browsers send none of these headers and are served.
bool IsOwnPage(const RequestOrigin& request);

}  // namespace k7sim
