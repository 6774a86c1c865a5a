// Which controls of the settings dialog are shown and enabled.
#pragma once

#include <windows.h>

namespace k7 {

// By what the host allows, whether the controller is busy, the switches of the machine and, with a
// file, the kind of its Z axis. Null: the file's part is left out. [host]
void UpdateControlStates(HWND dialog, const wchar_t* path) noexcept;

}  // namespace k7
