#include "motion/units.h"

#include <cmath>

namespace k7 {

namespace {

// A plunge goes at least this far below the surface.
constexpr float kLeastDepthInches = 0.001f;

float StepsPerInch(std::int32_t microSteps, std::int32_t motorSteps, float screwPitch) noexcept {
  return static_cast<float>(microSteps) * static_cast<float>(motorSteps) / screwPitch;
}

std::int32_t MachinePosition(std::uint32_t host, std::int32_t factor, std::int32_t home) noexcept {
  return WrapAdd(WrapMultiply(static_cast<std::int32_t>(host), factor), home);
}

}  // namespace

std::int32_t TruncateToInt32(double value) noexcept {
  if (std::isnan(value)) return 0;
  if (value >= 2147483647.0) return INT32_MAX;
  if (value <= -2147483648.0) return INT32_MIN;
  return static_cast<std::int32_t>(value);
}

std::int32_t RoundToSteps(float value) noexcept {
  return TruncateToInt32(static_cast<double>(value + 0.5f));
}

float LinearStepsPerInchX(const DeviceState& record) noexcept {
  return StepsPerInch(record.microStepsX, record.motorStepsX, record.screwPitchX);
}

float LinearStepsPerInchY(const DeviceState& record) noexcept {
  return StepsPerInch(record.microStepsY, record.motorStepsY, record.screwPitchY);
}

float RoundStepsPerInch(const DeviceState& record) noexcept {
  return static_cast<float>(record.microStepsRound) * static_cast<float>(record.motorStepsRound) *
         record.roundGearRatio / record.roundCircumference;
}

float StepsPerInchX(const DeviceState& record) noexcept {
  return record.roundAxisMode == kRoundReplacesX ? RoundStepsPerInch(record)
                                                 : LinearStepsPerInchX(record);
}

float StepsPerInchY(const DeviceState& record) noexcept {
  return record.roundAxisMode == kRoundReplacesY ? RoundStepsPerInch(record)
                                                 : LinearStepsPerInchY(record);
}

float StepsPerInchZ(const DeviceState& record) noexcept {
  return StepsPerInch(record.microStepsZ, record.motorStepsZ, record.screwPitchZ);
}

float HostStepsPerInchX(const DeviceState& record) noexcept {
  return StepsPerInchX(record) / static_cast<float>(record.xAxisFactor);
}

float HostStepsPerInchY(const DeviceState& record) noexcept {
  return StepsPerInchY(record) / static_cast<float>(record.yAxisFactor);
}

std::uint32_t TableWidthSteps(const DeviceState& record) noexcept {
  return static_cast<std::uint32_t>(
      RoundToSteps(HostStepsPerInchX(record) * static_cast<float>(record.tableWidth) / 1000.0f));
}

std::uint32_t TableHeightSteps(const DeviceState& record) noexcept {
  return static_cast<std::uint32_t>(
      RoundToSteps(HostStepsPerInchY(record) * static_cast<float>(record.tableHeight) / 1000.0f));
}

std::int32_t MachineX(const DeviceState& record, std::uint32_t hostX) noexcept {
  return MachinePosition(hostX, record.xAxisFactor, record.tableHomeX);
}

std::int32_t MachineY(const DeviceState& record, std::uint32_t hostY) noexcept {
  return MachinePosition(hostY, record.yAxisFactor, record.tableHomeY);
}

MachinePlace GoToPlace(const DeviceState& record, std::uint32_t hostX,
                       std::uint32_t hostY) noexcept {
  const std::int32_t x = MachinePosition(hostX, record.xAxisFactor, 0);
  const std::int32_t y = MachinePosition(hostY, record.yAxisFactor, 0);
  // KEEP: (0, 0) is machine zero, not the table home.
  if (x <= 0 && y <= 0) return {x, y};
  return {WrapAdd(x, record.tableHomeX), WrapAdd(y, record.tableHomeY)};
}

std::int32_t InchesToSteps(float inches, float stepsPerInch) noexcept {
  return RoundToSteps(stepsPerInch * inches);
}

std::int32_t LiftZ(const DeviceState& record) noexcept {
  return WrapSubtract(record.cutterHome, InchesToSteps(record.cutterLift, StepsPerInchZ(record)));
}

std::int32_t PlungeZ(const DeviceState& record) noexcept {
  const float stepsPerInch = StepsPerInchZ(record);
  // The pneumatic head has no passes.
  const float depthInches =
      record.cutterMode == kCutterAirZ ? record.engraveDepth : record.passDepth;
  const std::int32_t depthSteps = InchesToSteps(depthInches, stepsPerInch);
  const std::int32_t leastSteps = InchesToSteps(kLeastDepthInches, stepsPerInch);
  return WrapAdd(record.cutterHome, depthSteps < leastSteps ? leastSteps : depthSteps);
}

float SpeedToFeed(float inchesPerSecond) noexcept {
  return inchesPerSecond * 25.4f * 60.0f;
}

}  // namespace k7
