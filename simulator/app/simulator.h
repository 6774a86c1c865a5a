// The board with its links, without any real port: bytes in, bytes out, two clocks. The server
// puts ports around it, tests and the fuzzer drive it directly.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/transcript.h"
#include "board/config_store.h"
#include "board/controller.h"
#include "faults/faults.h"
#include "wire/line_reader.h"
#include "wire/output_queue.h"

namespace k7sim {

struct SimulatorSetup {
  MachineSetup machine;
  std::string configPath;         // empty: the identity is kept in memory only
  std::optional<std::string> id;  // identity to start with, over what the file says
  double speed = 1;               // 0: as fast as possible
  double baud = 0;                // 0: bytes take no time
  std::vector<Fault> faults;
};

// A fault wants a link closed. `reopenUs`: after how long it opens again; kNever: never.
struct CloseRequest {
  TimeUs reopenUs = kNever;
};

class Simulator final : private ReplySink {
 public:
  explicit Simulator(const SimulatorSetup& setup, Transcript& transcript);

  // Adds a link, closed at first; its number is the result. `name` marks it in the transcript.
  int AddStream(WireKind kind, std::string name);

  // The host has opened the link: it is greeted. A link that is open already stays so.
  void HostOpened(int stream, TimeUs wireUs);
  // The host has closed it: what was on its way to the host is lost, and the line under way too.
  void HostClosed(int stream);
  bool IsOpen(int stream) const { return At(stream).open; }

  // Bytes from the host; they are taken as the link allows. While false the server should leave
  // further bytes where they are.
  void Receive(int stream, std::string_view bytes, TimeUs wireUs);
  bool WantsBytes(int stream) const;

  // Bytes for the host; see OutputQueue.
  std::string_view Ready(int stream, TimeUs wireUs);
  void Sent(int stream, std::size_t bytes, TimeUs wireUs);

  // Carries out all that is due at `wireUs`.
  void Run(TimeUs wireUs);
  // Fastest speed only: goes on to the next thing the machine does. False when it rests.
  bool JumpAhead(TimeUs wireUs);
  // When `Run` or `Ready` has something to do; kNever when only the host can bring it.
  TimeUs NextDue(TimeUs wireUs) const;

  // Sends text nobody asked for to every open link.
  void SendUnasked(std::string_view text);
  void HaltMachine(std::string_view alarm, TimeUs wireUs);
  void AddFault(const Fault& fault) { faults_.Add(fault); }
  // Links to be closed, each asked for once.
  std::vector<CloseRequest> TakeCloseRequests();
  void RequestClose(TimeUs reopenUs) { closeRequests_.push_back({reopenUs}); }

  Controller& Board() { return controller_; }
  const Controller& Board() const { return controller_; }
  const Faults& FaultsOf() const { return faults_; }
  TimeUs MachineNow() const { return clock_.Now(); }
  std::uint64_t LinesReceived() const { return lines_; }
  std::uint64_t RepliesSent() const { return replies_; }
  std::uint64_t RepliesLost() const { return lostReplies_; }
  std::uint64_t LostInputBytes() const;
  std::uint64_t LostOutputBytes() const;

 private:
  struct Stream {
    WireKind kind;
    std::string name;
    LineReader reader;
    OutputQueue out;
    Pacer inPacer;
    std::string inbox;        // bytes read from the port
    std::size_t arrived = 0;  // how many of them the wire has carried so far
    bool open = false;
  };

  Stream& At(int stream) { return *streams_[static_cast<std::size_t>(stream)]; }
  const Stream& At(int stream) const { return *streams_[static_cast<std::size_t>(stream)]; }

  // What goes out (simulator_replies.cpp).
  void Reply(int stream, std::uint64_t lineId, std::string_view text) override;
  void Deliver(int stream, const std::vector<OutputPiece>& pieces);
  void CarryOut(const FaultEvent& event);
  void CarryOutPending();

  void AdvanceMachine();
  void Consume(int stream);
  bool HasRoom(int stream) const;
  void TakeLine(int stream, const std::string& line);
  void SetTime(TimeUs wireUs);
  std::string_view PortName(int stream) const;

  SimulatorSetup setup_;
  Transcript& transcript_;
  ConfigStore config_;
  Controller controller_;
  Faults faults_;
  MachineClock clock_;
  TimeUs wireUs_ = 0;
  TimeUs machineUs_ = 0;  // machine time that is being carried out
  std::vector<std::unique_ptr<Stream>> streams_;
  std::vector<FaultEvent> pendingEvents_;
  std::vector<CloseRequest> closeRequests_;
  TimeUs silentUntilUs_ = 0;
  std::uint64_t lines_ = 0;
  std::uint64_t replies_ = 0;
  std::uint64_t lostReplies_ = 0;
};

}  // namespace k7sim
