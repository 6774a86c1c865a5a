// LineAssembler: makes lines of the bytes that the link brings, each as if it had been read alone.
// Pure: it decides, the reader carries out.
#pragma once

#include <cstddef>
#include <string_view>

namespace k7 {

// Told what a read did, it answers what to do next. A line ends at its "\n"; also when the link has
// nothing more at the moment (a serial read completes at once with no byte), so that a fragment is
// handled as a line of its own and the rest comes as the next; also when a read fails, or when the
// reader is asked to stop. [reader]
class LineAssembler {
 public:
  // Bytes of a line at which there must have been a line feed.
  static constexpr std::size_t kLimit = 256;

  enum class Step {
    Read,   // the next byte is wanted at Target()
    Wait,   // the read is outstanding: wait for it
    Line,   // Line() is complete; handle it, then Begin() the next
    Fatal,  // the 256th byte of a line: the process is to end at once
  };

  // Starts a line. A read that is still outstanding from the line before stays so.
  Step Begin() noexcept;

  // Each tells what the read did. `run`: whether the reader is still to run.
  Step Completed(std::size_t count, bool run) noexcept;      // at once; count 0: nothing there
  Step Pending(bool run) noexcept;                           // it is outstanding now
  Step StillPending(bool run) noexcept;                      // waited, nothing yet
  Step WaitCompleted(std::size_t count, bool run) noexcept;  // the outstanding one has succeeded
  Step Failed(bool run) noexcept;                            // at once or while waited for

  bool IsReadOutstanding() const noexcept { return pending_; }
  // The line has a byte already.
  bool IsBegun() const noexcept { return count_ > 0; }
  // Where the next byte goes; stays while a read is outstanding.
  char* Target() noexcept { return &bytes_[count_]; }
  // The text of the line: what stands before its first zero byte.
  std::string_view Line() const noexcept;

 private:
  Step Check(std::size_t transferred, bool run) const noexcept;

  char bytes_[kLimit] = {};
  std::size_t count_ = 0;
  bool pending_ = false;
};

}  // namespace k7
