// The results that the table setup dialog computes: steps per inch and the spindle's speed.
#pragma once

#include <windows.h>

#include "settings/file.h"

namespace k7 {

// All results from the settings file itself, which holds more digits than the fields show. [host]
void ShowStoredResults(HWND dialog, const SettingsFile& file) noexcept;

// From what is typed: steps per inch of axis 1 X, 2 Y, 3 Z from its motor steps, micro steps and
// screw pitch; without a pitch the largest number there is, 0 when there are no steps either. Any
// other axis: nothing. [host]
void UpdateAxisResolution(HWND dialog, int axis) noexcept;

// From what is typed: speed of the spindle by that of its motor and the gear ratio. [host]
void UpdateSpindleRpm(HWND dialog) noexcept;

}  // namespace k7
