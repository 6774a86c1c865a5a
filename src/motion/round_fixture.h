// The round fixture, which can replace the X or the Y axis.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Slot 95: the axis that the fixture replaces, a kRound number; kRoundOff when no fixture is
// configured. [any]
std::uint32_t ConfiguredRoundMode(const Mechanics& mechanics) noexcept;
// Slot 96: keeps that number when a fixture is configured. Sends nothing and moves no positions.
// [host]
void KeepRoundMode(Mechanics& mechanics, std::uint32_t mode) noexcept;
// Slot 114: a fixture replaces an axis by the record's mode, whether or not one is configured.
// [any]
bool IsRoundFixtureActive(const Mechanics& mechanics) noexcept;

// Changes the round mode of a running machine: writes the setting, exchanges the positions, tells
// the controller steps per millimetre, axis mapping and position, and pauses twice for 500 ms.
// Nothing when `mode` is the present one. [host]
void SwitchRoundMode(DeviceState& record, std::uint32_t mode) noexcept;
// Sends the "M800" line of the record's round mode, also before the controller has answered. For an
// unknown mode nothing is sent. [host]
void SendAxisMapping(LinkState& link, const Mechanics& mechanics) noexcept;

}  // namespace k7
