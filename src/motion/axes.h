// Axes in steps and inches: every conversion that depends on the machine, written once.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Machine steps per inch. X and Y take the round fixture's figure while it replaces them. [any]
float StepsPerInch(const Mechanics& mechanics, Axis axis) noexcept;
// The same by the axis's screw, whatever the round mode.
float LinearStepsPerInch(const Mechanics& mechanics, Axis axis) noexcept;
// Of the round fixture, per inch of circumference.
float RoundStepsPerInch(const Mechanics& mechanics) noexcept;

// Host steps per inch of X or Y (slots 44 and 45). [any]
float HostStepsPerInch(const Mechanics& mechanics, Axis axis) noexcept;

// Table size in host steps (slots 1 and 2). [any]
std::uint32_t TableWidthSteps(const Mechanics& mechanics) noexcept;
std::uint32_t TableHeightSteps(const Mechanics& mechanics) noexcept;

// A place on the table, machine steps.
struct MachinePlace {
  std::int32_t x, y;
};

// Machine position of a host position: steps times the axis factors, plus the table homes. [any]
MachinePlace MachinePosition(const DeviceState& record, std::uint32_t hostX,
                             std::uint32_t hostY) noexcept;

// Machine position of a go-to or travel: host steps times the axis factors, plus the table homes
// when either is above zero (signed); without them (0, 0) is machine zero, the place of the
// switches. [any]
MachinePlace GoToPlace(const DeviceState& record, std::uint32_t hostX,
                       std::uint32_t hostY) noexcept;

// Inches to whole steps: trunc(stepsPerInch * inches + 0.5). [any]
std::int32_t InchesToSteps(float inches, float stepsPerInch) noexcept;
// trunc(steps / stepsPerInch * 1000 + 0.5) in single precision, saturating; 0 for 0 steps of an
// axis without a resolution. [any]
std::int32_t StepsToThousandths(std::int32_t steps, float stepsPerInch) noexcept;
// Steps as inches, as the settings file keeps homes; 0 for an axis without a resolution. [any]
float StepsToInches(std::int32_t steps, float stepsPerInch) noexcept;

// Machine Z of a lifted cutter: cutterHome minus the lift. [any]
std::int32_t LiftZ(const DeviceState& record) noexcept;
// Machine Z of a plunge of the stroke operations: cutterHome plus the pass depth (in cutter mode 4
// the engrave depth), at least 0.001 inch. [any]
std::int32_t PlungeZ(const DeviceState& record) noexcept;

}  // namespace k7
