#include "board/trapezoid.h"

#include <algorithm>
#include <cmath>

namespace k7sim {

Trapezoid Trapezoid::Make(double length, double entry, double nominal, double exit, double accel) {
  Trapezoid t;
  t.length = length;
  t.accel = accel;
  t.entry = entry;
  t.exit = exit;
  const double rampUp = (nominal * nominal - entry * entry) / (2 * accel);
  const double rampDown = (nominal * nominal - exit * exit) / (2 * accel);
  double cruiseLength = length - rampUp - rampDown;
  t.cruise = nominal;
  if (cruiseLength < 0) {
    // The block is too short to reach the nominal speed: the two ramps meet.
    cruiseLength = 0;
    t.cruise = std::sqrt((2 * accel * length + entry * entry + exit * exit) / 2);
    t.cruise = std::max({t.cruise, entry, exit});
  }
  t.rampUpSeconds = std::max(0.0, t.cruise - entry) / accel;
  t.rampDownSeconds = std::max(0.0, t.cruise - exit) / accel;
  t.cruiseSeconds = t.cruise > 0 ? cruiseLength / t.cruise : 0;
  return t;
}

double Trapezoid::DistanceAfter(double seconds) const {
  const double up = std::clamp(seconds, 0.0, rampUpSeconds);
  double distance = entry * up + accel * up * up / 2;
  const double flat = std::clamp(seconds - rampUpSeconds, 0.0, cruiseSeconds);
  distance += cruise * flat;
  const double down = std::clamp(seconds - rampUpSeconds - cruiseSeconds, 0.0, rampDownSeconds);
  distance += cruise * down - accel * down * down / 2;
  return std::clamp(distance, 0.0, length);
}

}  // namespace k7sim
