#include "ui/engrave_rules.h"

#include <algorithm>
#include <cmath>

#include "ui/typed_number.h"

namespace k7 {
namespace {

constexpr float kCoarsestStepsPerInch = 199.0f;

void SwapWithParked(Polled<std::int32_t>& axis, DeviceState& record) noexcept {
  record.parkedPosition = axis.Exchange(record.parkedPosition);
}

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

void SwapAxisPositions(DeviceState& record, std::uint32_t newMode) noexcept {
  if (record.roundAxisMode == newMode) return;
  if (record.roundAxisMode == kRoundReplacesX) SwapWithParked(record.lastX, record);
  if (record.roundAxisMode == kRoundReplacesY) SwapWithParked(record.lastY, record);
  if (newMode == kRoundReplacesX) SwapWithParked(record.lastX, record);
  if (newMode == kRoundReplacesY) SwapWithParked(record.lastY, record);
}

}  // namespace k7
