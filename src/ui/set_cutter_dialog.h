// The set cutter dialog: the gap between cutter and work piece.
#pragma once

#include <windows.h>

namespace k7 {

// Opens the dialog modally on `owner` and returns its result: 1 kept, 2 cancelled. [host]
INT_PTR ShowSetCutterDialog(HWND owner) noexcept;

}  // namespace k7
