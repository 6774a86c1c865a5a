#include "ui/settings/engrave_rules.h"

#include <algorithm>
#include <cmath>

#include "base/arithmetic.h"

namespace k7 {
namespace {

constexpr float kCoarsestStepsPerInch = 199.0f;

}  // namespace

float ResolutionOfEntry(float finest, int index) noexcept {
  return finest / static_cast<float>(index + 1);
}

bool HasResolutionEntry(float finest, int index) noexcept {
  if (index == 0) return true;
  return index < kMaxResolutions && std::isfinite(finest) &&
         ResolutionOfEntry(finest, index) > kCoarsestStepsPerInch;
}

std::int32_t SpindleRpmLimit(std::int32_t motorRpm, float gearRatio) noexcept {
  return RoundHalfUp(static_cast<float>(motorRpm) * gearRatio);
}

std::int32_t ShownSpindleRpm(std::int32_t stored, std::int32_t limit) noexcept {
  return std::max(1, std::min(stored, limit));
}

}  // namespace k7
