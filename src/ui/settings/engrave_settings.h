// The engrave settings between the settings dialog's fields and a settings file: the controller's
// own, or a material profile.
#pragma once

#include <windows.h>

namespace k7 {

// Fills the dialog from the file `path`; null: the controller's own. KEEP: after a profile was
// picked everything that a save does not write into it (maximum values, last cutter, the air-Z
// layout) shows its default. Without a device: nothing. [host]
void LoadEngraveSettings(HWND dialog, const wchar_t* path) noexcept;

// Writes the dialog's values to the file `path`; null: the controller's own, and only then the name
// of the selected profile. A changed round fixture also moves the record's axis positions. Without
// a device: nothing. [host]
void SaveEngraveSettings(HWND dialog, const wchar_t* path) noexcept;

// Checks what was typed. On the first broken rule tells the user, selects the field and answers
// false. Writes nothing. [host]
bool ValidateEngraveSettings(HWND dialog) noexcept;

}  // namespace k7
