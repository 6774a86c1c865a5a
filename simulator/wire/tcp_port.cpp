#include "wire/tcp_port.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include <cerrno>
#include <cstdint>

#include "wire/system_error.h"

namespace k7sim {

bool TcpPort::Open(std::string& error) {
  const auto fail = [&](const char* what) {
    return FailBySystem(error, std::string(what) + " port " + std::to_string(port_));
  };
  listener_.Reset(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
  if (!listener_) return fail("cannot make a socket for");
  const int on = 1;
  setsockopt(listener_.Get(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port_));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  auto* plain = reinterpret_cast<sockaddr*>(&address);
  if (bind(listener_.Get(), plain, size) != 0) return fail("cannot use");
  if (listen(listener_.Get(), 8) != 0) return fail("cannot listen on");
  if (getsockname(listener_.Get(), plain, &size) != 0) return fail("cannot name");
  port_ = ntohs(address.sin_port);
  return true;
}

void TcpPort::Close() {
  if (host_) gone_ = true;
  host_.Reset();
  listener_.Reset();
}

std::vector<int> TcpPort::EventFds() const {
  // While a host is connected the next one waits.
  return {host_ ? -1 : listener_.Get()};
}

std::vector<bool> TcpPort::TakeEvents() {
  std::vector<bool> changes;
  if (gone_) {
    gone_ = false;
    host_.Reset();
    changes.push_back(false);
  }
  if (!host_ && listener_) {
    host_.Reset(accept4(listener_.Get(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
    if (host_) {
      const int on = 1;
      setsockopt(host_.Get(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
      changes.push_back(true);
    }
  }
  return changes;
}

std::string TcpPort::Read(std::size_t limit) {
  std::string bytes(limit, '\0');
  const ssize_t got = host_ ? recv(host_.Get(), bytes.data(), limit, 0) : -1;
  if (host_ && (got == 0 || (got < 0 && errno != EAGAIN && errno != EINTR))) gone_ = true;
  bytes.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
  return bytes;
}

std::size_t TcpPort::Write(std::string_view bytes) {
  const ssize_t went = host_ ? send(host_.Get(), bytes.data(), bytes.size(), MSG_NOSIGNAL) : -1;
  if (host_ && went < 0 && errno != EAGAIN && errno != EINTR) gone_ = true;
  return went > 0 ? static_cast<std::size_t>(went) : 0;
}

}  // namespace k7sim
