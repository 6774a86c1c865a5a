#include "wire/line_reader.h"

namespace k7sim {

void LineReader::Reset() {
  pending_.clear();
  discarding_ = false;
}

LineReader::Event LineReader::Finish() {
  line_.swap(pending_);
  pending_.clear();
  return line_.empty() ? Event::None : Event::Line;
}

LineReader::Event LineReader::Put(char byte) {
  if (byte == kHaltByte) return Event::Halt;
  if (byte == kStatusByte) return Event::Status;
  if (byte == kHoldByte) return Event::Hold;
  if (byte == kResumeByte) return Event::Resume;
  if (byte == '\r' && kind_ == WireKind::Tcp) return Event::None;
  if (byte == '\n' || byte == '\r') {
    if (discarding_) {
      discarding_ = false;
      return Event::None;
    }
    return Finish();
  }
  if (discarding_) {
    ++lostBytes_;
    return Event::None;
  }
  switch (kind_) {
    case WireKind::Usb:
      if (pending_.size() == kUsbLineLimit) {
        lostBytes_ += pending_.size() + 1;
        pending_.clear();
        discarding_ = true;
        return Event::None;
      }
      break;
    case WireKind::Uart:
      if (pending_.size() == kUartRingBytes) {
        ++lostBytes_;
        return Event::None;
      }
      break;
    case WireKind::Tcp:
      if (pending_.size() == kTcpLineLimit) {
        const Event event = Finish();
        pending_.push_back(byte);
        return event;
      }
      break;
  }
  pending_.push_back(byte);
  return Event::None;
}

}  // namespace k7sim
