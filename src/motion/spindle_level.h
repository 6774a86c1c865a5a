// Spindle speeds in levels, the unit of the controller, and the speed at each moment of a ramp.
#pragma once

#include <cstdint>

namespace k7 {

inline constexpr std::int32_t kFullSpindleLevel = 252;

// Level of a commanded speed: trunc(rpm / maxRpm * 0.99 * 255 + 0.5) in single precision, within
// 0..252. Without a maximum speed every speed above 0 is full level. [any]
std::int32_t SpindleLevel(std::int32_t rpm, std::int32_t maxRpm) noexcept;

// Level of a speed during a ramp: trunc(rpm * 252 / maxRpm + 0.5) in single precision, within
// 0..252; 0 without a maximum. [any]
std::int32_t RampLevel(std::int32_t rpm, std::int32_t maxRpm) noexcept;

// One ramp: the speed it starts from, its direction, and how fast it changes the speed.
struct RampPlan {
  std::int32_t startRpm = 0;
  std::int32_t maxRpm = 0;
  float fullRangeMs =
      0.0f;  // time from standstill to the maximum; 0 or less: the end is reached at once
  bool down = false;
};

// Speed after `elapsedMs`: going up at most maxRpm, going down at least 1. [any]
std::int32_t RampSpeed(const RampPlan& plan, std::uint32_t elapsedMs) noexcept;

// Whether this level ends the ramp: 252 going up, 0 going down. [any]
bool RampEndsAt(const RampPlan& plan, std::int32_t level) noexcept;

}  // namespace k7
