// The position in the settings file, section "Current Location": a machine that was switched off
// starts from it.
#pragma once

#include "device/device_state.h"

namespace k7 {

// Writes the position of X and Y by the round mode: of the axis that a round fixture replaces the
// fixture's position goes under "R Axis", and the axis's own key stays as it is. [host]
void KeepPosition(const DeviceState& record) noexcept;

// Writes the position of X and Y under "X Axis" and "Y Axis", whatever the round mode. [host]
void KeepXyPosition(const DeviceState& record) noexcept;

}  // namespace k7
