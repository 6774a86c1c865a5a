// The set table home dialog: sets the host's origin and the cutter's height, either where the table
// was pushed by hand or by typed numbers.
#pragma once

#include <windows.h>

namespace k7 {

// Opens the dialog modally on `owner`. The motors are off while it is open, so that the table can
// be moved by hand. Result: 1 the home is settled, 2 cancelled, or settled by typed values with
// the machine homed mechanically. Works on dialogDevice; without one it only opens and closes.
// [host]
INT_PTR ShowSetTableHomeDialog(HWND owner) noexcept;

}  // namespace k7
