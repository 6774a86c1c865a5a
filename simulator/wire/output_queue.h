// Bytes on their way to the host. They leave in order and at the pace of the link; some are held
// back, and a host that does not read loses them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <string_view>

#include "common/clock.h"
#include "wire/pacer.h"

namespace k7sim {

class OutputQueue {
 public:
  // `dropAfterUs`: how long a host may leave bytes unread before they are dropped; kNever: they are
  // never dropped. All times are wire times.
  OutputQueue(double baud, TimeUs dropAfterUs) : pacer_(baud), dropAfterUs_(dropAfterUs) {}

  // Appends text that leaves at `notBeforeUs` or later. What is appended after it waits behind it.
  void Put(std::string_view text, TimeUs notBeforeUs = 0);
  // Appends text when `atUs` has come. What is appended until then leaves before it.
  void PutLater(std::string_view text, TimeUs atUs);

  // The bytes that may leave now. They stay until `Sent` says how many have left; they are dropped
  // when the host has taken none for too long.
  std::string_view Ready(TimeUs nowUs);
  void Sent(std::size_t bytes, TimeUs nowUs);

  // When the result of `Ready` may change next; kNever when it does not change by itself.
  TimeUs NextDue(TimeUs nowUs) const;

  bool IsEmpty() const { return ready_.empty() && pieces_.empty() && later_.empty(); }
  std::uint64_t DroppedBytes() const { return droppedBytes_; }
  void Clear();

 private:
  struct Piece {
    std::string text;
    TimeUs notBeforeUs = 0;
  };

  Pacer pacer_;
  TimeUs dropAfterUs_;
  std::multimap<TimeUs, std::string> later_;
  std::deque<Piece> pieces_;
  std::string ready_;     // paced, not yet taken by the host
  TimeUs stalledUs_ = 0;  // when the host last took something, or there was nothing to take
  std::uint64_t droppedBytes_ = 0;
};

}  // namespace k7sim
