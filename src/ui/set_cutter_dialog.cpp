#include "ui/set_cutter_dialog.h"

namespace k7 {

INT_PTR ShowSetCutterDialog(HWND) noexcept {
  return IDCANCEL;
}

}  // namespace k7
