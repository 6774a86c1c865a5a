// The colour settings dialog: which colours of a drawing are engraved.
#pragma once

#include <windows.h>

namespace k7 {

// Opens the dialog modally on `owner` and returns its result: 1 kept, 2 cancelled. Works on the
// colour table that the host keeps in this thread's local storage, at dialogDevice's
// hostColorTlsIndex; without one all rows are shown, unchecked, and nothing is written. [host]
INT_PTR ShowColorSettingsDialog(HWND owner) noexcept;

}  // namespace k7
