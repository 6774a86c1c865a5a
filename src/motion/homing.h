// Homing against the switches.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// All of X, Y, Z limit and Z proximity switch are fitted (each setting exactly 1).
bool HasAllSwitches(const DeviceState& record) noexcept;
// Slot 56. Waits for each switch without bound. [host]
void MechanicalHome(DeviceState& record) noexcept;
// Slot 62: asks for the switch states; each null allowed; refused: outputs untouched. [host]
void QuerySwitches(DeviceState& record, std::uint8_t* x, std::uint8_t* y, std::uint8_t* z,
                   std::uint8_t* prox) noexcept;
// Slot 59: true when a lift was sent. [host]
bool SetCutterHomeHere(DeviceState& record) noexcept;

}  // namespace k7
