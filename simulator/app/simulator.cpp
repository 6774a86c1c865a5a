#include "app/simulator.h"

#include <algorithm>
#include <utility>

namespace k7sim {
namespace {

// A board drops what its host leaves unread for so long; a socket keeps it.
constexpr TimeUs kUnreadUs = 1'000'000;

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
  if (setup.id) config_.Set("controller_id", *setup.id);
  for (const Fault& fault : setup.faults) faults_.Add(fault);
}

int Simulator::AddStream(WireKind kind, std::string name) {
  const TimeUs dropAfterUs = kind == WireKind::Tcp ? kNever : kUnreadUs;
  const double baud = kind == WireKind::Tcp ? 0 : setup_.baud;
  streams_.push_back(std::make_unique<Stream>(Stream{kind,
                                                     std::move(name),
                                                     LineReader(kind),
                                                     OutputQueue(baud, dropAfterUs),
                                                     Pacer(baud),
                                                     {},
                                                     0,
                                                     false}));
  return static_cast<int>(streams_.size()) - 1;
}

std::string_view Simulator::PortName(int stream) const {
  return streams_.size() > 1 ? std::string_view(At(stream).name) : std::string_view();
}

void Simulator::SetTime(TimeUs wireUs) {
  wireUs_ = std::max(wireUs_, wireUs);
  transcript_.SetTime(clock_.At(wireUs_), wireUs_);
}

void Simulator::HostOpened(int stream, TimeUs wireUs) {
  SetTime(wireUs);
  Stream& s = At(stream);
  const bool first = !s.open;
  s.open = true;
  if (first && !GreetingOf(s.kind).empty()) Reply(stream, 0, GreetingOf(s.kind));
}

void Simulator::HostClosed(int stream) {
  Stream& s = At(stream);
  s.open = false;
  s.out.Clear();
  s.reader.Reset();
}

bool Simulator::WantsBytes(int stream) const {
  // A bare serial line has no way to say "wait": its bytes come whether or not there is room.
  return At(stream).kind == WireKind::Uart || At(stream).inbox.empty();
}

void Simulator::Receive(int stream, std::string_view bytes, TimeUs wireUs) {
  At(stream).inbox.append(bytes);
  Run(wireUs);
}

bool Simulator::HasRoom(int stream) const {
  const std::size_t waitingBytes = controller_.WaitingBytes(stream);
  switch (At(stream).kind) {
    case WireKind::Usb:
      return waitingBytes == 0 ||
             waitingBytes + At(stream).reader.PendingBytes() + kUsbFreeBytes < kUsbRingBytes;
    case WireKind::Tcp:
      return controller_.WaitingLines(stream) < kTcpQueuedLines;
    case WireKind::Uart:
      return waitingBytes == 0 || waitingBytes + At(stream).reader.PendingBytes() < kUartRingBytes;
  }
  return true;
}

void Simulator::Consume(int stream) {
  Stream& s = At(stream);
  s.arrived += s.inPacer.Take(s.inbox.size() - s.arrived, wireUs_);
  std::size_t used = 0;
  for (; used < s.arrived; ++used) {
    if (!HasRoom(stream)) {
      if (s.kind != WireKind::Uart) break;
      s.reader.CountLost(1);
      continue;
    }
    switch (s.reader.Put(s.inbox[used])) {
      case LineReader::Event::Line:
        TakeLine(stream, s.reader.Line());
        break;
      case LineReader::Event::Halt:
        transcript_.In(PortName(stream), std::string_view(&kHaltByte, 1));
        controller_.Halt(machineUs_);
        break;
      case LineReader::Event::None:
        break;
    }
  }
  s.inbox.erase(0, used);
  s.arrived -= used;
}

void Simulator::TakeLine(int stream, const std::string& line) {
  const std::uint64_t id = ++lines_;
  transcript_.In(PortName(stream), line);
  bool ignore = false;
  for (const FaultEvent& event : faults_.OnLine(id, line, wireUs_, ignore)) CarryOut(event);
  if (ignore) {
    transcript_.Note("fault: the line above is lost");
  } else {
    controller_.TakeLine(line, id, stream, machineUs_);
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
    // What had been left for want of room is taken the moment there is some.
    for (int i = 0; i < static_cast<int>(streams_.size()); ++i) Consume(i);
  }
  machineUs_ = std::max(machineUs_, now);
  transcript_.SetTime(machineUs_, wireUs_);
}

void Simulator::Run(TimeUs wireUs) {
  SetTime(wireUs);
  for (const FaultEvent& event : faults_.OnTime(wireUs_)) CarryOut(event);
  AdvanceMachine();
  for (int i = 0; i < static_cast<int>(streams_.size()); ++i) Consume(i);
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
  for (const auto& s : streams_) {
    due = std::min(due, s->out.NextDue(wireUs));
    if (s->inbox.size() > s->arrived) due = std::min(due, s->inPacer.NextByte(wireUs));
  }
  return due;
}

std::string_view Simulator::Ready(int stream, TimeUs wireUs) {
  return At(stream).out.Ready(wireUs);
}

void Simulator::Sent(int stream, std::size_t bytes, TimeUs wireUs) {
  At(stream).out.Sent(bytes, wireUs);
}

std::vector<CloseRequest> Simulator::TakeCloseRequests() {
  return std::exchange(closeRequests_, {});
}

std::uint64_t Simulator::LostInputBytes() const {
  std::uint64_t bytes = 0;
  for (const auto& s : streams_) bytes += s->reader.LostBytes();
  return bytes;
}

std::uint64_t Simulator::LostOutputBytes() const {
  std::uint64_t bytes = 0;
  for (const auto& s : streams_) bytes += s->out.DroppedBytes();
  return bytes;
}

}  // namespace k7sim
