#include "link/tcp.h"

#include <ws2tcpip.h>

#include "base/trace.h"

namespace k7 {

namespace {

// The first address of the list that accepts a connection.
SOCKET ConnectToFirst(const ADDRINFOW* addresses) noexcept {
  for (const ADDRINFOW* entry = addresses; entry != nullptr; entry = entry->ai_next) {
    const SOCKET socket = WSASocketW(entry->ai_family, entry->ai_socktype, entry->ai_protocol,
                                     nullptr, 0, WSA_FLAG_OVERLAPPED);
    if (socket == INVALID_SOCKET) continue;
    if (WSAConnect(socket, entry->ai_addr, static_cast<int>(entry->ai_addrlen), nullptr, nullptr,
                   nullptr, nullptr) != SOCKET_ERROR) {
      return socket;
    }
    TraceFailure(AsLink(socket), "connect", static_cast<std::uint32_t>(WSAGetLastError()));
    closesocket(socket);
  }
  return INVALID_SOCKET;
}

SOCKET ResolveAndConnect(const wchar_t* address, const wchar_t* service) noexcept {
  ADDRINFOW hints{};
  hints.ai_family = AF_UNSPEC;
  hints.ai_socktype = SOCK_STREAM;
  hints.ai_protocol = IPPROTO_TCP;
  ADDRINFOW* addresses = nullptr;
  if (const int error = GetAddrInfoW(address, service, &hints, &addresses); error != 0) {
    TraceFailure(nullptr, "resolve", static_cast<std::uint32_t>(error), address);
    return INVALID_SOCKET;
  }
  const SOCKET socket = ConnectToFirst(addresses);
  FreeAddrInfoW(addresses);
  return socket;
}

}  // namespace

SOCKET OpenTcp(const wchar_t* address, const wchar_t* service) noexcept {
  WSADATA ignored;
  if (WSAStartup(MAKEWORD(2, 2), &ignored) != 0) return INVALID_SOCKET;
  const SOCKET socket = ResolveAndConnect(address, service);
  if (socket == INVALID_SOCKET) {
    WSACleanup();
    return socket;
  }
  TraceName(AsLink(socket), "open", "tcp", address);
  return socket;
}

void CloseLink(std::uint32_t linkType, LinkHandle link) noexcept {
  if (link == nullptr) return;
  TraceEvent(link, "close");
  if (linkType == kLinkSerial) {
    CloseHandle(link);
  } else if (linkType == kLinkTcp) {
    closesocket(AsSocket(link));
    WSACleanup();
  }
}

}  // namespace k7
