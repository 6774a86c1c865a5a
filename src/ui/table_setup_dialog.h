// The table setup dialog: the permanent settings of a machine.
#pragma once

#include <windows.h>

namespace k7 {

// Opens the dialog modally on `owner` and returns its result: 1 kept, 2 cancelled. [host]
INT_PTR ShowTableSetupDialog(HWND owner) noexcept;

}  // namespace k7
