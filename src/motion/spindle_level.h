// Spindle speeds as the controller takes them, and the course of a speed ramp.
#pragma once

#include <cstdint>

namespace k7 {

inline constexpr std::int32_t kFullSpindleLevel = 252;

// Level of a commanded speed: trunc(rpm / maxRpm * 0.99 * 255 + 0.5) in single precision, within
// 0..252; a machine without a maximum runs any speed at full level. [any]
std::int32_t SpindleLevel(std::int32_t rpm, std::int32_t maxRpm) noexcept;

// Level of a speed under way in a ramp: trunc(rpm * 252 / maxRpm + 0.5) in single precision, within
// 0..252; 0 without a maximum. [any]
std::int32_t RampLevel(std::int32_t rpm, std::int32_t maxRpm) noexcept;

// One ramp: from where, which way, how fast.
struct RampPlan {
  std::int32_t startRpm = 0;
  std::int32_t maxRpm = 0;
  float fullRangeMs = 0.0f;  // time from standstill to the maximum; at most 0: at once
  bool down = false;
};

// Speed after `elapsedMs`: going up at most maxRpm, going down at least 1. [any]
std::int32_t RampSpeed(const RampPlan& plan, std::uint32_t elapsedMs) noexcept;

// Whether this level ends the ramp: 252 going up, 0 going down. [any]
bool RampEndsAt(const RampPlan& plan, std::int32_t level) noexcept;

}  // namespace k7
