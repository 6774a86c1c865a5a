// Steps, inches and millimetres: every conversion of the driver, written once.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Whole number nearest to zero of `value`; beyond the range the nearest end of it, NaN gives 0. The
// one conversion from floating point to steps, used everywhere. [any]
std::int32_t TruncateToInt32(double value) noexcept;

// trunc(value + 0.5) in single precision, saturating. KEEP: a half is added whatever the sign, so
// that negative numbers are rounded toward zero. [any]
std::int32_t RoundToSteps(float value) noexcept;

// 32-bit arithmetic that wraps as the controllers' own does. [any]
constexpr std::int32_t WrapAdd(std::int32_t a, std::int32_t b) noexcept {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}
constexpr std::int32_t WrapSubtract(std::int32_t a, std::int32_t b) noexcept {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}
constexpr std::int32_t WrapMultiply(std::int32_t a, std::int32_t b) noexcept {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) * static_cast<std::uint32_t>(b));
}
// a / b toward zero; 0 when b is 0; saturates INT32_MIN / -1.
constexpr std::int32_t DivideSteps(std::int32_t a, std::int32_t b) noexcept {
  if (b == 0) return 0;
  if (b == -1) return a == INT32_MIN ? INT32_MAX : -a;
  return a / b;
}

// Machine steps per inch. X and Y take the round fixture's figure while it replaces them. [any]
float StepsPerInchX(const DeviceState& record) noexcept;
float StepsPerInchY(const DeviceState& record) noexcept;
float StepsPerInchZ(const DeviceState& record) noexcept;
// The same by the axis's screw, whatever the round mode.
float LinearStepsPerInchX(const DeviceState& record) noexcept;
float LinearStepsPerInchY(const DeviceState& record) noexcept;
// Of the round fixture, per inch of circumference.
float RoundStepsPerInch(const DeviceState& record) noexcept;

// Host steps per inch (slots 44 and 45). [any]
float HostStepsPerInchX(const DeviceState& record) noexcept;
float HostStepsPerInchY(const DeviceState& record) noexcept;

// Table size in host steps (slots 1 and 2). [any]
std::uint32_t TableWidthSteps(const DeviceState& record) noexcept;
std::uint32_t TableHeightSteps(const DeviceState& record) noexcept;

// Machine position of a host position: steps times the axis factor, plus the table home. [any]
std::int32_t MachineX(const DeviceState& record, std::uint32_t hostX) noexcept;
std::int32_t MachineY(const DeviceState& record, std::uint32_t hostY) noexcept;

// Machine position of a go-to or travel: host steps times the axis factors, plus the table homes
// when either is above zero (signed); without them (0, 0) is machine zero, the place of the
// switches. [any]
struct MachinePlace {
  std::int32_t x, y;
};
MachinePlace GoToPlace(const DeviceState& record, std::uint32_t hostX,
                       std::uint32_t hostY) noexcept;

// Inches to whole steps: trunc(stepsPerInch * inches + 0.5). [any]
std::int32_t InchesToSteps(float inches, float stepsPerInch) noexcept;
// Machine Z of a lifted cutter: cutterHome minus the lift. [any]
std::int32_t LiftZ(const DeviceState& record) noexcept;
// Machine Z of a plunge of the stroke operations: cutterHome plus the pass depth (in cutter mode 4
// the engrave depth), at least 0.001 inch. [any]
std::int32_t PlungeZ(const DeviceState& record) noexcept;

// Inches per second to millimetres per minute. [any]
float SpeedToFeed(float inchesPerSecond) noexcept;

}  // namespace k7
