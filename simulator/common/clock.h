// The two clocks. The wire clock is the wall clock since the start: bytes, baud rate and faults
// run on it. The machine clock is simulated time: motion runs on it, as much faster as asked for.
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

// Never negative, and never longer than thirty years: sums of such times stay within the clock
// whatever feeds and lengths a host asks for.
inline TimeUs UsFromSeconds(double seconds) {
  constexpr double kLongestUs = 1e15;
  const double us = std::round(seconds * 1e6);
  if (!(us > 0)) return 0;
  return static_cast<TimeUs>(us < kLongestUs ? us : kLongestUs);
}

// Turns wire time into machine time. At a factor the two are tied; at the highest speed machine
// time stands still until the owner jumps it to the next thing that is due.
class MachineClock {
 public:
  // `factor` machine seconds pass in each wire second; 0 means as fast as possible.
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

  // Wire time at which a machine time is reached; `nowWireUs` when the clock is unbounded.
  TimeUs WireTimeOf(TimeUs machineUs, TimeUs nowWireUs) const {
    if (machineUs == kNever) return kNever;
    if (IsUnbounded()) return nowWireUs;
    // One microsecond late rather than early: an early wake-up would find nothing due.
    return static_cast<TimeUs>(std::ceil(static_cast<double>(machineUs) / factor_)) + 1;
  }

  // Unbounded clock only: makes `machineUs` the present.
  void JumpTo(TimeUs machineUs) {
    if (IsUnbounded() && machineUs != kNever && machineUs > nowUs_) nowUs_ = machineUs;
  }

  TimeUs Now() const { return nowUs_; }

 private:
  double factor_;
  TimeUs nowUs_ = 0;
};

}  // namespace k7sim
