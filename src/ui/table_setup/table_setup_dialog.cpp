#include "ui/table_setup/table_setup_dialog.h"

#include "base/bounded_copy.h"
#include "job/tool_offsets.h"
#include "session/identity.h"
#include "settings/file.h"
#include "ui/common/dialog_commands.h"
#include "ui/common/dialog_state.h"
#include "ui/common/dialog_text.h"
#include "ui/resource_ids.h"
#include "ui/table_home.h"
#include "ui/table_setup/switch_lamps.h"
#include "ui/table_setup/table_setup_fields.h"
#include "ui/table_setup/table_setup_layout.h"
#include "ui/table_setup/table_setup_resolution.h"

namespace k7 {
namespace {

constexpr UINT_PTR kLampTimer = 1038;
constexpr UINT kLampPeriodMs = 50;
// An applyResult. The machine may have changed: no job may run before the settings are read again.
constexpr INT_PTR kMachineChanged = IDCANCEL;

// What one open dialog keeps.
struct TableSetup {
  SwitchLamps lamps;
  bool filling = false;  // the dialog itself changes the fields, not the user
};

bool IsFilling(HWND dialog) noexcept {
  return StateOf<TableSetup>(dialog)->filling;
}

// Every way out of the dialog.
void Close(HWND dialog, INT_PTR result) noexcept {
  KillTimer(dialog, kLampTimer);
  if (result == IDOK) SavePermanentSettings(dialog);
  EndDialog(dialog, result);
}

void OnOk(HWND dialog) noexcept {
  Close(dialog, IDOK);
}

void OnCancel(HWND dialog) noexcept {
  Close(dialog, IDCANCEL);
}

void OnEdit(HWND dialog) noexcept {
  if (!IsFilling(dialog)) EnableControl(dialog, IDOK, dialogState.busy == 0);
}

template <int kAxis>
void OnAxisEdit(HWND dialog) noexcept {
  UpdateAxisResolution(dialog, kAxis);
  OnEdit(dialog);
}

void OnSpindleEdit(HWND dialog) noexcept {
  UpdateSpindleRpm(dialog);
  OnEdit(dialog);
}

void OnBeadTool(HWND dialog) noexcept {
  if (IsFilling(dialog)) return;
  OnEdit(dialog);
  ShowControls(dialog, kBeadToolControls, IsChecked(dialog, IDC_TS_HAS_BEAD_TOOL));
}

void OnDiode(HWND dialog) noexcept {
  if (IsFilling(dialog)) return;
  OnEdit(dialog);
  ShowControls(dialog, kDiodeControls, IsChecked(dialog, IDC_TS_HAS_DIODE));
}

void OnAirZ(HWND dialog) noexcept {
  if (IsFilling(dialog)) return;
  OnEdit(dialog);
  ApplyAirZLayout(dialog);
}

// KEEP: "Set Table Home..." stays disabled from here on, and the settings dialog lets no job run
// after OK, also when the box was only checked and unchecked again.
void OnEditPermanent(HWND dialog) noexcept {
  EnableControl(dialog, IDC_TS_SET_TABLE_HOME, false);
  dialogState.applyResult = static_cast<std::int32_t>(kMachineChanged);
  EnableControls(dialog, kPermanentControls, IsChecked(dialog, IDC_TS_EDIT_PERMANENT));
}

void OnSetTableHome(HWND dialog) noexcept {
  if (dialogDevice == nullptr) return;
  PromptTableHome(*dialogDevice, dialog);
  ShowTableHomes(dialog, SettingsFile{dialogDevice->link});
  dialogState.applyResult = static_cast<std::int32_t>(kMachineChanged);
}

std::uint32_t SignExtended(std::int16_t word) noexcept {
  return static_cast<std::uint32_t>(std::int32_t{word});
}

void OnSetBeadOffset(HWND dialog) noexcept {
  if (dialogDevice == nullptr) return;
  if (ProposeBeadToolOffset(*dialogDevice, SignExtended(dialogState.hostWordLow),
                            SignExtended(dialogState.hostWordHigh)) != 1) {
    return;
  }
  ShowBeadToolOffsets(dialog, SettingsFile{dialogDevice->link});
}

void OnSetDiodeOffset(HWND dialog) noexcept {
  if (dialogDevice == nullptr) return;
  if (ProposeDiodeOffset(*dialogDevice, SignExtended(dialogState.hostWordLow),
                         SignExtended(dialogState.hostWordHigh)) != 1) {
    return;
  }
  ShowDiodeOffsets(dialog, SettingsFile{dialogDevice->link});
}

constexpr CommandRow kCommands[] = {
    {IDOK, kAny, &OnOk},
    {IDCANCEL, kAny, &OnCancel},
    {IDC_TS_FRIENDLY_NAME, EN_CHANGE, &OnEdit},
    {IDC_TS_TABLE_WIDTH, EN_CHANGE, &OnEdit},
    {IDC_TS_TABLE_HEIGHT, EN_CHANGE, &OnEdit},
    {IDC_TS_ROUND_MOTOR_STEPS, EN_CHANGE, &OnEdit},
    {IDC_TS_ROUND_MICRO_STEPS, EN_CHANGE, &OnEdit},
    {IDC_TS_SEMI_AUTO_OFFSET, EN_CHANGE, &OnEdit},
    {IDC_TS_ROUND_GEAR_RATIO, EN_CHANGE, &OnEdit},
    {IDC_TS_RAMP_TIME, EN_CHANGE, &OnEdit},
    {IDC_TS_SCISSORS, EN_CHANGE, &OnEdit},
    {IDC_TS_MAX_XY_SPEED, EN_CHANGE, &OnEdit},
    {IDC_TS_MAX_Z_SPEED, EN_CHANGE, &OnEdit},
    {IDC_TS_MAX_ENGRAVE_DEPTH, EN_CHANGE, &OnEdit},
    {IDC_TS_JOG_FAST, EN_CHANGE, &OnEdit},
    {IDC_TS_JOG_SLOW, EN_CHANGE, &OnEdit},
    {IDC_TS_BEAD_X, EN_CHANGE, &OnEdit},
    {IDC_TS_BEAD_Y, EN_CHANGE, &OnEdit},
    {IDC_TS_TABLE_DEPTH, EN_CHANGE, &OnEdit},
    {IDC_TS_MOTOR_STEPS_X, EN_CHANGE, &OnAxisEdit<1>},
    {IDC_TS_MICRO_STEPS_X, EN_CHANGE, &OnAxisEdit<1>},
    {IDC_TS_SCREW_PITCH_X, EN_CHANGE, &OnAxisEdit<1>},
    {IDC_TS_MOTOR_STEPS_Y, EN_CHANGE, &OnAxisEdit<2>},
    {IDC_TS_MICRO_STEPS_Y, EN_CHANGE, &OnAxisEdit<2>},
    {IDC_TS_SCREW_PITCH_Y, EN_CHANGE, &OnAxisEdit<2>},
    {IDC_TS_MOTOR_STEPS_Z, EN_CHANGE, &OnAxisEdit<3>},
    {IDC_TS_MICRO_STEPS_Z, EN_CHANGE, &OnAxisEdit<3>},
    {IDC_TS_SCREW_PITCH_Z, EN_CHANGE, &OnAxisEdit<3>},
    {IDC_TS_MOTOR_RPM, EN_CHANGE, &OnSpindleEdit},
    {IDC_TS_SPINDLE_GEAR_RATIO, EN_CHANGE, &OnSpindleEdit},
    {IDC_TS_LIMIT_SWITCH_X, BN_CLICKED, &OnEdit},
    {IDC_TS_LIMIT_SWITCH_Y, BN_CLICKED, &OnEdit},
    {IDC_TS_LIMIT_SWITCH_Z, BN_CLICKED, &OnEdit},
    {IDC_TS_PROX_SWITCH, BN_CLICKED, &OnEdit},
    {IDC_TS_HAS_SPINDLE, BN_CLICKED, &OnEdit},
    {IDC_TS_HAS_ROUND_FIXTURE, BN_CLICKED, &OnEdit},
    {IDC_TS_HAS_BEAD_TOOL, BN_CLICKED, &OnBeadTool},
    {IDC_TS_HAS_DIODE, BN_CLICKED, &OnDiode},
    {IDC_TS_HAS_AIR_Z, BN_CLICKED, &OnAirZ},
    {IDC_TS_EDIT_PERMANENT, BN_CLICKED, &OnEditPermanent},
    {IDC_TS_SET_TABLE_HOME, kAny, &OnSetTableHome},
    {IDC_TS_SET_BEAD_OFFSET, kAny, &OnSetBeadOffset},
    {IDC_TS_SET_DIODE_OFFSET, kAny, &OnSetDiodeOffset},
};

void ShowIdentity(HWND dialog) noexcept {
  wchar_t identity[kIdCapacity] = L"";
  SettleIdentity(*dialogDevice, identity, kIdCapacity);
  wchar_t text[2 * kIdCapacity];
  CopyText(text, L"K7 Controller ID: ");
  AppendText(text, identity);
  SetText(dialog, IDC_TS_CONTROLLER_ID, text);
}

void OnInit(HWND dialog) noexcept {
  TableSetup& setup = *StateOf<TableSetup>(dialog);
  setup.filling = true;
  setup.lamps.Open(dialog);
  if (dialogDevice != nullptr) {
    SetTimer(dialog, kLampTimer, kLampPeriodMs, nullptr);
    ShowIdentity(dialog);
    FillPermanentSettings(dialog);
    ShowStoredResults(dialog, SettingsFile{dialogDevice->link});
    if (IsChecked(dialog, IDC_TS_HAS_BEAD_TOOL)) ShowControls(dialog, kBeadToolControls, true);
    if (IsChecked(dialog, IDC_TS_HAS_DIODE)) ShowControls(dialog, kDiodeControls, true);
    EnableControl(dialog, IDC_TS_SET_TABLE_HOME, dialogState.busy == 0);
    EnableControl(dialog, IDC_TS_EDIT_PERMANENT, dialogState.busy == 0);
    // Without air Z the layout would show the controls of absent tools, so it is not applied then.
    if (IsChecked(dialog, IDC_TS_HAS_AIR_Z)) ApplyAirZLayout(dialog);
  }
  setup.filling = false;
}

INT_PTR CALLBACK TableSetupDialogProc(HWND dialog, UINT message, WPARAM wParam,
                                      LPARAM lParam) noexcept {
  if (message == WM_INITDIALOG) KeepState(dialog, lParam);
  TableSetup* const setup = StateOf<TableSetup>(dialog);
  if (setup == nullptr) return FALSE;
  switch (message) {
    case WM_TIMER:
      if (dialogDevice != nullptr) setup->lamps.Refresh(*dialogDevice);
      return TRUE;
    case WM_CTLCOLORSTATIC:
      return reinterpret_cast<INT_PTR>(setup->lamps.BrushOf(reinterpret_cast<HWND>(lParam)));
    default:
      return CommandDialogProc<&OnInit, kCommands>(dialog, message, wParam, lParam);
  }
}

}  // namespace

INT_PTR ShowTableSetupDialog(HWND owner) noexcept {
  TableSetup setup;
  return OpenDialog(IDD_TABLE_SETUP, owner, &TableSetupDialogProc,
                    reinterpret_cast<LPARAM>(&setup));
}

}  // namespace k7
