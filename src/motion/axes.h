// Axes in steps and inches: the conversions that depend on how the machine is built.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Machine steps per inch of an axis. X and Y take the round fixture's figure while the fixture
// replaces them. [any]
float StepsPerInch(const Mechanics& mechanics, Axis axis) noexcept;
// The same by the axis's own screw, whatever the round mode. [any]
float LinearStepsPerInch(const Mechanics& mechanics, Axis axis) noexcept;
// Of the round fixture, per inch of circumference. [any]
float RoundStepsPerInch(const Mechanics& mechanics) noexcept;

// Host steps per inch of X or Y: machine steps divided by the axis factor (slots 44 and 45). [any]
float HostStepsPerInch(const Mechanics& mechanics, Axis axis) noexcept;

// Table size in host steps (slots 1 and 2). [any]
std::uint32_t TableWidthSteps(const Mechanics& mechanics) noexcept;
std::uint32_t TableHeightSteps(const Mechanics& mechanics) noexcept;

// A point of the table where the head is to go, machine steps. Where the head is, is a position.
struct MachinePlace {
  std::int32_t x, y;
};

// The place of a point in host steps: steps times the axis factors, plus the table home. [any]
MachinePlace MachinePlaceOf(const Mechanics& mechanics, const Positions& position,
                            std::uint32_t hostX, std::uint32_t hostY) noexcept;

// The place of a go-to or of a travel: as above, but without the table home when neither X nor Y is
// above zero, taken as signed numbers. (0, 0) is therefore machine zero, where the limit switches
// are. [any]
MachinePlace GoToPlace(const Mechanics& mechanics, const Positions& position, std::uint32_t hostX,
                       std::uint32_t hostY) noexcept;

// Inches to whole steps: trunc(stepsPerInch * inches + 0.5). [any]
std::int32_t InchesToSteps(float inches, float stepsPerInch) noexcept;
// trunc(steps / stepsPerInch * 1000 + 0.5) in single precision, saturating; 0 for 0 steps of an
// axis without a resolution. [any]
std::int32_t StepsToThousandths(std::int32_t steps, float stepsPerInch) noexcept;
// Steps as inches, as the settings file keeps homes; 0 for an axis without a resolution. [any]
float StepsToInches(std::int32_t steps, float stepsPerInch) noexcept;

// Machine Z of a lifted cutter: the cutter home less the lift. [any]
std::int32_t LiftZ(const DeviceState& record) noexcept;
// Machine Z to which a stroke plunges: the cutter home plus the pass depth (with a pneumatic head
// the engrave depth), at least 0.001 inch. [any]
std::int32_t PlungeZ(const DeviceState& record) noexcept;

}  // namespace k7
