#include "app/tcp_link.h"

// Before windows.h, which would bring in an older one.
#include <winsock2.h>
#include <ws2tcpip.h>

#include "args/tcp_address.h"
#include "core/text.h"

namespace k7host {
namespace {

SOCKET ConnectToFirst(const ADDRINFOW* addresses) {
  for (const ADDRINFOW* entry = addresses; entry != nullptr; entry = entry->ai_next) {
    const SOCKET socket = WSASocketW(entry->ai_family, entry->ai_socktype, entry->ai_protocol,
                                     nullptr, 0, WSA_FLAG_OVERLAPPED);
    if (socket == INVALID_SOCKET) continue;
    if (connect(socket, entry->ai_addr, static_cast<int>(entry->ai_addrlen)) == 0) return socket;
    closesocket(socket);
  }
  return INVALID_SOCKET;
}

}  // namespace

TcpLink ConnectTcp(const std::string& address) {
  TcpLink result;
  const auto parsed = ParseTcpAddress(address, result.error);
  if (!parsed) return result;
  result.host = parsed->host;
  WSADATA ignored;
  if (WSAStartup(MAKEWORD(2, 2), &ignored) != 0) {
    result.error = "there is no network";
    return result;
  }
  ADDRINFOW hints{};
  hints.ai_socktype = SOCK_STREAM;
  hints.ai_protocol = IPPROTO_TCP;
  ADDRINFOW* addresses = nullptr;
  SOCKET socket = INVALID_SOCKET;
  if (GetAddrInfoW(WideText(result.host).c_str(), WideText(parsed->port).c_str(), &hints,
                   &addresses) == 0) {
    socket = ConnectToFirst(addresses);
    FreeAddrInfoW(addresses);
    if (socket == INVALID_SOCKET) result.error = "nobody answers at port " + parsed->port;
  } else {
    result.error = "there is no such host";
  }
  if (socket == INVALID_SOCKET) {
    WSACleanup();
  } else {
    result.link = reinterpret_cast<k7::LinkHandle>(socket);
  }
  return result;
}

}  // namespace k7host
