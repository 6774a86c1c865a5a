#include "ui/table_home.h"

#include <windows.h>

#include "base/arithmetic.h"
#include "device/module_state.h"
#include "device/progress.h"
#include "motion/axes.h"
#include "motion/homing.h"
#include "settings/file.h"
#include "settings/schema.h"
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

// Finds the home by the switches. Where the switch of an axis was closed before homing, the axis
// had been pushed to its end; its home is then a quarter inch before the switch.
void HomeBySwitches(DeviceState& record) noexcept {
  const bool airZ = record.tools.cutterMode == kCutterAirZ;
  // A negative home makes the reader take the home of an axis from the report of its limit switch.
  // KEEP: where no report brings a home, -1 stays and is written.
  record.position.tableHome.x = -1;
  record.position.tableHome.y = -1;
  record.position.cutterHome = -1;
  std::uint8_t x = 0, y = 0, z = 0;
  QuerySwitches(record, &x, &y, &z, nullptr);
  HomeToSwitches(record);
  const float perInchX = StepsPerInch(record.mechanics, Axis::X);
  const float perInchY = StepsPerInch(record.mechanics, Axis::Y);
  const float perInchZ = StepsPerInch(record.mechanics, Axis::Z);
  if (x == 1) PullBack(record.position.tableHome.x, perInchX);
  if (y == 1) PullBack(record.position.tableHome.y, perInchY);
  if (z == 1 && !airZ) PullBack(record.position.cutterHome, perInchZ);

  const SettingsFile file{record.link};
  file.WriteFloat(settings::kTableHomeX, StepsToInches(record.position.tableHome.x, perInchX));
  file.WriteFloat(settings::kTableHomeY, StepsToInches(record.position.tableHome.y, perInchY));
  // KEEP: Z is written as the "Table Home" that the dialog shows, not as the "Cutter Home" that a
  // load reads.
  if (!airZ) {
    file.WriteFloat(settings::kTableHomeZ, StepsToInches(record.position.cutterHome, perInchZ));
  }
}

}  // namespace

std::uint64_t EnsureTableHome(DeviceState& record, WindowHandle parent) noexcept {
  if (record.position.tableHomed != 0) return 0;
  if (HasAllSwitches(record.mechanics)) {
    HomeToSwitches(record);
    return 0;
  }
  const DialogDeviceScope scope{record};
  return static_cast<std::uint64_t>(ShowSetTableHomeDialog(static_cast<HWND>(parent)));
}

bool PromptTableHome(DeviceState& record, WindowHandle parent) noexcept {
  if (record.link.connected != 1 || JobOpen(record.job) != 0) return true;
  const HWND owner = static_cast<HWND>(parent);
  const int answer =
      MessageBoxW(owner, L"Would you like to set your table home?", L"Table Home", MB_YESNO);
  if (answer != IDYES) return true;
  const DialogDeviceScope scope{record};
  const bool automatic = HasAllSwitches(record.mechanics);
  const INT_PTR result = ShowSetTableHomeDialog(owner);
  if (!automatic || result != IDOK) return true;
  HomeBySwitches(record);
  ShowSetTableHomeDialog(owner);
  return true;
}

}  // namespace k7
