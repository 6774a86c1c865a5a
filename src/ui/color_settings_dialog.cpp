#include "ui/color_settings_dialog.h"

namespace k7 {

INT_PTR ShowColorSettingsDialog(HWND) noexcept {
  return IDCANCEL;
}

}  // namespace k7
