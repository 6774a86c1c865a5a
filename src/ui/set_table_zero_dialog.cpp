#include "ui/set_table_zero_dialog.h"

namespace k7 {

INT_PTR ShowSetTableZeroDialog(HWND) noexcept {
  return IDCANCEL;
}

}  // namespace k7
