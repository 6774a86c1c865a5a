// Moves and what holds for them: the only writers of "G0" lines.
#pragma once

#include <cstdint>

#include "device/device_state.h"
#include "motion/move_plan.h"

namespace k7 {

// What SendMove would answer, without sending, taking or waiting for anything: kStatusSent when an
// axis would move, kStatusNothing when none would or without a connection, kStatusRefused (the user
// is told by how much) when the cutter would go below the table surface. [host]
std::uint32_t CheckMove(const DeviceState& record, const AxisTargets& targets) noexcept;

// Sends one "G0" line with the axes that change and counts it in linesInFlight, once fewer than 32
// lines are outstanding (a wait without bound in a job). `tag`, when not None, stands in the ring
// before the line goes out; without a line there is no tag. Result as for CheckMove. [host], [jog]
std::uint32_t SendMove(DeviceState& record, const AxisTargets& targets,
                       CommandTag tag = CommandTag::None) noexcept;

// The feed of the lines that follow, from inches per second; sends "G0 F" only when its text
// changes. Without a connection: nothing. [host], [jog]
void SetFeedRate(DeviceState& record, float inchesPerSecond) noexcept;

// The controller's maximum speeds, from inches per second: one "M203" line. [host]
void SetMaxSpeeds(LinkState& link, float x, float y, float z) noexcept;

// Keeps the value in the field of the axis (by its first letter; another letter keeps none) and
// sends "M92 " + axis + value with 5 decimals. Without a connection: nothing. [host]
void SetAxisStepsPerMm(DeviceState& record, const char* axis, float stepsPerMm) noexcept;

// Slot 47, motor power: on for 1, off otherwise. Without a connection or a link: nothing. [host]
void SetMotors(LinkState& link, std::uint8_t on) noexcept;

}  // namespace k7
