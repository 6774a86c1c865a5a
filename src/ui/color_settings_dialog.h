// The colour settings dialog: depths and speeds by colour of the drawing.
#pragma once

#include <windows.h>

namespace k7 {

// Opens the dialog modally on `owner` and returns its result: 1 kept, 2 cancelled. [host]
INT_PTR ShowColorSettingsDialog(HWND owner) noexcept;

}  // namespace k7
