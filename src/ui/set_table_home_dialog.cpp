#include "ui/set_table_home_dialog.h"

#include "device/device_state.h"
#include "device/module_state.h"
#include "device/polling.h"
#include "link/link.h"
#include "motion/go_to.h"
#include "motion/homing.h"
#include "motion/motors.h"
#include "motion/move.h"
#include "motion/position.h"
#include "motion/units.h"
#include "settings/settings_file.h"
#include "settings/settings_keys.h"
#include "ui/dialog_commands.h"
#include "ui/dialog_text.h"
#include "ui/resource_ids.h"

namespace k7 {
namespace {

constexpr int kFields[] = {IDC_TH_X, IDC_TH_Y, IDC_TH_Z};
constexpr int kButtons[] = {IDOK, IDCANCEL};
constexpr float kDefaultZInches = 1.75f;
constexpr int kDecimals = 6;

// By the file: what the table setup has changed reaches the record later.
bool FileHasAllSwitches(const SettingsFile& file) noexcept {
  return file.ReadInt(keys::kAxisX, keys::kLimitSwitch, 0) == 1 &&
         file.ReadInt(keys::kAxisY, keys::kLimitSwitch, 0) == 1 &&
         file.ReadInt(keys::kAxisZ, keys::kLimitSwitch, 0) == 1 &&
         file.ReadInt(keys::kAxisZ, keys::kProxSwitch, 0) == 1;
}

bool IsAirZ(const DeviceState& record) noexcept {
  return record.cutterMode == kCutterAirZ;
}

void OnInit(HWND dialog) noexcept {
  if (dialogDevice == nullptr) return;
  DeviceState& record = *dialogDevice;
  const SettingsFile file{record};
  SetDecimal(dialog, IDC_TH_X, file.ReadFloat(keys::kAxisX, keys::kTableHome, 0.0f), kDecimals);
  SetDecimal(dialog, IDC_TH_Y, file.ReadFloat(keys::kAxisY, keys::kTableHome, 0.0f), kDecimals);
  SetDecimal(dialog, IDC_TH_Z, file.ReadFloat(keys::kAxisZ, keys::kTableHome, kDefaultZInches),
             kDecimals);
  if (FileHasAllSwitches(file)) EnableControls(dialog, kFields, false);
  if (IsAirZ(record)) {
    ShowControl(dialog, IDC_TH_Z_LABEL, false);
    ShowControl(dialog, IDC_TH_Z, false);
  }
  SetMotors(record, 0);
}

// KEEP: unchecked again, the fields are disabled on a machine without switches, too.
void OnLiteral(HWND dialog) noexcept {
  EnableControls(dialog, kFields, IsChecked(dialog, IDC_TH_LITERAL));
}

// The typed values go to the file in inches and to the record in steps.
void KeepHome(HWND dialog, DeviceState& record, const SettingsFile& file, bool airZ) noexcept {
  const float x = ReadDecimal(dialog, IDC_TH_X);
  const float y = ReadDecimal(dialog, IDC_TH_Y);
  file.WriteFloat(keys::kAxisX, keys::kTableHome, x);
  file.WriteFloat(keys::kAxisY, keys::kTableHome, y);
  record.tableHomeX = InchesToSteps(x, StepsPerInchX(record));
  record.tableHomeY = InchesToSteps(y, StepsPerInchY(record));
  if (airZ) return;
  const float z = ReadDecimal(dialog, IDC_TH_Z);
  file.WriteFloat(keys::kAxisZ, keys::kTableHome, z);
  file.WriteFloat(keys::kAxisZ, keys::kCutterHome, z);
  record.cutterHome = InchesToSteps(z, StepsPerInchZ(record));
}

void DeclarePosition(DeviceState& record, std::int32_t x, std::int32_t y, std::int32_t z,
                     bool airZ) noexcept {
  SetPosition(record, &x, &y, airZ ? nullptr : &z);
}

// The table stands where the user has pushed it: that is the home. Then off to machine zero.
void SettleByHand(DeviceState& record, bool airZ) noexcept {
  DeclarePosition(record, record.tableHomeX, record.tableHomeY, record.cutterHome, airZ);
  SetFeedRate(record, 1.0f);
  const std::int32_t top = 0;
  if (!airZ) EmitMove(record, nullptr, nullptr, &top, 1);
  GoToAsJob(record, 0, 0, 0);
}

void TellThatHomeIsSet(DeviceState& record) noexcept {
  SendLine(record, "SetTableHomed\n");
  Pause(200);
}

// Result of the dialog.
INT_PTR Settle(HWND dialog, DeviceState& record) noexcept {
  const bool airZ = IsAirZ(record);
  const bool literal = IsChecked(dialog, IDC_TH_LITERAL);
  EnableControls(dialog, kFields, false);
  EnableControls(dialog, kButtons, false);
  const SettingsFile file{record};
  const bool allSwitches = FileHasAllSwitches(file);
  KeepHome(dialog, record, file, airZ);
  SetMotors(record, 1);
  if (literal) {
    // KEEP: the controller is not told here that the home is set; homing tells it.
    if (airZ) return IDOK;
    MechanicalHome(record);
    return IDCANCEL;  // KEEP: counts as cancelled, so that a prompt does not home a second time
  }
  if (allSwitches) {
    DeclarePosition(record, 0, 0, 0, airZ);
  } else {
    SettleByHand(record, airZ);
  }
  TellThatHomeIsSet(record);
  return IDOK;
}

void OnOk(HWND dialog) noexcept {
  EndDialog(dialog, dialogDevice == nullptr ? IDOK : Settle(dialog, *dialogDevice));
}

void OnCancel(HWND dialog) noexcept {
  if (dialogDevice != nullptr) {
    SetMotors(*dialogDevice, 1);
    TellThatHomeIsSet(*dialogDevice);
  }
  EndDialog(dialog, IDCANCEL);
}

constexpr CommandRow kCommands[] = {
    {IDOK, kAny, &OnOk},
    {IDCANCEL, kAny, &OnCancel},
    {IDC_TH_LITERAL, BN_CLICKED, &OnLiteral},
};

}  // namespace

INT_PTR ShowSetTableHomeDialog(HWND owner) noexcept {
  return OpenDialog(IDD_SET_TABLE_HOME, owner, &CommandDialogProc<&OnInit, kCommands>);
}

}  // namespace k7
