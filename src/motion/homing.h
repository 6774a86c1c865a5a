// Homing against the switches.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// All of X, Y, Z limit and Z proximity switch are fitted (each setting exactly 1). [any]
bool HasAllSwitches(const Mechanics& mechanics) noexcept;

// Slot 56: drives each axis to its switch, Z first, and declares that place to be 0, 0, 0. Waits
// for each switch without bound. Nothing without all switches (with a box when a round fixture
// stands in the way), without a connection, in a job. [host]
void MechanicalHome(DeviceState& record) noexcept;

// Slot 62: asks for the switch states, 1 = closed; each pointer may be null. Waits for the first
// report ever without bound; later calls give the states as last reported. Refused without all
// switches, without a connection, in a job: the outputs stay untouched. [host], [jog]
void QuerySwitches(DeviceState& record, std::uint8_t* x, std::uint8_t* y, std::uint8_t* z,
                   std::uint8_t* prox) noexcept;

// Slot 59: the present Z, or the depth of the deeper of lift and engraving if that is lower,
// becomes cutterHome, also in the file; then lifts the cutter. True when a lift was sent. [host]
bool SetCutterHomeHere(DeviceState& record) noexcept;

}  // namespace k7
