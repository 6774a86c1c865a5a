#include "support/link_ends.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace k7test {

namespace {

[[noreturn]] void Fail(const char* what) {
  std::fprintf(stderr, "LinkEnds: %s failed, error %lu\n", what, GetLastError());
  std::abort();
}

SOCKET MakeSocket(int bufferBytes) {
  const SOCKET made =
      WSASocketW(AF_INET, SOCK_STREAM, IPPROTO_TCP, nullptr, 0, WSA_FLAG_OVERLAPPED);
  if (made == INVALID_SOCKET) Fail("WSASocket");
  const char* const size = reinterpret_cast<const char*>(&bufferBytes);
  setsockopt(made, SOL_SOCKET, SO_SNDBUF, size, sizeof bufferBytes);
  setsockopt(made, SOL_SOCKET, SO_RCVBUF, size, sizeof bufferBytes);
  return made;
}

HANDLE AsHandle(SOCKET socket) {
  return reinterpret_cast<HANDLE>(socket);
}
SOCKET AsSocket(HANDLE end) {
  return reinterpret_cast<SOCKET>(end);
}

// A listener on a free port of the loopback, whose address it fills in.
SOCKET Listen(int bufferBytes, sockaddr_in& address) {
  const SOCKET listener = MakeSocket(bufferBytes);
  address = {};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  int length = sizeof address;
  if (bind(listener, reinterpret_cast<sockaddr*>(&address), length) != 0) Fail("bind");
  if (listen(listener, 1) != 0) Fail("listen");
  getsockname(listener, reinterpret_cast<sockaddr*>(&address), &length);
  return listener;
}

void StartWinsock() {
  WSADATA ignored;
  if (WSAStartup(MAKEWORD(2, 2), &ignored) != 0) Fail("WSAStartup");
}

}  // namespace

LinkEnds::LinkEnds(std::uint32_t linkType, int bufferBytes) : linkType_(linkType) {
  if (linkType == k7::kLinkTcp) {
    MakeSockets(bufferBytes);
  } else {
    MakePipe(bufferBytes);
  }
}

LinkEnds::LinkEnds(Listens) : linkType_(k7::kLinkTcp) {
  StartWinsock();
  sockaddr_in address{};
  listener_ = AsHandle(Listen(65536, address));
  port_ = ntohs(address.sin_port);
}

LinkEnds::~LinkEnds() {
  Close(driver_);
  CloseControllerEnd();
  if (linkType_ == k7::kLinkTcp) WSACleanup();
}

void LinkEnds::MakePipe(int bufferBytes) {
  static std::atomic<int> serial{0};
  const std::wstring name = L"\\\\.\\pipe\\k7test-" + std::to_wstring(GetCurrentProcessId()) +
                            L"-" + std::to_wstring(++serial);
  const auto size = static_cast<DWORD>(bufferBytes);
  controller_ = CreateNamedPipeW(name.c_str(), PIPE_ACCESS_DUPLEX | FILE_FLAG_OVERLAPPED,
                                 PIPE_TYPE_BYTE | PIPE_WAIT, 1, size, size, 0, nullptr);
  if (controller_ == INVALID_HANDLE_VALUE) Fail("CreateNamedPipe");
  driver_ = CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                        FILE_FLAG_OVERLAPPED, nullptr);
  if (driver_ == INVALID_HANDLE_VALUE) Fail("CreateFile");
}

void LinkEnds::MakeSockets(int bufferBytes) {
  StartWinsock();
  sockaddr_in address{};
  const SOCKET listener = Listen(bufferBytes, address);
  const SOCKET driver = MakeSocket(bufferBytes);
  if (connect(driver, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) Fail("connect");
  const SOCKET controller = accept(listener, nullptr, nullptr);
  if (controller == INVALID_SOCKET) Fail("accept");
  closesocket(listener);
  driver_ = AsHandle(driver);
  controller_ = AsHandle(controller);
}

bool LinkEnds::Accept(HANDLE stop) {
  if (listener_ == INVALID_HANDLE_VALUE) return true;
  const HANDLE arrived = WSACreateEvent();
  WSAEventSelect(AsSocket(listener_), arrived, FD_ACCEPT);
  const HANDLE events[] = {stop, arrived};
  const bool accepted = WaitForMultipleObjects(2, events, FALSE, INFINITE) == WAIT_OBJECT_0 + 1;
  if (accepted) {
    const SOCKET controller = accept(AsSocket(listener_), nullptr, nullptr);
    if (controller == INVALID_SOCKET) Fail("accept");
    WSAEventSelect(controller, nullptr, 0);  // handed down from the listener
    controller_ = AsHandle(controller);
  }
  WSACloseEvent(arrived);
  return accepted;
}

HANDLE LinkEnds::ReleaseDriverEnd() {
  const HANDLE end = driver_;
  driver_ = INVALID_HANDLE_VALUE;
  return end;
}

void LinkEnds::CloseControllerEnd() {
  Close(controller_);
  Close(listener_);
}

void LinkEnds::Close(HANDLE& end) const {
  if (end == INVALID_HANDLE_VALUE) return;
  if (linkType_ == k7::kLinkTcp) {
    closesocket(AsSocket(end));
  } else {
    CloseHandle(end);
  }
  end = INVALID_HANDLE_VALUE;
}

}  // namespace k7test
