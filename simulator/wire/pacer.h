// Lets bytes pass no faster than a serial line of a given speed would carry them.
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

  // How many of `wanted` bytes are through by `nowUs`; they count as passed.
  std::size_t Take(std::size_t wanted, TimeUs nowUs) {
    if (bytesPerSecond_ <= 0) return wanted;
    if (wanted == 0) return 0;
    // An idle line does not save up time: the first byte after a pause takes its whole time.
    if (!busy_) freeUs_ = std::max(freeUs_, static_cast<double>(nowUs));
    const double done = (static_cast<double>(nowUs) - freeUs_) * bytesPerSecond_ / 1e6;
    const auto through = std::min(wanted, static_cast<std::size_t>(std::max(0.0, done + 1e-6)));
    freeUs_ += static_cast<double>(through) * 1e6 / bytesPerSecond_;
    busy_ = through < wanted;
    return through;
  }

  // When the next byte is through, for an owner that still has bytes; `nowUs` when unpaced.
  TimeUs NextByte(TimeUs nowUs) const {
    if (bytesPerSecond_ <= 0) return nowUs;
    const double start = busy_ ? freeUs_ : static_cast<double>(nowUs);
    return static_cast<TimeUs>(start + 1e6 / bytesPerSecond_) + 1;
  }

 private:
  double bytesPerSecond_;
  double freeUs_ = 0;  // wire time at which the line became free for the next byte
  bool busy_ = false;
};

}  // namespace k7sim
