#include "ui/table_setup_dialog.h"

namespace k7 {

INT_PTR ShowTableSetupDialog(HWND) noexcept {
  return IDCANCEL;
}

}  // namespace k7
