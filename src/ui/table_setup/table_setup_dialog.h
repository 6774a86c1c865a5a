// The table setup dialog: the permanent settings of a machine.
#pragma once

#include <windows.h>

namespace k7 {

// Opens the dialog modally on `owner` and returns its result: 1 saved to the settings file, 2
// cancelled. Works on dialogDevice and the dialogState of the settings dialog below; without a
// device the fields are empty, the lamps dark, and OK saves nothing. Sets dialogState.applyResult
// to 2 when the machine itself may have changed. [host]
INT_PTR ShowTableSetupDialog(HWND owner) noexcept;

}  // namespace k7
