// The speed profile of one block: it speeds up, cruises and slows down, all at one acceleration.
#pragma once

namespace k7sim {

// Speeds in mm/s, lengths in mm, times in seconds.
struct Trapezoid {
  double entry = 0;
  double cruise = 0;  // highest speed reached; below the nominal one when the block is short
  double exit = 0;
  double accel = 0;  // mm/s^2
  double length = 0;
  double rampUpSeconds = 0;
  double cruiseSeconds = 0;
  double rampDownSeconds = 0;

  // The profile over `length` that enters at `entry`, leaves at `exit` and is nowhere faster than
  // `nominal`. The caller sees to it that `exit` can be reached from `entry` within the length.
  static Trapezoid Make(double length, double entry, double nominal, double exit, double accel);

  double Seconds() const { return rampUpSeconds + cruiseSeconds + rampDownSeconds; }

  // Distance covered after `seconds`, at least 0 and at most the length.
  double DistanceAfter(double seconds) const;
};

}  // namespace k7sim
