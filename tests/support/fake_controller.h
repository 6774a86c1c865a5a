// FakeController: the far end of a link plays the controller, in process.
#pragma once

#include "support/link_ends.h"
// After winsock2.h, which it must not precede.
#include <windows.h>

#include <atomic>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace k7test {

// Records every line that the driver sends and answers by rule. The driver's end is made for
// overlapped I/O: the end of a named pipe, to be attached as a serial link (reads on it stay
// pending while the controller is silent), or a loopback socket, to be attached as a TCP link.
class FakeController {
 public:
  using Handler = std::function<void(FakeController&, const std::string& line)>;

  explicit FakeController(std::uint32_t linkType = k7::kLinkSerial, int bufferBytes = 65536);
  // A controller on the network, for a driver that connects by itself, once.
  explicit FakeController(LinkEnds::Listens listens);
  ~FakeController();  // stops answering and closes both ends
  FakeController(const FakeController&) = delete;
  FakeController& operator=(const FakeController&) = delete;

  // The end to attach, and as what; stays owned by the fake.
  HANDLE DriverEnd() const { return ends_.DriverEnd(); }
  std::uint32_t LinkType() const { return ends_.LinkType(); }
  // Gives the driver's end away for good: whoever has it closes it.
  HANDLE ReleaseDriverEnd() { return ends_.ReleaseDriverEnd(); }

  // Of one that listens: its port, as the text that the driver resolves.
  std::wstring Service() const { return std::to_wstring(ends_.Port()); }
  // The driver's end is there; the driver has closed it.
  bool IsConnected() const { return connected_; }
  bool IsClosed() const { return closed_; }

  // When exactly this line (with its "\n") arrives, send `reply` back (may be empty or hold several
  // lines). A later rule for the same line replaces the earlier.
  void Answer(const std::string& line, const std::string& reply);
  // When a line that starts with `prefix` arrives and no exact rule has matched: call `handler`, on
  // the fake's thread. The longest matching prefix wins.
  void OnPrefix(const std::string& prefix, Handler handler);
  // The answers of a healthy controller: liveness, block messages on and off, an identity, homed,
  // switches all open, and "QX", "BX", "EX" for every move while block messages are on.
  void BehaveWell(const std::string& controllerId = "TESTCONTROLLER01");
  // Answers to moves from now on: "QX\r\nBX\r\nEX\r\n" for each, or nothing.
  void AnswerMoves(bool on) { answerMoves_ = on; }

  // Sends bytes to the driver, unasked.
  void Say(const std::string& bytes);

  // Takes nothing off the link until ResumeReading: the driver's writes back up.
  void StopReading();
  void ResumeReading();
  // Stops for good and closes the controller's end, as a pulled cable does; lets nobody connect.
  void HangUp();

  // Sends a bare line feed, which means nothing, so that a reader that waits for a byte wakes up.
  // Given up after a moment when the pipe is full.
  void Nudge();

  // Every line received so far, each with its "\n".
  std::vector<std::string> Lines() const;
  // When such a line was received for the first time, by GetTickCount; 0: not yet.
  DWORD ReceivedAtMs(const std::string& line) const;
  // All of them in one text.
  std::string Transcript() const;
  // Forgets what was received.
  void Clear();
  // Waits until this line has been received / until at least `count` lines have; false: deadline.
  bool WaitForLine(const std::string& line) const;
  bool WaitForLines(std::size_t count) const;

 private:
  void Run();
  void Serve();
  void Write(const std::string& bytes, DWORD waitMs);
  void Handle(const std::string& line);

  LinkEnds ends_;
  const HANDLE stop_ = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  const HANDLE pause_ = CreateEventW(nullptr, TRUE, FALSE, nullptr);  // signalled: reads nothing
  const HANDLE resume_ = CreateEventW(nullptr, TRUE, TRUE, nullptr);  // the opposite
  std::thread thread_;
  mutable std::mutex guard_;  // lines_, rules
  std::mutex writeGuard_;
  std::vector<std::string> lines_;
  std::map<std::string, DWORD> receivedAtMs_;
  std::map<std::string, std::string> answers_;
  std::map<std::string, Handler> prefixes_;
  std::atomic<bool> connected_{false};
  std::atomic<bool> closed_{false};
  std::atomic<bool> answerMoves_{false};
  std::atomic<bool> blockMessages_{false};
};

}  // namespace k7test
