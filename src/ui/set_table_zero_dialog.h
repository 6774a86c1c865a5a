// The set table zero dialog: where the table's surface is, and how far above it every cut ends.
#pragma once

#include <windows.h>

namespace k7 {

// Opens the dialog modally on `owner` and returns its result: 1 applied, 2 cancelled. Works on
// dialogDevice; without one the field and the list stay empty and OK only closes. [host]
INT_PTR ShowSetTableZeroDialog(HWND owner) noexcept;

}  // namespace k7
