// The four lamps of the table setup dialog: red while their switch is closed, otherwise black.
#pragma once

#include <windows.h>

#include <cstdint>

#include "device/device_state.h"
#include "ui/common/solid_brush.h"

namespace k7 {

// The lamps of one dialog; it lives as long as that. [host]
class SwitchLamps {
 public:
  // Takes the lamps of the dialog, all dark, and makes their two brushes; once.
  void Open(HWND dialog) noexcept;

  // Asks the controller for its switches and repaints the lamps at once. When the controller cannot
  // be asked (a job is open, a switch is missing), the lamps keep their state.
  void Refresh(DeviceState& record) noexcept;
  // The brush that a lamp is painted with; null for any other control and before Open.
  HBRUSH BrushOf(HWND control) const noexcept;

 private:
  static constexpr int kLamps = 4;  // X, Y, Z limit, Z proximity
  HWND windows_[kLamps] = {};
  std::uint8_t closed_[kLamps] = {};  // 1: that switch is closed
  SolidBrush red_;
  SolidBrush black_;
};

}  // namespace k7
