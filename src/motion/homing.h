// Homing: finding X, Y and Z zero at the switches, and the cutter home by hand.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// The limit switches of X, Y and Z and the proximity switch are all fitted (each setting exactly
// 1). [any]
bool HasAllSwitches(const Mechanics& mechanics) noexcept;

// Slot 56, a mechanical home: drives Z, then Y, then X to its limit switch and declares that
// position to be 0, 0, 0. Waits for each switch without bound. Without all switches nothing moves,
// and when a round fixture is active the user is told. Nothing without a connection or in a job.
// [host]
void HomeToSwitches(DeviceState& record) noexcept;

// Slot 62: asks for the switch states, 1 = closed; each pointer may be null. Waits, without bound,
// until a report has been received at any time since the record was made; later calls give the
// states of the last report received. Without all switches, without a connection or in a job the
// outputs stay untouched. [host], [jog]
void QuerySwitches(DeviceState& record, std::uint8_t* x, std::uint8_t* y, std::uint8_t* z,
                   std::uint8_t* prox) noexcept;

// Slot 59: takes the present Z for the cutter home, but at least the larger of lift and engrave
// depth, counted from the top of Z. Keeps it in the settings file, too, and lifts the cutter. True
// when a lift was sent. [host]
bool SetCutterHomeHere(DeviceState& record) noexcept;

}  // namespace k7
