// The board with its links and faults, without real ports or real time: the owner brings bytes and
// the wire time and takes bytes away. The server gives it ports; tests and the fuzzer drive it
// directly.
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
  std::string configPath;         // file of the settings; empty: they are kept in memory only
  std::optional<std::string> id;  // identity that replaces the one in the settings
  double speed = 1;               // machine seconds in a second; 0: as fast as possible
  double baud = 0;                // 0: bytes take no time
  std::vector<Fault> faults;
};

// All links are to be closed.
struct CloseRequest {
  TimeUs reopenUs = kNever;  // after how long they open again; kNever: never
};

class Simulator final : private ReplySink {
 public:
  explicit Simulator(const SimulatorSetup& setup, Transcript& transcript);

  // Adds a link, which is closed at first. The result is its number; `name` stands for it in the
  // transcript.
  int AddLink(WireKind kind, std::string name);

  // A host has opened the link and is greeted. Does nothing when the link is open already.
  void HostOpened(int link, TimeUs wireUs);
  // The host has closed the link. Bytes on their way to it and its incomplete line are lost.
  void HostClosed(int link);
  bool IsOpen(int link) const { return LinkAt(link).open; }

  // Bytes from the host. The board takes them as its link allows.
  void Receive(int link, std::string_view bytes, TimeUs wireUs);
  // While false, the owner should leave further bytes unread.
  bool WantsBytes(int link) const;
  // How many to read at a time. A board that reads slowly takes few, so that the host feels it.
  std::size_t ReadLimit() const;

  // Bytes for the host, as OutputQueue has them.
  std::string_view Ready(int link, TimeUs wireUs);
  void Sent(int link, std::size_t bytes, TimeUs wireUs);

  // Carries out all that is due up to `wireUs`.
  void Run(TimeUs wireUs);
  // Unbounded clock only: goes on to the next event of the machine. False when there is none.
  bool JumpAhead(TimeUs wireUs);
  // When `Run` or `Ready` has something to do next; kNever when it takes a host to bring it about.
  TimeUs NextDue(TimeUs wireUs) const;

  // Sends text that is no reply on every open link. Of the faults only silence stops it.
  void SendUnasked(std::string_view text);
  // Halts the machine with this alarm; with an empty one, the alarm of an axis end.
  void HaltMachine(std::string_view alarm, TimeUs wireUs);
  void AddFault(const Fault& fault) { faults_.Add(fault); }
  // The requests to close all links since the last call.
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
  struct Link {
    WireKind kind;
    std::string name;
    double baud;  // 0: bytes take no time
    LineReader reader;
    OutputQueue out;
    Pacer inPacer;
    std::string inbox;        // bytes read from the port
    std::size_t arrived = 0;  // how many of them have passed at the baud rate
    bool open = false;
  };

  Link& LinkAt(int link) { return *links_[static_cast<std::size_t>(link)]; }
  const Link& LinkAt(int link) const { return *links_[static_cast<std::size_t>(link)]; }

  // To the host (simulator_replies.cpp).
  void Reply(int link, std::uint64_t lineId, std::string_view text) override;
  void Deliver(int link, const std::vector<OutputPiece>& pieces);
  void CarryOut(const FaultEvent& event);
  void CarryOutPending();
  void RestartBoard(TimeUs bootUs, std::string_view text);
  void SetPace(double bytesPerSecond);
  // Ends the faults whose time has passed.
  void EndFaults();
  bool IsDeaf() const { return wireUs_ < deafUntilUs_; }
  bool IsBooting() const { return wireUs_ < bootedUs_; }

  void AdvanceMachine();
  void Consume(int link);
  bool HasRoom(int link) const;
  void TakeLine(int link, const std::string& line);
  void SetTime(TimeUs wireUs);
  std::string_view LinkName(int link) const;

  SimulatorSetup setup_;
  Transcript& transcript_;
  ConfigStore config_;
  Controller controller_;
  Faults faults_;
  MachineClock clock_;
  TimeUs wireUs_ = 0;
  TimeUs machineUs_ = 0;  // up to which the machine has been carried on
  std::vector<std::unique_ptr<Link>> links_;
  std::vector<FaultEvent> pendingEvents_;
  std::vector<CloseRequest> closeRequests_;
  TimeUs silentUntilUs_ = 0;
  TimeUs deafUntilUs_ = 0;  // nothing is read before, and nothing sent
  TimeUs slowUntilUs_ = 0;  // few bytes are read before
  TimeUs bootedUs_ = 0;     // what is sent to the board before is lost
  std::string bootText_;    // to be sent then; empty: has been sent
  std::uint64_t lines_ = 0;
  std::uint64_t replies_ = 0;
  std::uint64_t lostReplies_ = 0;
};

}  // namespace k7sim
