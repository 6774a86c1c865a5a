#include "link/tcp.h"

#include <ws2tcpip.h>

#include <gtest/gtest.h>

#include <string>

namespace k7 {
namespace {

// A listener on an address of the loopback network; empty when the system refuses it.
class Listener {
 public:
  Listener(const char* address, unsigned short port) {
    WSADATA ignored;
    WSAStartup(MAKEWORD(2, 2), &ignored);
    socket_ = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    sockaddr_in at{};
    at.sin_family = AF_INET;
    inet_pton(AF_INET, address, &at.sin_addr);
    at.sin_port = htons(port);
    ready_ =
        bind(socket_, reinterpret_cast<sockaddr*>(&at), sizeof at) == 0 && listen(socket_, 1) == 0;
    int length = sizeof at;
    getsockname(socket_, reinterpret_cast<sockaddr*>(&at), &length);
    port_ = ntohs(at.sin_port);
  }
  ~Listener() {
    closesocket(socket_);
    WSACleanup();
  }
  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;

  bool IsReady() const { return ready_; }
  std::wstring Service() const { return std::to_wstring(port_); }
  SOCKET Accept() const { return accept(socket_, nullptr, nullptr); }

 private:
  SOCKET socket_ = INVALID_SOCKET;
  bool ready_ = false;
  unsigned short port_ = 0;
};

bool IsWinsockStarted() {
  const SOCKET probe = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
  if (probe == INVALID_SOCKET) return WSAGetLastError() != WSANOTINITIALISED;
  closesocket(probe);
  return true;
}

TEST(OpenTcp, ConnectsToTheAddressAndService) {
  const Listener listener{"127.0.0.1", 0};
  ASSERT_TRUE(listener.IsReady());
  const SOCKET link = OpenTcp(L"127.0.0.1", listener.Service().c_str());
  ASSERT_NE(link, INVALID_SOCKET);
  const SOCKET peer = listener.Accept();
  ASSERT_NE(peer, INVALID_SOCKET);
  CloseLink(kLinkTcp, AsLink(link));
  char byte = 0;
  EXPECT_EQ(recv(peer, &byte, 1, 0), 0);  // closed in good order
  closesocket(peer);
}

// An address of this process's own, so that runs beside it do not meet.
TEST(OpenTcp, ControllersListenOnService23) {
  const DWORD id = GetCurrentProcessId();
  const std::string address =
      "127.23." + std::to_string(1 + id / 250 % 250) + "." + std::to_string(1 + id % 250);
  const Listener listener{address.c_str(), 23};
  if (!listener.IsReady()) GTEST_SKIP() << "port 23 is not to be had";
  const SOCKET link = OpenTcp(std::wstring{address.begin(), address.end()}.c_str());
  ASSERT_NE(link, INVALID_SOCKET);
  const SOCKET peer = listener.Accept();
  EXPECT_NE(peer, INVALID_SOCKET);
  closesocket(peer);
  CloseLink(kLinkTcp, AsLink(link));
}

TEST(OpenTcp, RefusedOrUnknownIsNoSocketAndReleasesWinsock) {
  std::wstring service;
  {
    const Listener gone{"127.0.0.1", 0};
    service = gone.Service();
  }
  const bool started = IsWinsockStarted();
  EXPECT_EQ(OpenTcp(L"127.0.0.1", service.c_str()), INVALID_SOCKET);
  EXPECT_EQ(OpenTcp(L"256.256.256.256.invalid", L"23"), INVALID_SOCKET);
  EXPECT_EQ(OpenTcp(L"127.0.0.1", L"no such service"), INVALID_SOCKET);
  EXPECT_EQ(IsWinsockStarted(), started);
}

TEST(CloseLink, IgnoresNullAndOtherTypes) {
  CloseLink(kLinkSerial, nullptr);
  CloseLink(kLinkTcp, nullptr);
  const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  CloseLink(kLinkNone, event);
  CloseLink(3, event);
  EXPECT_TRUE(SetEvent(event));
  CloseLink(kLinkSerial, event);
  EXPECT_FALSE(SetEvent(event));
}

}  // namespace
}  // namespace k7
