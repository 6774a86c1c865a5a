// A TCP port on the loopback interface.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "wire/port.h"
#include "wire/unique_fd.h"

namespace k7sim {

// Serves one host at a time. The next one waits until that one has gone.
class TcpPort final : public Port {
 public:
  // `port` 0: the system chooses a free one.
  explicit TcpPort(int port) : port_(port) {}

  std::vector<int> EventFds() const override;
  int DataFd() const override { return host_.Get(); }
  std::vector<bool> TakeEvents() override;
  std::string Read(std::size_t limit) override;
  std::size_t Write(std::string_view bytes) override;
  void Close() override;
  bool Open(std::string& error) override;
  std::string Where() const override { return "tcp " + std::to_string(port_); }

 private:
  int port_;
  UniqueFd listener_;
  UniqueFd host_;
  bool gone_ = false;  // the host has gone, and `TakeEvents` has not told of it yet
};

}  // namespace k7sim
