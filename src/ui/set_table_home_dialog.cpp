#include "ui/set_table_home_dialog.h"

#include "device/device_state.h"
#include "device/module_state.h"
#include "device/polling.h"
#include "job/go_to.h"
#include "link/commands.h"
#include "link/link.h"
#include "motion/axes.h"
#include "motion/homing.h"
#include "motion/move.h"
#include "motion/position.h"
#include "settings/file.h"
#include "settings/keys.h"
#include "ui/common/dialog_commands.h"
#include "ui/common/dialog_text.h"
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

bool IsAirZ(const Tools& tools) noexcept {
  return tools.cutterMode == kCutterAirZ;
}

void OnInit(HWND dialog) noexcept {
  if (dialogDevice == nullptr) return;
  DeviceState& record = *dialogDevice;
  const SettingsFile file{record.link};
  SetDecimal(dialog, IDC_TH_X, file.ReadFloat(keys::kAxisX, keys::kTableHome, 0.0f), kDecimals);
  SetDecimal(dialog, IDC_TH_Y, file.ReadFloat(keys::kAxisY, keys::kTableHome, 0.0f), kDecimals);
  SetDecimal(dialog, IDC_TH_Z, file.ReadFloat(keys::kAxisZ, keys::kTableHome, kDefaultZInches),
             kDecimals);
  if (FileHasAllSwitches(file)) EnableControls(dialog, kFields, false);
  if (IsAirZ(record.tools)) {
    ShowControl(dialog, IDC_TH_Z_LABEL, false);
    ShowControl(dialog, IDC_TH_Z, false);
  }
  SetMotorPower(record.link, 0);
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
  record.position.tableHome.x = InchesToSteps(x, StepsPerInch(record.mechanics, Axis::X));
  record.position.tableHome.y = InchesToSteps(y, StepsPerInch(record.mechanics, Axis::Y));
  if (airZ) return;
  const float z = ReadDecimal(dialog, IDC_TH_Z);
  file.WriteFloat(keys::kAxisZ, keys::kTableHome, z);
  file.WriteFloat(keys::kAxisZ, keys::kCutterHome, z);
  record.position.cutterHome = InchesToSteps(z, StepsPerInch(record.mechanics, Axis::Z));
}

void DeclarePosition(DeviceState& record, AxisTargets place, bool airZ) noexcept {
  if (airZ) place.z.reset();
  k7::DeclarePosition(record.link, record.position, place);
}

// The table stands where the user has pushed it: that is the home. Then off to machine zero.
void SettleByHand(DeviceState& record, bool airZ) noexcept {
  DeclarePosition(record,
                  {.x = record.position.tableHome.x,
                   .y = record.position.tableHome.y,
                   .z = record.position.cutterHome},
                  airZ);
  SetFeedRate(record, 1.0f);
  if (!airZ) SendMove(record, {.z = 0});
  GoToAsJob(record, 0, 0, 0);
}

void TellThatHomeIsSet(LinkState& link) noexcept {
  SendLine(link, commands::kTableHomed);
  Pause(200);
}

// Result of the dialog.
INT_PTR Settle(HWND dialog, DeviceState& record) noexcept {
  const bool airZ = IsAirZ(record.tools);
  const bool literal = IsChecked(dialog, IDC_TH_LITERAL);
  EnableControls(dialog, kFields, false);
  EnableControls(dialog, kButtons, false);
  const SettingsFile file{record.link};
  const bool allSwitches = FileHasAllSwitches(file);
  KeepHome(dialog, record, file, airZ);
  SetMotorPower(record.link, 1);
  if (literal) {
    // KEEP: the controller is not told here that the home is set; homing tells it.
    if (airZ) return IDOK;
    HomeToSwitches(record);
    return IDCANCEL;  // KEEP: counts as cancelled, so that a prompt does not home a second time
  }
  if (allSwitches) {
    DeclarePosition(record, {.x = 0, .y = 0, .z = 0}, airZ);
  } else {
    SettleByHand(record, airZ);
  }
  TellThatHomeIsSet(record.link);
  return IDOK;
}

void OnOk(HWND dialog) noexcept {
  EndDialog(dialog, dialogDevice == nullptr ? IDOK : Settle(dialog, *dialogDevice));
}

void OnCancel(HWND dialog) noexcept {
  if (dialogDevice != nullptr) {
    SetMotorPower(dialogDevice->link, 1);
    TellThatHomeIsSet(dialogDevice->link);
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
