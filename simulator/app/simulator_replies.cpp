// What is sent to the host: replies as faults change them, and other lines. What faults do at once.
#include <algorithm>
#include <utility>

#include "app/simulator.h"

namespace k7sim {
namespace {

constexpr int kEventRounds = 16;  // limit of faults that set off each other
constexpr std::string_view kDefaultAlarm = "ALARM: Hard limit +X\n";
constexpr std::string_view kDefaultBootText = "Smoothie\r\nok\r\n";

}  // namespace

void Simulator::Reply(int link, std::uint64_t lineId, std::string_view text) {
  const std::vector<OutputPiece> pieces = faults_.OnReply(lineId, text, wireUs_, pendingEvents_);
  if (pieces.size() != 1 || pieces[0].text != text || pieces[0].delayUs != 0) {
    transcript_.Note("fault: changed " + std::string(text));
  }
  if (link != kAllLinks) {
    Deliver(link, pieces);
    return;
  }
  for (int i = 0; i < static_cast<int>(links_.size()); ++i) Deliver(i, pieces);
}

void Simulator::Deliver(int link, const std::vector<OutputPiece>& pieces) {
  Link& state = LinkAt(link);
  for (const OutputPiece& piece : pieces) {
    if (!state.open || wireUs_ < silentUntilUs_ || IsDeaf() || IsBooting()) {
      ++lostReplies_;
      transcript_.Lost(LinkName(link), piece.text);
      continue;
    }
    ++replies_;
    transcript_.Out(LinkName(link), piece.text);
    if (piece.overtaken) {
      state.out.PutLater(piece.text, wireUs_ + piece.delayUs);
    } else {
      state.out.Put(piece.text, piece.delayUs > 0 ? wireUs_ + piece.delayUs : 0);
    }
  }
}

void Simulator::SendUnasked(std::string_view text) {
  for (int i = 0; i < static_cast<int>(links_.size()); ++i) {
    Deliver(i, {{std::string(text), 0, false}});
  }
}

void Simulator::HaltMachine(std::string_view alarm, TimeUs wireUs) {
  SetTime(wireUs);
  controller_.Alarm(alarm.empty() ? kDefaultAlarm : alarm, machineUs_);
}

void Simulator::SetPace(double bytesPerSecond) {
  for (const auto& state : links_) {
    const bool limited = state->baud > 0 && bytesPerSecond > 0;
    const double baud = bytesPerSecond * kBitsPerByte;
    state->arrived = 0;  // what is in the inbox is still to come
    state->inPacer = Pacer(limited ? std::min(state->baud, baud) : std::max(state->baud, baud));
  }
}

void Simulator::RestartBoard(TimeUs bootUs, std::string_view text) {
  controller_.Restart(machineUs_);
  for (const auto& state : links_) state->reader.Reset();
  bootedUs_ = wireUs_ + bootUs;
  bootText_ = text;
  EndFaults();
}

void Simulator::EndFaults() {
  if (slowUntilUs_ != 0 && wireUs_ >= slowUntilUs_) {
    slowUntilUs_ = 0;
    SetPace(0);
  }
  if (!bootText_.empty() && !IsBooting()) SendUnasked(std::exchange(bootText_, {}));
}

void Simulator::CarryOut(const FaultEvent& event) {
  const TimeUs untilUs = event.durationUs > 0 ? event.durationUs : kNever;
  switch (event.action) {
    case FaultAction::Inject:
      SendUnasked(event.text);
      break;
    case FaultAction::Halt:
      HaltMachine(event.text, wireUs_);
      break;
    case FaultAction::Silent:
      transcript_.Note("fault: silent from here");
      silentUntilUs_ = untilUs == kNever ? kNever : wireUs_ + untilUs;
      break;
    case FaultAction::Close:
      transcript_.Note("fault: the link closes");
      for (int i = 0; i < static_cast<int>(links_.size()); ++i) HostClosed(i);
      closeRequests_.push_back({untilUs});
      break;
    case FaultAction::HalfOpen:
      transcript_.Note("fault: nothing is read or sent from here");
      deafUntilUs_ = untilUs == kNever ? kNever : wireUs_ + untilUs;
      break;
    case FaultAction::SlowDrain:
      transcript_.Note("fault: few bytes are read from here");
      slowUntilUs_ = untilUs == kNever ? kNever : wireUs_ + untilUs;
      SetPace(event.bytesPerSecond);
      break;
    case FaultAction::Reboot:
      transcript_.Note("fault: the board restarts");
      RestartBoard(event.durationUs, event.text.empty() ? kDefaultBootText : event.text);
      break;
    default:
      break;
  }
}

void Simulator::CarryOutPending() {
  // The reply to one event can set off the next. The limit ends a fault that sets itself off.
  for (int round = 0; round < kEventRounds && !pendingEvents_.empty(); ++round) {
    const std::vector<FaultEvent> events = std::exchange(pendingEvents_, {});
    for (const FaultEvent& event : events) CarryOut(event);
  }
}

}  // namespace k7sim
