// The set cutter dialog: probes the surface and lifts the cutter above it by a typed distance.
#pragma once

#include <windows.h>

namespace k7 {

// Opens the dialog modally on `owner` and returns its result: 1 applied, 2 cancelled. Works on
// dialogDevice; without one the field stays empty and OK only closes. [host]
INT_PTR ShowSetCutterDialog(HWND owner) noexcept;

}  // namespace k7
