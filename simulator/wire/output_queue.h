// Bytes on their way to the host: in order, some held back, paced, dropped when nobody reads.
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
  // `dropAfterUs`: how long a host may leave bytes unread before they are dropped; kNever: for
  // ever. All times are wire times.
  OutputQueue(double baud, TimeUs dropAfterUs) : pacer_(baud), dropAfterUs_(dropAfterUs) {}

  // Appends text. What follows it waits behind it until `notBeforeUs`.
  void Put(std::string_view text, TimeUs notBeforeUs = 0);
  // Appends text at `atUs`; what comes meanwhile overtakes it.
  void PutLater(std::string_view text, TimeUs atUs);

  // The bytes that may go now. They stay until `Sent` says how many went; unsent ones are dropped
  // once the host has taken nothing for too long.
  std::string_view Ready(TimeUs nowUs);
  void Sent(std::size_t bytes, TimeUs nowUs);

  // When `Ready` may have more than now; kNever when nothing is held.
  TimeUs NextDue(TimeUs nowUs) const;

  bool IsEmpty() const { return ready_.empty() && line_.empty() && later_.empty(); }
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
  std::deque<Piece> line_;
  std::string ready_;     // through the pacer, not yet taken by the host
  TimeUs stalledUs_ = 0;  // when the host last took something, or there was nothing to take
  std::uint64_t droppedBytes_ = 0;
};

}  // namespace k7sim
