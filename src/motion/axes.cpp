#include "motion/axes.h"

#include <cmath>

#include "base/arithmetic.h"
#include "motion/cutter_mode.h"

namespace k7 {

namespace {

// A plunge goes at least this far below the surface.
constexpr float kLeastDepthInches = 0.001f;

bool IsReplaced(const Mechanics& mechanics, Axis axis) noexcept {
  return (axis == Axis::X && mechanics.roundAxisMode == kRoundReplacesX) ||
         (axis == Axis::Y && mechanics.roundAxisMode == kRoundReplacesY);
}

std::uint32_t TableSteps(const Mechanics& mechanics, Axis axis, std::int32_t thousandths) noexcept {
  return static_cast<std::uint32_t>(
      RoundToSteps(HostStepsPerInch(mechanics, axis) * static_cast<float>(thousandths) / 1000.0f));
}

std::int32_t MachineSteps(std::uint32_t host, std::int32_t factor) noexcept {
  return WrapMultiply(static_cast<std::int32_t>(host), factor);
}

MachinePlace PlusTableHome(const Positions& position, MachinePlace place) noexcept {
  return {WrapAdd(place.x, position.tableHome.x), WrapAdd(place.y, position.tableHome.y)};
}

MachinePlace WithoutTableHome(const Mechanics& mechanics, std::uint32_t hostX,
                              std::uint32_t hostY) noexcept {
  return {MachineSteps(hostX, mechanics.xAxisFactor), MachineSteps(hostY, mechanics.yAxisFactor)};
}

}  // namespace

float LinearStepsPerInch(const Mechanics& mechanics, Axis axis) noexcept {
  const AxisMechanics& own = mechanics.axis[axis];
  return static_cast<float>(own.microSteps) * static_cast<float>(own.motorSteps) / own.screwPitch;
}

float RoundStepsPerInch(const Mechanics& mechanics) noexcept {
  return static_cast<float>(mechanics.microStepsRound) *
         static_cast<float>(mechanics.motorStepsRound) * mechanics.roundGearRatio /
         mechanics.roundCircumference;
}

float StepsPerInch(const Mechanics& mechanics, Axis axis) noexcept {
  return IsReplaced(mechanics, axis) ? RoundStepsPerInch(mechanics)
                                     : LinearStepsPerInch(mechanics, axis);
}

float HostStepsPerInch(const Mechanics& mechanics, Axis axis) noexcept {
  const std::int32_t factor = axis == Axis::X ? mechanics.xAxisFactor : mechanics.yAxisFactor;
  return StepsPerInch(mechanics, axis) / static_cast<float>(factor);
}

std::uint32_t TableWidthSteps(const Mechanics& mechanics) noexcept {
  return TableSteps(mechanics, Axis::X, mechanics.tableWidth);
}

std::uint32_t TableHeightSteps(const Mechanics& mechanics) noexcept {
  return TableSteps(mechanics, Axis::Y, mechanics.tableHeight);
}

MachinePlace MachinePlaceOf(const Mechanics& mechanics, const Positions& position,
                            std::uint32_t hostX, std::uint32_t hostY) noexcept {
  return PlusTableHome(position, WithoutTableHome(mechanics, hostX, hostY));
}

MachinePlace GoToPlace(const Mechanics& mechanics, const Positions& position, std::uint32_t hostX,
                       std::uint32_t hostY) noexcept {
  const MachinePlace place = WithoutTableHome(mechanics, hostX, hostY);
  // KEEP: (0, 0) is machine zero, not the table home.
  if (place.x <= 0 && place.y <= 0) return place;
  return PlusTableHome(position, place);
}

std::int32_t InchesToSteps(float inches, float stepsPerInch) noexcept {
  return RoundToSteps(stepsPerInch * inches);
}

std::int32_t StepsToThousandths(std::int32_t steps, float stepsPerInch) noexcept {
  return RoundToSteps(static_cast<float>(steps) / stepsPerInch * 1000.0f);
}

float StepsToInches(std::int32_t steps, float stepsPerInch) noexcept {
  const float inches = static_cast<float>(steps) / stepsPerInch;
  return std::isfinite(inches) ? inches : 0.0f;
}

std::int32_t LiftZ(const DeviceState& record) noexcept {
  return WrapSubtract(
      record.position.cutterHome,
      InchesToSteps(record.tools.cutterLift, StepsPerInch(record.mechanics, Axis::Z)));
}

std::int32_t PlungeZ(const DeviceState& record) noexcept {
  const float stepsPerInch = StepsPerInch(record.mechanics, Axis::Z);
  // A pneumatic head has one depth for all passes.
  const float depthInches =
      HasPneumaticHead(record.tools) ? record.tools.engraveDepth : record.passes.passDepth;
  const std::int32_t depthSteps = InchesToSteps(depthInches, stepsPerInch);
  const std::int32_t leastSteps = InchesToSteps(kLeastDepthInches, stepsPerInch);
  return WrapAdd(record.position.cutterHome, depthSteps < leastSteps ? leastSteps : depthSteps);
}

}  // namespace k7
