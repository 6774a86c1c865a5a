#include "ui/table_setup/switch_lamps.h"

#include "motion/homing.h"
#include "ui/resource_ids.h"

namespace k7 {

void SwitchLamps::Open(HWND dialog) noexcept {
  constexpr int kIds[kLamps] = {IDC_TS_LAMP_X, IDC_TS_LAMP_Y, IDC_TS_LAMP_Z, IDC_TS_LAMP_PROX};
  for (int i = 0; i < kLamps; ++i) windows_[i] = GetDlgItem(dialog, kIds[i]);
  red_.Make(RGB(255, 0, 0));
  black_.Make(RGB(0, 0, 0));
}

void SwitchLamps::Refresh(DeviceState& record) noexcept {
  QuerySwitches(record, &closed_[0], &closed_[1], &closed_[2], &closed_[3]);
  for (const HWND lamp : windows_) {
    InvalidateRect(lamp, nullptr, TRUE);
    UpdateWindow(lamp);
  }
}

HBRUSH SwitchLamps::BrushOf(HWND control) const noexcept {
  for (int i = 0; i < kLamps; ++i) {
    if (windows_[i] == control) return closed_[i] == 1 ? red_.Get() : black_.Get();
  }
  return nullptr;
}

}  // namespace k7
