// FakeTcpController: a loopback socket plays the controller on the network, in process.
#pragma once

#include <winsock2.h>

#include <atomic>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace k7test {

// Listens on a free port of 127.0.0.1, serves one connection after the other, records every line
// and answers by rule.
class FakeTcpController {
 public:
  FakeTcpController();
  ~FakeTcpController();
  FakeTcpController(const FakeTcpController&) = delete;
  FakeTcpController& operator=(const FakeTcpController&) = delete;

  // Its port, as the text that the driver resolves.
  std::wstring Service() const { return std::to_wstring(port_); }

  // When exactly this line (with its "\n") arrives, send `reply` back; empty: stay silent.
  void Answer(const std::string& line, const std::string& reply);
  // Lets no further connection in.
  void StopListening();

  std::vector<std::string> Lines() const;
  bool Has(const std::string& line) const;
  void Clear();
  // Connections that were made so far, and whether the last of them has been closed by the driver.
  int Connections() const { return connections_; }
  bool Closed() const { return connections_ > 0 && !open_; }

 private:
  void Run();
  void Serve(SOCKET socket);

  SOCKET listener_ = INVALID_SOCKET;
  std::atomic<SOCKET> connection_{INVALID_SOCKET};
  unsigned port_ = 0;
  std::thread thread_;
  mutable std::mutex guard_;  // lines_, answers_
  std::vector<std::string> lines_;
  std::map<std::string, std::string> answers_;
  std::atomic<int> connections_{0};
  std::atomic<bool> open_{false};
  std::atomic<bool> stopping_{false};
};

}  // namespace k7test
