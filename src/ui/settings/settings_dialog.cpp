#include "ui/settings/settings_dialog.h"

#include <windows.h>

#include "base/arithmetic.h"
#include "device/progress.h"
#include "link/link.h"
#include "motion/homing.h"
#include "session/load.h"
#include "settings/schema.h"
#include "ui/color_settings_dialog.h"
#include "ui/common/dialog_commands.h"
#include "ui/common/dialog_state.h"
#include "ui/common/dialog_text.h"
#include "ui/resource_ids.h"
#include "ui/set_cutter_dialog.h"
#include "ui/set_table_zero_dialog.h"
#include "ui/settings/control_states.h"
#include "ui/settings/engrave_lists.h"
#include "ui/settings/engrave_settings.h"
#include "ui/settings/filling.h"
#include "ui/settings/material_profiles.h"
#include "ui/settings/maximum_values.h"
#include "ui/table_home.h"
#include "ui/table_setup/table_setup_dialog.h"

namespace k7 {
namespace {

constexpr UINT_PTR kAliveTimer = 1041;
constexpr UINT kAlivePeriodMs = 500;

// Every way out of the dialog.
void Close(HWND dialog, INT_PTR result) noexcept {
  KillTimer(dialog, kAliveTimer);
  EndDialog(dialog, result);
}

void SaveAndClose(HWND dialog, INT_PTR result) noexcept {
  if (!ValidateEngraveSettings(dialog)) return;
  SaveEngraveSettings(dialog, nullptr);
  Close(dialog, result);
}

void OnRunJob(HWND dialog) noexcept {
  SaveAndClose(dialog, IDOK);
}

void OnApply(HWND dialog) noexcept {
  SaveAndClose(dialog, dialogState.applyResult);
}

void OnCancel(HWND dialog) noexcept {
  Close(dialog, IDCANCEL);
}

// The fields no longer hold the profile that was picked.
void OnEdit(HWND dialog) noexcept {
  if (FillingOf(dialog) == Filling::None) ClearMaterialSelection(dialog);
}

void OnResolution(HWND dialog) noexcept {
  if (FillingOf(dialog) != Filling::AtOpening) ClearMaterialSelection(dialog);
}

void OnCutterMode(HWND dialog) noexcept {
  ClearMaterialSelection(dialog);
  ShowEngraveDepthLabel(dialog, Selection(dialog, IDC_CS_CUTTER_MODE));
}

void OnEngraveType(HWND dialog) noexcept {
  const auto type = static_cast<std::uint32_t>(Selection(dialog, IDC_CS_ENGRAVE_TYPE));
  if (type == dialogState.currentEngraveType) return;
  dialogState.currentEngraveType = type;
  ClearMaterialSelection(dialog);
  FillCutterModeList(dialog, nullptr);
}

void OnEngraveByColor(HWND dialog) noexcept {
  if (FillingOf(dialog) != Filling::AtOpening) ClearMaterialSelection(dialog);
  ShowControl(dialog, IDC_CS_COLOR_SETTINGS, IsChecked(dialog, IDC_CS_ENGRAVE_BY_COLOR));
}

void OnColorSettings(HWND dialog) noexcept {
  ShowColorSettingsDialog(dialog);
}

void OnMechanicalHome(HWND) noexcept {
  if (dialogDevice != nullptr) HomeToSwitches(*dialogDevice);
}

void OnTableSetup(HWND dialog) noexcept {
  if (ShowTableSetupDialog(dialog) != IDOK || dialogDevice == nullptr) return;
  const SettingsFile file{dialogDevice->link};
  ShowMaximumValues(dialog, file, MaximumValues::WithoutGridSpeed);
  const bool round = file.ReadInt(settings::kRoundMode) != 0;
  const bool fitted = hasRoundAttachment != 0;
  // KEEP: without the fixture the label of the circumference stays.
  ShowControl(dialog, IDC_CS_CIRCUMFERENCE_LABEL, round);
  ShowControl(dialog, IDC_CS_CIRCUMFERENCE, round && fitted);
  ShowControl(dialog, IDC_CS_ROUND_FIXTURE, fitted);
  ShowControl(dialog, IDC_CS_ROUND_FIXTURE_LABEL, fitted);
  FillSpindleRpm(dialog, nullptr);
  FillResolutionList(dialog, nullptr);
  FillEngraveTypeList(dialog, nullptr);
  FillCutterModeList(dialog, nullptr);
  UpdateControlStates(dialog, file.Path());
  // The machine itself may have changed: no job before the settings have been read anew.
  if (dialogState.applyResult == IDCANCEL) {
    EnableControl(dialog, IDOK, false);
    EnableControl(dialog, IDC_CS_MECHANICAL_HOME, false);
  }
  dialogState.applyResult = static_cast<std::int32_t>(kSettingsApplied);
}

void OnSetCutter(HWND dialog) noexcept {
  if (ShowSetCutterDialog(dialog) != IDOK || dialogDevice == nullptr) return;
  ShowLastCutter(dialog, SettingsFile{dialogDevice->link});
}

void OnSetTableZero(HWND dialog) noexcept {
  ShowSetTableZeroDialog(dialog);
}

void OnMultiPass(HWND dialog) noexcept {
  if (FillingOf(dialog) != Filling::AtOpening) ClearMaterialSelection(dialog);
  constexpr int kMultiPassControls[] = {IDC_CS_MULTI_PASS_MODE, IDC_CS_MULTI_PASS_MODE_LABEL,
                                        IDC_CS_PASS_DEPTH_OR_COPIES, IDC_CS_PASS_LABEL};
  const bool multiPass = IsChecked(dialog, IDC_CS_MULTI_PASS);
  const bool depths = multiPass && Selection(dialog, IDC_CS_MULTI_PASS_MODE) == 0;
  ShowControls(dialog, kMultiPassControls, multiPass);
  ShowFinishDepth(dialog, depths);
}

// One field holds the copies or the depth; the other number is remembered meanwhile.
void OnMultiPassMode(HWND dialog) noexcept {
  ClearMaterialSelection(dialog);
  const float typed = ReadDecimal(dialog, IDC_CS_PASS_DEPTH_OR_COPIES);
  const bool depths = Selection(dialog, IDC_CS_MULTI_PASS_MODE) == 0;
  ShowFinishDepth(dialog, depths);
  if (depths) {
    dialogState.passCopies = RoundHalfUp(typed);
    SetText(dialog, IDC_CS_PASS_LABEL, L"Maximum Pass Depth");
    SetDecimal(dialog, IDC_CS_PASS_DEPTH_OR_COPIES, dialogState.maxPassDepth, 4);
  } else {
    dialogState.maxPassDepth = typed;
    ShowPassCopies(dialog);
  }
}

void OnRoundFixture(HWND dialog) noexcept {
  ShowCircumference(dialog, Selection(dialog, IDC_CS_ROUND_FIXTURE) != 0);
}

constexpr CommandRow kCommands[] = {
    {IDOK, kAny, &OnRunJob},
    {IDC_CS_APPLY, kAny, &OnApply},
    {IDCANCEL, kAny, &OnCancel},
    // KEEP: the edits and lists that are not here leave the profile selected.
    {IDC_CS_CUTTER_LIFT, EN_CHANGE, &OnEdit},
    {IDC_CS_ENGRAVE_DEPTH, EN_CHANGE, &OnEdit},
    {IDC_CS_TRAVERSE_SPEED, EN_CHANGE, &OnEdit},
    {IDC_CS_CUTTER_DOWN_SPEED, EN_CHANGE, &OnEdit},
    {IDC_CS_CUTTER_UP_SPEED, EN_CHANGE, &OnEdit},
    {IDC_CS_ENGRAVE_SPEED, EN_CHANGE, &OnEdit},
    {IDC_CS_SPINDLE_RPM, EN_CHANGE, &OnEdit},
    {IDC_CS_ENGRAVE_DELAY, EN_CHANGE, &OnEdit},
    {IDC_CS_RESOLUTION, CBN_SELCHANGE, &OnResolution},
    {IDC_CS_CUTTER_MODE, CBN_SELCHANGE, &OnCutterMode},
    {IDC_CS_ENGRAVE_TYPE, CBN_SELCHANGE, &OnEngraveType},
    {IDC_CS_ENGRAVE_BY_COLOR, BN_CLICKED, &OnEngraveByColor},
    {IDC_CS_COLOR_SETTINGS, kAny, &OnColorSettings},
    {IDC_CS_MECHANICAL_HOME, kAny, &OnMechanicalHome},
    {IDC_CS_TABLE_SETUP, kAny, &OnTableSetup},
    {IDC_CS_SET_CUTTER, kAny, &OnSetCutter},
    {IDC_CS_SET_TABLE_ZERO, kAny, &OnSetTableZero},
    {IDC_CS_SAVE_MATERIAL, kAny, &OnSaveMaterial},
    {IDC_CS_MATERIAL, CBN_SELCHANGE, &OnPickMaterial},
    {IDC_CS_DELETE_MATERIAL, kAny, &OnDeleteMaterial},
    {IDC_CS_MULTI_PASS, BN_CLICKED, &OnMultiPass},
    {IDC_CS_MULTI_PASS_MODE, CBN_SELCHANGE, &OnMultiPassMode},
    {IDC_CS_ROUND_FIXTURE, CBN_SELCHANGE, &OnRoundFixture},
    {IDC_CS_IMPORT_NOTICE, kAny, &OnImportNotice},
};

void OnInit(HWND dialog, LPARAM initParam) noexcept {
  dialogState.hostWordLow = static_cast<std::int16_t>(LOWORD(initParam));
  dialogState.hostWordHigh = static_cast<std::int16_t>(HIWORD(initParam));
  dialogState.applyResult = static_cast<std::int32_t>(kSettingsApplied);
  dialogState.xLimitSwitch = dialogState.yLimitSwitch = dialogState.zLimitSwitch = 0;
  dialogState.zProxSwitch = 0;
  hasSpindle = 0;
  SetFilling(dialog, Filling::AtOpening);
  // Until a profile is selected, and for good when the folder of the profiles cannot be searched.
  EnableControl(dialog, IDC_CS_DELETE_MATERIAL, false);
  SetTimer(dialog, kAliveTimer, kAlivePeriodMs, nullptr);
  LoadEngraveSettings(dialog, nullptr);
  SetFilling(dialog, Filling::None);
}

// A controller that has fallen silent ends the dialog as if it had been cancelled.
void OnTimer(HWND dialog) noexcept {
  if (dialogDevice == nullptr || CheckAlive(dialogDevice->link) != 0) return;
  SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
}

INT_PTR CALLBACK ControllerSettingsDialogProc(HWND dialog, UINT message, WPARAM wParam,
                                              LPARAM lParam) noexcept {
  switch (message) {
    case WM_INITDIALOG:
      OnInit(dialog, lParam);
      return TRUE;
    case WM_TIMER:
      OnTimer(dialog);
      return TRUE;
    case WM_COMMAND:
      return RunCommand(kCommands, dialog, wParam) ? TRUE : FALSE;
    default:
      return FALSE;
  }
}

}  // namespace

std::int64_t ShowSettingsDialog(DeviceState& record, WindowHandle parent, std::uint32_t mode,
                                std::uint32_t allowRun, std::uint64_t initParam,
                                std::uint32_t showGrid) noexcept {
  dialogDevice = &record;
  if (mode == 1) EnsureTableHome(record, parent);
  dialogState.mode = mode;
  dialogState.busy = JobOpen(record.job);
  if (record.job.plungeHold == 1) dialogState.busy = 1;
  dialogState.allowRun = allowRun;
  dialogState.showGrid = showGrid;
  const INT_PTR result = OpenDialog(IDD_CONTROLLER_SETTINGS, static_cast<HWND>(parent),
                                    &ControllerSettingsDialogProc, static_cast<LPARAM>(initParam));
  if (result != kSettingsCancelled) LoadSettings(record);
  ClearAliveTicks(record.link);
  dialogDevice = nullptr;
  return static_cast<std::int32_t>(result);
}

}  // namespace k7
