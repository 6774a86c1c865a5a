#include "app/simulator.h"

#include <algorithm>
#include <utility>

namespace k7sim {
namespace {

// What a host leaves unread for so long is dropped on a serial link; a socket keeps it.
constexpr TimeUs kUnreadUs = 1'000'000;
constexpr std::size_t kReadBytes = 4096;
constexpr std::size_t kSlowReadBytes = 16;

std::string_view GreetingOf(WireKind kind) {
  switch (kind) {
    case WireKind::Usb:
      return "Smoothie\r\nok\r\n";
    case WireKind::Tcp:
      return "Smoothie command shell\r\n";
    case WireKind::Uart:
      break;
  }
  return {};
}

}  // namespace

Simulator::Simulator(const SimulatorSetup& setup, Transcript& transcript)
    : setup_(setup),
      transcript_(transcript),
      config_(setup.configPath),
      controller_(setup.machine, config_, *this),
      clock_(setup.speed) {
  controller_.Record().SetListener([this](const MistakeRecord& mistake) {
    transcript_.Note("error: " + mistake.what + ", line " + std::to_string(mistake.line) + ": " +
                     mistake.command);
  });
  if (setup.id) config_.Set("controller_id", *setup.id);
  for (const Fault& fault : setup.faults) faults_.Add(fault);
}

int Simulator::AddLink(WireKind kind, std::string name) {
  const TimeUs dropAfterUs = kind == WireKind::Tcp ? kNever : kUnreadUs;
  const double baud = kind == WireKind::Tcp ? 0 : setup_.baud;
  links_.push_back(std::make_unique<Link>(Link{kind,
                                               std::move(name),
                                               baud,
                                               LineReader(kind),
                                               OutputQueue(baud, dropAfterUs),
                                               Pacer(baud),
                                               {},
                                               0,
                                               false}));
  return static_cast<int>(links_.size()) - 1;
}

std::string_view Simulator::LinkName(int link) const {
  return links_.size() > 1 ? std::string_view(LinkAt(link).name) : std::string_view();
}

void Simulator::SetTime(TimeUs wireUs) {
  wireUs_ = std::max(wireUs_, wireUs);
  transcript_.SetTime(clock_.At(wireUs_), wireUs_);
}

void Simulator::HostOpened(int link, TimeUs wireUs) {
  SetTime(wireUs);
  Link& state = LinkAt(link);
  const bool first = !state.open;
  state.open = true;
  if (first && !GreetingOf(state.kind).empty()) Reply(link, 0, GreetingOf(state.kind));
}

void Simulator::HostClosed(int link) {
  Link& state = LinkAt(link);
  state.open = false;
  state.out.Clear();
  state.reader.Reset();
}

bool Simulator::WantsBytes(int link) const {
  if (IsDeaf()) return false;
  if (wireUs_ < slowUntilUs_) return LinkAt(link).inbox.empty();
  // A bare UART has no flow control: its bytes come whether there is room or not.
  return LinkAt(link).kind == WireKind::Uart || LinkAt(link).inbox.empty();
}

std::size_t Simulator::ReadLimit() const {
  return wireUs_ < slowUntilUs_ ? kSlowReadBytes : kReadBytes;
}

void Simulator::Receive(int link, std::string_view bytes, TimeUs wireUs) {
  LinkAt(link).inbox.append(bytes);
  Run(wireUs);
}

bool Simulator::HasRoom(int link) const {
  const std::size_t waitingBytes = controller_.WaitingBytes(link);
  switch (LinkAt(link).kind) {
    case WireKind::Usb:
      return waitingBytes == 0 ||
             waitingBytes + LinkAt(link).reader.PendingBytes() + kUsbFreeBytes < kUsbRingBytes;
    case WireKind::Tcp:
      return controller_.WaitingLines(link) < kTcpQueuedLines;
    case WireKind::Uart:
      return waitingBytes == 0 ||
             waitingBytes + LinkAt(link).reader.PendingBytes() < kUartRingBytes;
  }
  return true;
}

void Simulator::Consume(int link) {
  Link& state = LinkAt(link);
  state.arrived += state.inPacer.Take(state.inbox.size() - state.arrived, wireUs_);
  std::size_t used = 0;
  for (; used < state.arrived && !IsDeaf(); ++used) {
    if (IsBooting()) {
      state.reader.CountLost(1);
      continue;
    }
    if (!HasRoom(link)) {
      if (state.kind != WireKind::Uart) break;
      state.reader.CountLost(1);
      continue;
    }
    switch (state.reader.Put(state.inbox[used])) {
      case LineReader::Event::Line:
        TakeLine(link, state.reader.Line());
        break;
      case LineReader::Event::Halt:
        transcript_.In(LinkName(link), std::string_view(&kHaltByte, 1));
        controller_.Halt(machineUs_);
        break;
      case LineReader::Event::Status:
        transcript_.In(LinkName(link), std::string_view(&kStatusByte, 1));
        Reply(link, 0, controller_.StatusReport(machineUs_));
        break;
      case LineReader::Event::Hold:
        transcript_.In(LinkName(link), std::string_view(&kHoldByte, 1));
        controller_.Hold(machineUs_);
        break;
      case LineReader::Event::Resume:
        transcript_.In(LinkName(link), std::string_view(&kResumeByte, 1));
        controller_.ResumeHold(machineUs_);
        break;
      case LineReader::Event::None:
        break;
    }
  }
  state.inbox.erase(0, used);
  state.arrived -= std::min(state.arrived, used);
}

void Simulator::TakeLine(int link, const std::string& line) {
  const std::uint64_t id = ++lines_;
  transcript_.In(LinkName(link), line);
  LineFate fate;
  const std::uint64_t restarts = controller_.Counts().restarts;
  for (const FaultEvent& event : faults_.OnLine(id, line, wireUs_, fate)) CarryOut(event);
  if (IsDeaf() || controller_.Counts().restarts != restarts) fate.lost = true;
  if (fate.lost) {
    transcript_.Note("fault: the line above is lost");
  } else if (fate.garbled) {
    const std::string garbled = Garbled(line);
    transcript_.Note("fault: the board has " + garbled);
    controller_.TakeLine(garbled, id, link, machineUs_);
  } else {
    controller_.TakeLine(line, id, link, machineUs_);
  }
  CarryOutPending();
}

void Simulator::AdvanceMachine() {
  const TimeUs now = clock_.Now();
  for (TimeUs due = controller_.NextEvent(); due <= now && due != kNever;
       due = controller_.NextEvent()) {
    machineUs_ = std::max(machineUs_, due);
    transcript_.SetTime(machineUs_, wireUs_);
    controller_.Advance(machineUs_);
    CarryOutPending();
    // Bytes that had no room are taken as soon as there is some.
    for (int i = 0; i < static_cast<int>(links_.size()); ++i) Consume(i);
  }
  machineUs_ = std::max(machineUs_, now);
  transcript_.SetTime(machineUs_, wireUs_);
}

void Simulator::Run(TimeUs wireUs) {
  SetTime(wireUs);
  EndFaults();
  for (const FaultEvent& event : faults_.OnTime(wireUs_)) CarryOut(event);
  AdvanceMachine();
  for (int i = 0; i < static_cast<int>(links_.size()); ++i) Consume(i);
  AdvanceMachine();
}

bool Simulator::JumpAhead(TimeUs wireUs) {
  if (!clock_.IsUnbounded() || controller_.NextEvent() == kNever) return false;
  clock_.JumpTo(controller_.NextEvent());
  Run(wireUs);
  return true;
}

TimeUs Simulator::NextDue(TimeUs wireUs) const {
  TimeUs due = std::min(clock_.WireTimeOf(controller_.NextEvent(), wireUs), faults_.NextTime());
  for (const TimeUs end : {deafUntilUs_, slowUntilUs_, bootedUs_}) {
    if (end > wireUs_) due = std::min(due, end);
  }
  for (const auto& state : links_) {
    due = std::min(due, state->out.NextDue(wireUs));
    if (IsDeaf()) continue;
    if (state->inbox.size() > state->arrived) due = std::min(due, state->inPacer.NextByte(wireUs));
  }
  return due;
}

std::string_view Simulator::Ready(int link, TimeUs wireUs) {
  return LinkAt(link).out.Ready(wireUs);
}

void Simulator::Sent(int link, std::size_t bytes, TimeUs wireUs) {
  LinkAt(link).out.Sent(bytes, wireUs);
}

std::vector<CloseRequest> Simulator::TakeCloseRequests() {
  return std::exchange(closeRequests_, {});
}

std::uint64_t Simulator::LostInputBytes() const {
  std::uint64_t bytes = 0;
  for (const auto& state : links_) bytes += state->reader.LostBytes();
  return bytes;
}

std::uint64_t Simulator::LostOutputBytes() const {
  std::uint64_t bytes = 0;
  for (const auto& state : links_) bytes += state->out.DroppedBytes();
  return bytes;
}

}  // namespace k7sim
