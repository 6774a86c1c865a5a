// The speed profile of one block: speed up, cruise, slow down, at one acceleration.
#pragma once

namespace k7sim {

// Speeds in mm/s, lengths in mm, times in seconds.
struct Trapezoid {
  double entry = 0;
  double cruise = 0;  // highest speed reached; below the wanted one when the block is short
  double exit = 0;
  double accel = 0;  // mm/s^2
  double length = 0;
  double rampUpSeconds = 0;
  double cruiseSeconds = 0;
  double rampDownSeconds = 0;

  // The profile over `length` that enters at `entry`, leaves at `exit` and goes no faster than
  // `nominal`. `entry` and `exit` must be reachable from each other within the length; the
  // planner sees to that.
  static Trapezoid Make(double length, double entry, double nominal, double exit, double accel);

  double Seconds() const { return rampUpSeconds + cruiseSeconds + rampDownSeconds; }

  // Distance covered after `seconds`, held within 0 and the length.
  double DistanceAfter(double seconds) const;
};

}  // namespace k7sim
