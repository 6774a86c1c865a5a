#include "support/fake_tcp_controller.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace k7test {

namespace {

[[noreturn]] void Fail(const char* what) {
  std::fprintf(stderr, "FakeTcpController: %s failed, error %d\n", what, WSAGetLastError());
  std::abort();
}

}  // namespace

FakeTcpController::FakeTcpController() {
  WSADATA ignored;
  if (WSAStartup(MAKEWORD(2, 2), &ignored) != 0) Fail("WSAStartup");
  listener_ = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  if (bind(listener_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) Fail("bind");
  int size = sizeof address;
  getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size);
  port_ = ntohs(address.sin_port);
  if (listen(listener_, 1) != 0) Fail("listen");
  thread_ = std::thread{[this] { Run(); }};
}

FakeTcpController::~FakeTcpController() {
  if (const SOCKET open = connection_.load(); open != INVALID_SOCKET) shutdown(open, SD_BOTH);
  StopListening();
  WSACleanup();
}

void FakeTcpController::StopListening() {
  if (!thread_.joinable()) return;
  // A connection of our own wakes the thread out of accept: closing a listener under it need not.
  stopping_ = true;
  const SOCKET waker = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(static_cast<u_short>(port_));
  connect(waker, reinterpret_cast<sockaddr*>(&address), sizeof address);
  thread_.join();
  closesocket(waker);
  closesocket(listener_);
}

void FakeTcpController::Answer(const std::string& line, const std::string& reply) {
  const std::lock_guard lock{guard_};
  answers_[line] = reply;
}

std::vector<std::string> FakeTcpController::Lines() const {
  const std::lock_guard lock{guard_};
  return lines_;
}

bool FakeTcpController::Has(const std::string& line) const {
  const std::lock_guard lock{guard_};
  return std::find(lines_.begin(), lines_.end(), line) != lines_.end();
}

void FakeTcpController::Clear() {
  const std::lock_guard lock{guard_};
  lines_.clear();
}

void FakeTcpController::Run() {
  for (;;) {
    const SOCKET accepted = accept(listener_, nullptr, nullptr);
    if (accepted == INVALID_SOCKET) return;
    if (stopping_) {
      closesocket(accepted);
      return;
    }
    open_ = true;
    ++connections_;
    connection_ = accepted;
    Serve(accepted);
    connection_ = INVALID_SOCKET;
    closesocket(accepted);
    open_ = false;
  }
}

void FakeTcpController::Serve(SOCKET socket) {
  std::string pending;
  for (;;) {
    char buffer[1024];
    const int count = recv(socket, buffer, sizeof buffer, 0);
    if (count <= 0) return;
    pending.append(buffer, static_cast<std::size_t>(count));
    for (std::size_t end = 0; (end = pending.find('\n')) != std::string::npos;) {
      const std::string line = pending.substr(0, end + 1);
      pending.erase(0, end + 1);
      std::string reply;
      {
        const std::lock_guard lock{guard_};
        lines_.push_back(line);
        if (const auto rule = answers_.find(line); rule != answers_.end()) reply = rule->second;
      }
      if (!reply.empty()) send(socket, reply.data(), static_cast<int>(reply.size()), 0);
    }
  }
}

}  // namespace k7test
