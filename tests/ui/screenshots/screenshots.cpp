// Opens each dialog in each of its layouts, for someone to look at. For each: prints "READY name x
// y width height" (the window on the screen), waits for a line, and closes it. Prints "DONE" at the
// end. ../screenshots.sh takes the pictures.
#include <windows.h>

#include <chrono>
#include <cstdio>
#include <cstring>
#include <functional>
#include <iterator>
#include <string>

#include "base/bounded_copy.h"
#include "device/module_state.h"
#include "session/library_folders.h"
#include "session/load.h"
#include "support/attached_device.h"
#include "support/controller_id.h"
#include "support/dialog_driver.h"
#include "support/fake_controller.h"
#include "support/key_file.h"
#include "support/wait_until.h"
#include "ui/color_settings_dialog.h"
#include "ui/common/dialog_state.h"
#include "ui/resource_ids.h"
#include "ui/set_cutter_dialog.h"
#include "ui/set_table_home_dialog.h"
#include "ui/set_table_zero_dialog.h"
#include "ui/settings/settings_dialog.h"
#include "ui/table_setup/table_setup_dialog.h"

namespace {

using namespace k7;  // the driver's own names, all over this program

// What a layout needs before the dialog opens, and what is done to it afterwards.
struct Layout {
  const char* name;
  std::uint32_t mode;
  std::uint32_t allowRun;
  std::uint32_t showGrid;
  void (*prepare)(DeviceState& record, const k7test::KeyFile& file);
  void (*arrange)(HWND dialog);  // may be null
};

void FitEverything(DeviceState&, const k7test::KeyFile& file) {
  file.WriteInt(L"Axis X", L"Limit Switch", 1);
  file.WriteInt(L"Axis Y", L"Limit Switch", 1);
  file.WriteInt(L"Axis Z", L"Limit Switch", 1);
  file.WriteInt(L"Axis Z", L"Prox Switch", 1);
  file.WriteInt(L"Spindle", L"Has Spindle", 1);
  file.WriteFloat(L"Engrave Settings", L"Last Cutter Set", 1.125f);
  file.WriteInt(L"Engrave Settings", L"Engrave Type", 1);
  file.WriteInt(L"Engrave Settings", L"Cutter Mode", 1);
  file.WriteInt(L"Axis Z", L"Air Z", 0);
}
void FitNothing(DeviceState&, const k7test::KeyFile&) {}
void UseAirZ(DeviceState& record, const k7test::KeyFile& file) {
  FitEverything(record, file);
  file.WriteInt(L"Axis Z", L"Air Z", 1);
  file.WriteInt(L"Engrave Settings", L"Multi Pass", 1);
}
void UseRoundFixture(DeviceState& record, const k7test::KeyFile& file) {
  FitEverything(record, file);
  file.WriteInt(L"Axis Round", L"Has Round Attachment", 1);
  file.WriteInt(L"Axis Round", L"Mode", 1);
  file.WriteText(L"Axis Round", L"Circumference", L"6.2832");
}
void UsePassDepths(DeviceState& record, const k7test::KeyFile& file) {
  UseRoundFixture(record, file);
  file.WriteInt(L"Engrave Settings", L"Multi Pass", 1);
  file.WriteFloat(L"Engrave Settings", L"Max Pass Depth", 0.02f);
  file.WriteFloat(L"Engrave Settings", L"Finish Pass Depth", 0.005f);
  file.WriteInt(L"Engrave Settings", L"Engrave By Color", 1);
  file.WriteInt(L"Engrave Settings", L"Cutter Mode", 2);
  file.WriteFloat(L"Maximum Values", L"XY Speed", 100.0f);
}
void UsePassCopies(DeviceState& record, const k7test::KeyFile& file) {
  FitEverything(record, file);
  file.WriteInt(L"Engrave Settings", L"Multi Pass", 1);
  file.WriteInt(L"Engrave Settings", L"Multi Pass Mode", 1);
  file.WriteInt(L"Engrave Settings", L"Multi Pass Copies", 3);
}
void UseProfile(DeviceState& record, const k7test::KeyFile& file) {
  FitEverything(record, file);
  wchar_t path[512];
  GetMaterialLibraryFolder(record, path, 512);
  AppendText(path, L"\\Laminated Brass, 0.0625.ini");
  k7test::KeyFile{path}.WriteFloat(L"Engrave Settings", L"Engrave Depth", 0.01f);
  file.WriteText(L"Settings", L"FriendlyName", L"North Bench");
  file.WriteFloat(L"Engrave Settings", L"Engrave Speed", 0.75f);
  file.WriteFloat(L"Engrave Settings", L"Traverse Speed", 4.0f);
  file.WriteFloat(L"Engrave Settings", L"Engrave Depth", 0.01f);
  file.WriteInt(L"Engrave Settings", L"Engrave By Color", 1);
  file.WriteInt(L"Engrave Settings", L"Multi Pass", 1);
  file.WriteFloat(L"Engrave Settings", L"Max Pass Depth", 0.004f);
  file.WriteFloat(L"Engrave Settings", L"Finish Pass Depth", 0.002f);
  file.WriteInt(L"Axis Round", L"Has Round Attachment", 1);
  file.WriteText(L"Engrave Settings", L"Material Profile", L"Laminated Brass, 0.0625");
}
void BeBusy(DeviceState& record, const k7test::KeyFile& file) {
  FitEverything(record, file);
  record.job.plungeHold = 1;
}
void OpenList(HWND dialog, int id) {
  const HWND list = GetDlgItem(dialog, id);
  SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(list), TRUE);
  SendMessageW(list, CB_SHOWDROPDOWN, TRUE, 0);
  // Without a window manager Wine raises the dialog over its open list, at a moment that nothing
  // tells: the list is kept in front until that is over.
  COMBOBOXINFO info{};
  info.cbSize = sizeof info;
  GetComboBoxInfo(list, &info);
  const auto raise = [&info] {
    for (const HWND place : {HWND_NOTOPMOST, HWND_TOPMOST}) {
      SetWindowPos(info.hwndList, place, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    }
    return false;
  };
  k7test::WaitUntil(raise, std::chrono::seconds{1});
}
void OpenCutterModes(HWND dialog) {
  OpenList(dialog, IDC_CS_CUTTER_MODE);
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

// A layout of a dialog that opens over the settings dialog; posed alone.
struct SubLayout {
  const char* name;
  INT_PTR (*show)(HWND owner);
  void (*prepare)(DeviceState& record, const k7test::KeyFile& file);
  void (*arrange)(HWND dialog);  // may be null
};

void FitEveryTool(DeviceState& record, const k7test::KeyFile& file) {
  FitEverything(record, file);
  file.WriteText(L"Settings", L"FriendlyName", L"North Bench");
  file.WriteFloat(L"Axis Z", L"Table Home", 1.75f);
  file.WriteInt(L"Braille", L"Bead Insert Tool", 1);
  file.WriteInt(L"Braille", L"Bead Insert Tool X Offset", -1250);
  file.WriteInt(L"Braille", L"Bead Insert Tool Y Offset", 750);
  file.WriteInt(L"Diode", L"Diode Pointer", 1);
  file.WriteInt(L"Diode", L"Diode Pointer X Offset", -1250);
  file.WriteInt(L"Diode", L"Diode Pointer Y Offset", 750);
  file.WriteInt(L"Axis Round", L"Has Round Attachment", 1);
  file.WriteFloat(L"Axis X", L"Table Home", 12.345678f);
  file.WriteFloat(L"Axis Y", L"Table Home", -0.25025f);
  file.WriteFloat(L"Engrave Settings", L"Last Cutter Set", 0.05f);
  dialogState.mode = 1;
  dialogState.xLimitSwitch = dialogState.yLimitSwitch = 1;
  dialogState.zLimitSwitch = dialogState.zProxSwitch = 1;
}
void FitAirZ(DeviceState& record, const k7test::KeyFile& file) {
  FitEveryTool(record, file);
  file.WriteInt(L"Axis Z", L"Air Z", 1);
}

// The host's colours: offsets as in its own table.
alignas(4) unsigned char hostColors[1024];
void UseColors(DeviceState& record, const k7test::KeyFile&) {
  constexpr std::uint32_t kColors[] = {0x000000, 0x0000FF, 0xFFFFFF, 0x00FF00, 0xFF0000, 0x00FFFF};
  for (std::size_t i = 0; i < std::size(kColors); ++i) {
    const std::int32_t count = 1;
    std::memcpy(hostColors + 688 + 4 * i, &kColors[i], 4);
    std::memcpy(hostColors + 788 + 4 * i, &count, 4);
    hostColors[884 + i] = i != 3;
  }
  while (record.host.hostColorTlsIndex == 0) record.host.hostColorTlsIndex = TlsAlloc();
}

void Unlock(HWND dialog) {
  k7test::Click(dialog, IDC_TS_EDIT_PERMANENT);
}
void OpenModes(HWND dialog) {
  OpenList(dialog, IDC_TZ_MODE);
}

constexpr SubLayout kSubLayouts[] = {
    {"table_setup_plain", &ShowTableSetupDialog, &FitNothing, nullptr},
    {"table_setup_every_tool", &ShowTableSetupDialog, &FitEveryTool, &Unlock},
    {"table_setup_air_z", &ShowTableSetupDialog, &FitAirZ, &Unlock},
    {"color_settings_some", &ShowColorSettingsDialog, &UseColors, nullptr},
    {"color_settings_no_table", &ShowColorSettingsDialog, &FitNothing, nullptr},
    {"set_cutter", &ShowSetCutterDialog, &FitEveryTool, nullptr},
    {"set_table_zero", &ShowSetTableZeroDialog, &FitEveryTool, nullptr},
    {"set_table_zero_list_open", &ShowSetTableZeroDialog, &FitEveryTool, &OpenModes},
    {"set_table_home", &ShowSetTableHomeDialog, &FitNothing, nullptr},
    {"set_table_home_switches", &ShowSetTableHomeDialog, &FitEveryTool, nullptr},
    {"set_table_home_air_z", &ShowSetTableHomeDialog, &FitAirZ, nullptr},
};

// Announces the foremost dialog and waits for the line; then cancels it by leaving the scope.
void Pose(const char* name, std::function<std::int64_t()> show, void (*arrange)(HWND)) {
  k7test::DialogDriver driver{std::move(show)};
  const HWND dialog = driver.WaitForDialog();
  k7test::WaitUntil([&] { return SetForegroundWindow(dialog) && GetForegroundWindow() == dialog; });
  SendMessageW(dialog, WM_NCACTIVATE, TRUE, 0);  // Wine draws its first window as one behind others
  if (arrange != nullptr) arrange(dialog);
  RECT place{};
  GetWindowRect(dialog, &place);
  std::printf("READY %s %ld %ld %ld %ld\n", name, place.left, place.top, place.right - place.left,
              place.bottom - place.top);
  std::fflush(stdout);
  char line[64];
  if (std::fgets(line, sizeof line, stdin) == nullptr) return;
}

constexpr wchar_t kControllerId[] = L"7QM2K4T9XB31RW6H";

// A machine with a settings file of its own, prepared and loaded as at a connect.
class Machine {
 public:
  explicit Machine(void (*prepare)(DeviceState&, const k7test::KeyFile&)) {
    controller_.BehaveWell();
    controller_.Answer("M119\n", "min_x:1 min_y:0 min_z:0 pins: Probe: 1\r\n");
    k7test::GiveDefaults(*device_);
    DeleteFileW(k7test::SettingsFileOf(kControllerId).c_str());  // of the machine before
    device_->link.controllerId.Set(kControllerId);
    device_->position.tableHomed = 1;
    dialogState = {};
    prepare(*device_, k7test::KeyFile{device_->link});
    LoadSettings(*device_);
  }
  DeviceState& operator*() { return *device_; }

 private:
  k7test::FakeController controller_;
  k7test::AttachedDevice device_{controller_};
};

void PoseSettings(const Layout& layout) {
  Machine machine{layout.prepare};
  Pose(
      layout.name,
      [&] {
        return ShowSettingsDialog(*machine, nullptr, layout.mode, layout.allowRun, 0,
                                  layout.showGrid);
      },
      layout.arrange);
}

void PoseSub(const SubLayout& layout) {
  Machine machine{layout.prepare};
  Pose(
      layout.name,
      [&] {
        dialogDevice = &*machine;
        if (const DWORD index = dialogDevice->host.hostColorTlsIndex; index != 0) {
          TlsSetValue(index, hostColors);
        }
        const INT_PTR result = layout.show(nullptr);
        dialogDevice = nullptr;
        return static_cast<std::int64_t>(result);
      },
      layout.arrange);
}

bool IsWanted(const char* name, int argc, char** argv) {
  return argc < 2 || std::strstr(name, argv[1]) != nullptr;
}

}  // namespace

// With an argument: the layouts whose names contain it.
int main(int argc, char** argv) {
  for (const Layout& layout : kLayouts) {
    if (IsWanted(layout.name, argc, argv)) PoseSettings(layout);
  }
  for (const SubLayout& layout : kSubLayouts) {
    if (IsWanted(layout.name, argc, argv)) PoseSub(layout);
  }
  std::printf("DONE\n");
  return 0;
}
