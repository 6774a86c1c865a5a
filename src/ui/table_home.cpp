#include "ui/table_home.h"

#include <windows.h>

#include "device/module_state.h"
#include "device/polling.h"
#include "motion/homing.h"
#include "motion/location.h"
#include "motion/units.h"
#include "settings/settings_file.h"
#include "settings/settings_keys.h"
#include "ui/set_table_home_dialog.h"

namespace k7 {
namespace {

// Makes the record the dialogs' device for one call.
class DialogDeviceScope {
 public:
  explicit DialogDeviceScope(DeviceState& record) noexcept : before_(dialogDevice) {
    dialogDevice = &record;
  }
  ~DialogDeviceScope() { dialogDevice = before_; }
  DialogDeviceScope(const DialogDeviceScope&) = delete;
  DialogDeviceScope& operator=(const DialogDeviceScope&) = delete;

 private:
  DeviceState* before_;
};

void PullBack(Polled<std::int32_t>& home, float stepsPerInch) noexcept {
  home = WrapSubtract(home, InchesToSteps(0.25f, stepsPerInch));
}

// Finds the home by the switches. An axis that stood at its switch when asked had been pushed as
// far as it goes: its home is a quarter inch short of it.
void HomeBySwitches(DeviceState& record) noexcept {
  const bool airZ = record.cutterMode == kCutterAirZ;
  // Negative: the report of each limit switch brings the home of its axis. KEEP: one that brings
  // none leaves -1, which is kept and written.
  record.tableHomeX = -1;
  record.tableHomeY = -1;
  record.cutterHome = -1;
  std::uint8_t x = 0, y = 0, z = 0;
  QuerySwitches(record, &x, &y, &z, nullptr);
  MechanicalHome(record);
  const float perInchX = StepsPerInchX(record);
  const float perInchY = StepsPerInchY(record);
  const float perInchZ = StepsPerInchZ(record);
  if (x == 1) PullBack(record.tableHomeX, perInchX);
  if (y == 1) PullBack(record.tableHomeY, perInchY);
  if (z == 1 && !airZ) PullBack(record.cutterHome, perInchZ);

  const SettingsFile file{record};
  file.WriteFloat(keys::kAxisX, keys::kTableHome, StepsToInches(record.tableHomeX, perInchX));
  file.WriteFloat(keys::kAxisY, keys::kTableHome, StepsToInches(record.tableHomeY, perInchY));
  // KEEP: the dialog's "Table Home" of Z, not the "Cutter Home" that a load reads.
  if (!airZ) {
    file.WriteFloat(keys::kAxisZ, keys::kTableHome, StepsToInches(record.cutterHome, perInchZ));
  }
}

}  // namespace

std::uint64_t EnsureTableHome(DeviceState& record, WindowHandle parent) noexcept {
  if (record.tableHomed != 0) return 0;
  if (HasAllSwitches(record)) {
    MechanicalHome(record);
    return 0;
  }
  const DialogDeviceScope scope{record};
  return static_cast<std::uint64_t>(ShowSetTableHomeDialog(static_cast<HWND>(parent)));
}

bool PromptTableHome(DeviceState& record, WindowHandle parent) noexcept {
  if (record.connected != 1 || JobOpen(record) != 0) return true;
  const HWND owner = static_cast<HWND>(parent);
  const int answer =
      MessageBoxW(owner, L"Would you like to set your table home?", L"Table Home", MB_YESNO);
  if (answer != IDYES) return true;
  const DialogDeviceScope scope{record};
  const bool automatic = HasAllSwitches(record);
  const INT_PTR result = ShowSetTableHomeDialog(owner);
  if (!automatic || result != IDOK) return true;
  HomeBySwitches(record);
  ShowSetTableHomeDialog(owner);
  return true;
}

}  // namespace k7
