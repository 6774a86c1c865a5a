// Lets bytes pass no faster than a serial link with a given baud rate carries them.
#pragma once

#include <algorithm>
#include <cstddef>

#include "common/clock.h"

namespace k7sim {

// One start bit, eight data bits, one stop bit.
inline constexpr double kBitsPerByte = 10;

class Pacer {
 public:
  // `baud` 0: bytes take no time.
  explicit Pacer(double baud = 0) : bytesPerSecond_(baud / kBitsPerByte) {}

  // How many of the next `wanted` bytes have passed by `nowUs`. They are not counted again.
  std::size_t Take(std::size_t wanted, TimeUs nowUs) {
    if (bytesPerSecond_ <= 0) return wanted;
    if (wanted == 0) return 0;
    // The time of a pause is not made up for: the first byte after it takes as long as any other.
    if (!busy_) freeUs_ = std::max(freeUs_, static_cast<double>(nowUs));
    const double done = (static_cast<double>(nowUs) - freeUs_) * bytesPerSecond_ / 1e6;
    const auto through = std::min(wanted, static_cast<std::size_t>(std::max(0.0, done + 1e-6)));
    freeUs_ += static_cast<double>(through) * 1e6 / bytesPerSecond_;
    busy_ = through < wanted;
    return through;
  }

  // When the next byte will have passed, for an owner that still has bytes; `nowUs` without a baud
  // rate.
  TimeUs NextByte(TimeUs nowUs) const {
    if (bytesPerSecond_ <= 0) return nowUs;
    const double start = busy_ ? freeUs_ : static_cast<double>(nowUs);
    return static_cast<TimeUs>(start + 1e6 / bytesPerSecond_) + 1;
  }

 private:
  double bytesPerSecond_;
  double freeUs_ = 0;  // wire time from which the link is free for the next byte
  bool busy_ = false;
};

}  // namespace k7sim
