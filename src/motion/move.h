// Sending moves, and the values that hold for the moves after them: feed, maximum speeds, steps per
// millimetre, motor power.
#pragma once

#include <cstdint>

#include "device/device_state.h"
#include "motion/move_plan.h"

namespace k7 {

// What SendMove would answer, without sending or waiting and without a change of the record:
// kStatusSent when an axis would move, kStatusNothing when none would or without a connection,
// kStatusRefused when the cutter would go below the table surface (the user is told by how much).
// [host]
std::uint32_t CheckMove(const DeviceState& record, const AxisTargets& targets) noexcept;

// Sends one "G0" line with the axes that change and counts it in linesInFlight. Before that it
// waits until fewer than 32 lines are outstanding, in a job without bound. `tag`, when not None, is
// put into the tag ring before the line goes out; without a line no tag is put there. Result as for
// CheckMove. [host], [jog]
std::uint32_t SendMove(DeviceState& record, const AxisTargets& targets,
                       CommandTag tag = CommandTag::None) noexcept;

// The feed of the moves that follow, from inches per second; sends "G0 F" only when its text
// changes. Without a connection: nothing. [host], [jog]
void SetFeedRate(DeviceState& record, float inchesPerSecond) noexcept;

// The controller's maximum speeds, from inches per second: one "M203" line. [host]
void SetMaxSpeeds(LinkState& link, float x, float y, float z) noexcept;

// Keeps the value as that of the axis named by the first letter of `axis` (of another letter than
// X, Y and Z nothing is kept) and sends "M92 " + axis + value with 5 decimals. Without a
// connection: nothing. [host]
void SetAxisStepsPerMm(LinkState& link, Positions& position, const char* axis,
                       float stepsPerMm) noexcept;

// Slot 47, motor power: on for 1, off otherwise. Without a connection or a link: nothing. [host]
void SetMotorPower(LinkState& link, std::uint8_t on) noexcept;

}  // namespace k7
