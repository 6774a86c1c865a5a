// Whether the settings dialog itself is changing its fields. Only changes by the user end the
// choice of a material profile.
#pragma once

#include <windows.h>

namespace k7 {

enum class Filling : LONG_PTR {
  None,         // what changes, the user changes
  AtOpening,    // all fields are filled for the first time
  FromProfile,  // a picked material profile goes into the fields
};

// The dialog's window keeps the value, None from its creation on. [host]
inline Filling FillingOf(HWND dialog) noexcept {
  return Filling{GetWindowLongPtrW(dialog, DWLP_USER)};
}
inline void SetFilling(HWND dialog, Filling filling) noexcept {
  SetWindowLongPtrW(dialog, DWLP_USER, static_cast<LONG_PTR>(filling));
}

}  // namespace k7
