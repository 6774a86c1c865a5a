#include "motion/spindle_level.h"

#include <algorithm>

#include "base/arithmetic.h"

namespace k7 {

namespace {

std::int32_t WithinLevels(std::int32_t level) noexcept {
  return std::clamp(level, 0, kFullSpindleLevel);
}

}  // namespace

std::int32_t SpindleLevel(std::int32_t rpm, std::int32_t maxRpm) noexcept {
  // KEEP: the factor 0.99 limits full speed to level 252; 255 is never sent.
  return WithinLevels(
      RoundToSteps(static_cast<float>(rpm) / static_cast<float>(maxRpm) * 0.99f * 255.0f));
}

std::int32_t RampLevel(std::int32_t rpm, std::int32_t maxRpm) noexcept {
  if (maxRpm <= 0) return 0;
  return WithinLevels(RoundToSteps(static_cast<float>(rpm) * 252.0f / static_cast<float>(maxRpm)));
}

std::int32_t RampSpeed(const RampPlan& plan, std::uint32_t elapsedMs) noexcept {
  const std::int32_t end = plan.down ? 1 : plan.maxRpm;
  if (!(plan.fullRangeMs > 0.0f) || plan.maxRpm <= 0) return end;
  const float msPerRpm = plan.fullRangeMs / static_cast<float>(plan.maxRpm);
  const float change = static_cast<float>(elapsedMs) / (plan.down ? -msPerRpm : msPerRpm);
  const std::int32_t speed = TruncateToInt32(static_cast<float>(plan.startRpm) + change);
  return plan.down ? std::max(speed, end) : std::min(speed, end);
}

bool RampEndsAt(const RampPlan& plan, std::int32_t level) noexcept {
  return level == (plan.down ? 0 : kFullSpindleLevel);
}

}  // namespace k7
