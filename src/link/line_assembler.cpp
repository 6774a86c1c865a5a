#include "link/line_assembler.h"

namespace k7 {

using Step = LineAssembler::Step;

Step LineAssembler::Begin() noexcept {
  bytes_[0] = '\0';
  count_ = 0;
  return pending_ ? Step::Wait : Step::Read;
}

// KEEP: also a line feed as 256th byte is too late; the line with its terminator no longer fits.
Step LineAssembler::Completed(std::size_t count, bool run) noexcept {
  if (count >= kLimit - count_) return Step::Fatal;
  count_ += count;
  bytes_[count_] = '\0';
  return Check(count, run);
}

Step LineAssembler::Pending(bool run) noexcept {
  pending_ = true;
  return Check(0, run);
}

Step LineAssembler::StillPending(bool run) noexcept {
  return Check(0, run);
}

// KEEP: it counts as one byte whatever it brought. When it brought none (a connection that was
// closed), the byte that stood there from an earlier line belongs to this one.
Step LineAssembler::WaitCompleted(std::size_t count, bool run) noexcept {
  pending_ = false;
  if (count_ + 1 >= kLimit) return Step::Fatal;
  ++count_;
  return Check(count, run);
}

Step LineAssembler::Failed(bool run) noexcept {
  pending_ = false;
  return Check(0, run);
}

std::string_view LineAssembler::Line() const noexcept {
  const std::string_view all{bytes_, count_};
  return all.substr(0, all.find('\0'));
}

Step LineAssembler::Check(std::size_t transferred, bool run) const noexcept {
  if (count_ > 0 && bytes_[count_ - 1] == '\n') return Step::Line;
  if (!run) return Step::Line;
  if (pending_) return Step::Wait;
  return transferred != 0 ? Step::Read : Step::Line;
}

}  // namespace k7
