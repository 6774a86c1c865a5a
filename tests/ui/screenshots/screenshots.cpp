// Opens each dialog in each of its layouts, for someone to look at. For each: prints "READY name x
// y width height" (the window on the screen), waits for a line, and closes it. Prints "DONE" at the
// end. ../screenshots.sh takes the pictures.
#include <windows.h>

#include <cstdio>
#include <cstring>
#include <functional>
#include <string>

#include "device/bounded_copy.h"
#include "device/module_state.h"
#include "settings/library_folders.h"
#include "settings/load.h"
#include "settings/settings_file.h"
#include "settings/settings_keys.h"
#include "support/attached_device.h"
#include "support/controller_id.h"
#include "support/dialog_driver.h"
#include "support/fake_controller.h"
#include "ui/resource_ids.h"
#include "ui/settings_dialog.h"

namespace {

using namespace k7;  // the driver's own names, all over this program

// What a layout needs before the dialog opens, and what is done to it afterwards.
struct Layout {
  const char* name;
  std::uint32_t mode;
  std::uint32_t allowRun;
  std::uint32_t showGrid;
  void (*prepare)(DeviceState& record, const SettingsFile& file);
  void (*arrange)(HWND dialog);  // may be null
};

void FitEverything(DeviceState&, const SettingsFile& file) {
  file.WriteInt(keys::kAxisX, keys::kLimitSwitch, 1);
  file.WriteInt(keys::kAxisY, keys::kLimitSwitch, 1);
  file.WriteInt(keys::kAxisZ, keys::kLimitSwitch, 1);
  file.WriteInt(keys::kAxisZ, keys::kProxSwitch, 1);
  file.WriteInt(keys::kSpindle, keys::kHasSpindle, 1);
  file.WriteFloat(keys::kEngraveSettings, keys::kLastCutterSet, 1.125f);
  file.WriteInt(keys::kEngraveSettings, keys::kEngraveType, 1);
}
void FitNothing(DeviceState&, const SettingsFile&) {}
void UseAirZ(DeviceState& record, const SettingsFile& file) {
  FitEverything(record, file);
  file.WriteInt(keys::kAxisZ, keys::kAirZ, 1);
  file.WriteInt(keys::kEngraveSettings, keys::kMultiPass, 1);
}
void UseRoundFixture(DeviceState& record, const SettingsFile& file) {
  FitEverything(record, file);
  file.WriteInt(keys::kAxisRound, keys::kHasRoundAttachment, 1);
  file.WriteInt(keys::kAxisRound, keys::kMode, 1);
  file.WriteText(keys::kAxisRound, keys::kCircumference, L"6.2832");
}
void UsePassDepths(DeviceState& record, const SettingsFile& file) {
  UseRoundFixture(record, file);
  file.WriteInt(keys::kEngraveSettings, keys::kMultiPass, 1);
  file.WriteFloat(keys::kEngraveSettings, keys::kMaxPassDepth, 0.02f);
  file.WriteFloat(keys::kEngraveSettings, keys::kFinishPassDepth, 0.005f);
  file.WriteInt(keys::kEngraveSettings, keys::kEngraveByColor, 1);
  file.WriteInt(keys::kEngraveSettings, keys::kCutterMode, 2);
  file.WriteFloat(keys::kMaximumValues, keys::kXySpeed, 100.0f);
}
void UsePassCopies(DeviceState& record, const SettingsFile& file) {
  FitEverything(record, file);
  file.WriteInt(keys::kEngraveSettings, keys::kMultiPass, 1);
  file.WriteInt(keys::kEngraveSettings, keys::kMultiPassMode, 1);
  file.WriteInt(keys::kEngraveSettings, keys::kMultiPassCopies, 3);
}
void UseProfile(DeviceState& record, const SettingsFile& file) {
  FitEverything(record, file);
  wchar_t path[512];
  GetMaterialLibraryFolder(record, path, 512);
  AppendText(path, L"\\Laminated Brass, 0.0625.ini");
  SettingsFile{path}.WriteFloat(keys::kEngraveSettings, keys::kEngraveDepth, 0.01f);
  file.WriteText(keys::kEngraveSettings, keys::kMaterialProfile, L"Laminated Brass, 0.0625");
}
void BeBusy(DeviceState& record, const SettingsFile& file) {
  FitEverything(record, file);
  record.plungeHold = 1;
}
void OpenCutterModes(HWND dialog) {
  PostMessageW(GetDlgItem(dialog, IDC_CS_CUTTER_MODE), CB_SHOWDROPDOWN, TRUE, 0);
}

constexpr Layout kLayouts[] = {
    {"settings_plain", 1, 1, 1, &FitEverything, nullptr},
    {"settings_no_switches", 1, 1, 0, &FitNothing, nullptr},
    {"settings_air_z", 1, 1, 1, &UseAirZ, nullptr},
    {"settings_round_fixture", 1, 1, 1, &UseRoundFixture, nullptr},
    {"settings_pass_depths", 1, 1, 1, &UsePassDepths, nullptr},
    {"settings_pass_copies", 1, 1, 1, &UsePassCopies, nullptr},
    {"settings_profile", 1, 1, 1, &UseProfile, nullptr},
    {"settings_busy", 1, 1, 1, &BeBusy, nullptr},
    {"settings_only_looking", 0, 0, 1, &FitEverything, nullptr},
    {"settings_list_open", 1, 1, 1, &FitEverything, &OpenCutterModes},
};

// Announces the foremost dialog and waits for the line; then cancels it by leaving the scope.
void Pose(const char* name, std::function<std::int64_t()> show, void (*arrange)(HWND)) {
  k7test::DialogDriver driver{std::move(show)};
  const HWND dialog = driver.WaitForDialog();
  if (arrange != nullptr) arrange(dialog);
  RECT place{};
  GetWindowRect(dialog, &place);
  std::printf("READY %s %ld %ld %ld %ld\n", name, place.left, place.top, place.right - place.left,
              place.bottom - place.top);
  std::fflush(stdout);
  char line[64];
  if (std::fgets(line, sizeof line, stdin) == nullptr) return;
}

void PoseSettings(const Layout& layout) {
  k7test::FakeController controller;
  controller.BehaveWell();
  k7test::AttachedDevice device{controller};
  k7test::GiveDefaults(*device);
  device->controllerId.Set(k7test::FreshControllerId().c_str());
  device->tableHomed = 1;
  layout.prepare(*device, SettingsFile{*device});
  LoadSettings(*device);
  Pose(
      layout.name,
      [&] {
        return ShowSettingsDialog(*device, nullptr, layout.mode, layout.allowRun, 0,
                                  layout.showGrid);
      },
      layout.arrange);
}

}  // namespace

// With an argument: the layouts whose names contain it.
int main(int argc, char** argv) {
  for (const Layout& layout : kLayouts) {
    if (argc < 2 || std::strstr(layout.name, argv[1]) != nullptr) PoseSettings(layout);
  }
  std::printf("DONE\n");
  return 0;
}
