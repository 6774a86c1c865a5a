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
#include "settings/schema.h"
#include "ui/common/dialog_commands.h"
#include "ui/common/dialog_text.h"
#include "ui/resource_ids.h"

namespace k7 {
namespace {

constexpr int kFields[] = {IDC_TH_X, IDC_TH_Y, IDC_TH_Z};
constexpr int kButtons[] = {IDOK, IDCANCEL};
constexpr int kDecimals = 6;

// Asks the file and not the record: a change made in the table setup reaches the record only later.
bool FileHasAllSwitches(const SettingsFile& file) noexcept {
  return file.ReadNumber(settings::kLimitSwitchX) == 1 &&
         file.ReadNumber(settings::kLimitSwitchY) == 1 &&
         file.ReadNumber(settings::kLimitSwitchZ) == 1 &&
         file.ReadNumber(settings::kProxSwitch) == 1;
}

bool IsAirZ(const Tools& tools) noexcept {
  return tools.cutterMode == kCutterAirZ;
}

void OnInit(HWND dialog) noexcept {
  if (dialogDevice == nullptr) return;
  DeviceState& record = *dialogDevice;
  const SettingsFile file{record.link};
  constexpr auto kReader = settings::Reader::TableHomeDialog;
  SetDecimal(dialog, IDC_TH_X, file.ReadFloat(settings::kTableHomeX, kReader), kDecimals);
  SetDecimal(dialog, IDC_TH_Y, file.ReadFloat(settings::kTableHomeY, kReader), kDecimals);
  SetDecimal(dialog, IDC_TH_Z, file.ReadFloat(settings::kTableHomeZ, kReader), kDecimals);
  if (FileHasAllSwitches(file)) EnableControls(dialog, kFields, false);
  if (IsAirZ(record.tools)) {
    ShowControl(dialog, IDC_TH_Z_LABEL, false);
    ShowControl(dialog, IDC_TH_Z, false);
  }
  SetMotorPower(record.link, 0);
}

// KEEP: unchecking disables the fields on a machine without switches as well.
void OnLiteral(HWND dialog) noexcept {
  EnableControls(dialog, kFields, IsChecked(dialog, IDC_TH_LITERAL));
}

// The typed values go to the file in inches and to the record in steps.
void KeepHome(HWND dialog, DeviceState& record, const SettingsFile& file, bool airZ) noexcept {
  const float x = ReadDecimal(dialog, IDC_TH_X);
  const float y = ReadDecimal(dialog, IDC_TH_Y);
  file.WriteFloat(settings::kTableHomeX, x);
  file.WriteFloat(settings::kTableHomeY, y);
  record.position.tableHome.x = InchesToSteps(x, StepsPerInch(record.mechanics, Axis::X));
  record.position.tableHome.y = InchesToSteps(y, StepsPerInch(record.mechanics, Axis::Y));
  if (airZ) return;
  const float z = ReadDecimal(dialog, IDC_TH_Z);
  file.WriteFloat(settings::kTableHomeZ, z);
  file.WriteFloat(settings::kCutterHome, z);
  record.position.cutterHome = InchesToSteps(z, StepsPerInch(record.mechanics, Axis::Z));
}

void DeclarePosition(DeviceState& record, AxisTargets place, bool airZ) noexcept {
  if (airZ) place.z.reset();
  k7::DeclarePosition(record.link, record.position, place);
}

// The user has pushed the table to its home by hand, so where it stands is declared as the home.
// Then the machine drives to its zero.
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
  Pause(link, 200);
}

// Returns the result of the dialog.
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
    // KEEP: the controller is not told here that the home is set. Homing tells it; with air Z
    // nothing does.
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
