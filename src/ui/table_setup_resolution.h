// The two results that the table setup dialog computes from what is typed.
#pragma once

#include <windows.h>

namespace k7 {

// Steps per inch of axis 1 X, 2 Y, 3 Z from its motor steps, micro steps and screw pitch; without a
// pitch the largest number there is, 0 when there are no steps either. Any other axis: nothing.
// [host]
void UpdateAxisResolution(HWND dialog, int axis) noexcept;

// Speed of the spindle from that of its motor and the gear ratio. [host]
void UpdateSpindleRpm(HWND dialog) noexcept;

}  // namespace k7
