// The four lamps of the table setup dialog: red while their switch is closed, else black.
#pragma once

#include <windows.h>

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// [host]
class SwitchLamps {
 public:
  // Takes the lamps of the dialog, all dark, and makes their two brushes.
  void Open(HWND dialog) noexcept;
  // Deletes the brushes; nothing when not open.
  void Close() noexcept;

  // Asks the controller for its switches and paints the lamps anew at once. Refused by the
  // controller's state (a job, a missing switch): they stay as they are.
  void Refresh(DeviceState& record) noexcept;
  // The brush that a lamp is painted with; null for any other control and while closed.
  HBRUSH BrushOf(HWND control) const noexcept;

 private:
  static constexpr int kLamps = 4;  // X, Y, Z limit, Z proximity
  HWND windows_[kLamps] = {};
  std::uint8_t closed_[kLamps] = {};  // 1: that switch is
  HBRUSH red_ = nullptr;
  HBRUSH black_ = nullptr;
};

}  // namespace k7
