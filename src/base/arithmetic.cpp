#include "base/arithmetic.h"

#include <cmath>

namespace k7 {

std::int32_t TruncateToInt32(double value) noexcept {
  if (std::isnan(value)) return 0;
  if (value >= 2147483647.0) return INT32_MAX;
  if (value <= -2147483648.0) return INT32_MIN;
  return static_cast<std::int32_t>(value);
}

std::int32_t RoundToSteps(float value) noexcept {
  return TruncateToInt32(static_cast<double>(value + 0.5f));
}

std::int32_t RoundHalfUp(float value) noexcept {
  return TruncateToInt32(static_cast<double>(std::floor(value + 0.5f)));
}

float SpeedToFeed(float inchesPerSecond) noexcept {
  return inchesPerSecond * kMmPerInch * 60.0f;
}

}  // namespace k7
