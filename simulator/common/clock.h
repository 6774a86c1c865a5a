// The two clocks. The wire clock is real time since the start; bytes, the baud rate and faults run
// on it. The machine clock is simulated time; motion runs on it, at the speed the user asks for.
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>

namespace k7sim {

using TimeUs = std::int64_t;

inline constexpr TimeUs kUsPerSecond = 1'000'000;
inline constexpr TimeUs kNever = std::numeric_limits<TimeUs>::max();

inline double SecondsFromUs(TimeUs us) {
  return static_cast<double>(us) / 1e6;
}

// The result is never negative and never above some thirty years, so that sums of such times do not
// overflow whatever feeds and lengths a host asks for.
inline TimeUs UsFromSeconds(double seconds) {
  constexpr double kLongestUs = 1e15;
  const double us = std::round(seconds * 1e6);
  if (!(us > 0)) return 0;
  return static_cast<TimeUs>(us < kLongestUs ? us : kLongestUs);
}

// Turns wire time into machine time. With a factor the machine clock follows the wire clock. An
// unbounded clock stands still until its owner jumps it to the next event.
class MachineClock {
 public:
  // `factor` machine seconds pass in each wire second; 0: the clock is unbounded.
  explicit MachineClock(double factor) : factor_(factor) {}

  bool IsUnbounded() const { return factor_ <= 0; }

  // Machine time at a wire time. Never runs backwards.
  TimeUs At(TimeUs wireUs) {
    if (!IsUnbounded()) {
      const TimeUs machineUs = UsFromSeconds(SecondsFromUs(wireUs) * factor_);
      if (machineUs > nowUs_) nowUs_ = machineUs;
    }
    return nowUs_;
  }

  // Wire time at which a machine time is reached: kNever for kNever, `nowWireUs` when the clock is
  // unbounded.
  TimeUs WireTimeOf(TimeUs machineUs, TimeUs nowWireUs) const {
    if (machineUs == kNever) return kNever;
    if (IsUnbounded()) return nowWireUs;
    // A wake-up that is early by a rounding would find nothing due, so it is one microsecond late.
    return static_cast<TimeUs>(std::ceil(static_cast<double>(machineUs) / factor_)) + 1;
  }

  // Unbounded clock only: moves the clock on to `machineUs`.
  void JumpTo(TimeUs machineUs) {
    if (IsUnbounded() && machineUs != kNever && machineUs > nowUs_) nowUs_ = machineUs;
  }

  TimeUs Now() const { return nowUs_; }

 private:
  double factor_;
  TimeUs nowUs_ = 0;
};

}  // namespace k7sim
