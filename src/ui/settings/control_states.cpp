#include "ui/settings/control_states.h"

#include "ui/common/dialog_state.h"
#include "ui/common/dialog_text.h"
#include "ui/resource_ids.h"
#include "ui/settings/engrave_lists.h"

namespace k7 {
namespace {

// What the user changes. KEEP: grid speed, round fixture and circumference are not among them.
constexpr int kEditable[] = {
    IDC_CS_CUTTER_LIFT,     IDC_CS_ENGRAVE_DEPTH,
    IDC_CS_TRAVERSE_SPEED,  IDC_CS_CUTTER_DOWN_SPEED,
    IDC_CS_CUTTER_UP_SPEED, IDC_CS_ENGRAVE_SPEED,
    IDC_CS_RESOLUTION,      IDC_CS_APPLY,
    IDC_CS_TABLE_SETUP,     IDC_CS_CUTTER_MODE,
    IDC_CS_ENGRAVE_TYPE,    IDC_CS_IMPORT_NOTICE,
    IDC_CS_SPINDLE_RPM,     IDC_CS_ENGRAVE_BY_COLOR,
    IDC_CS_COLOR_SETTINGS,  IDC_CS_ENGRAVE_DELAY,
    IDC_CS_SET_CUTTER,      IDC_CS_SAVE_MATERIAL,
    IDC_CS_MATERIAL,        IDC_CS_PASS_DEPTH_OR_COPIES,
    IDC_CS_FINISH_DEPTH,    IDC_CS_MULTI_PASS,
    IDC_CS_MULTI_PASS_MODE,
};

// Hidden on a machine with a pneumatic head, which is either up or down.
constexpr int kCutterControls[] = {
    IDC_CS_ENGRAVE_TYPE_LABEL,    IDC_CS_ENGRAVE_TYPE,
    IDC_CS_CUTTER_LIFT_LABEL,     IDC_CS_CUTTER_LIFT,
    IDC_CS_CUTTER_UP_SPEED_LABEL, IDC_CS_CUTTER_UP_SPEED,
    IDC_CS_MAX_CUTTER_UP_SPEED,   IDC_CS_CUTTER_DOWN_SPEED_LABEL,
    IDC_CS_CUTTER_DOWN_SPEED,     IDC_CS_MAX_CUTTER_DOWN_SPEED,
    IDC_CS_ENGRAVE_DEPTH_LABEL,   IDC_CS_ENGRAVE_DEPTH,
    IDC_CS_MAX_ENGRAVE_DEPTH,     IDC_CS_TABLE_BUFFER_LABEL,
    IDC_CS_TABLE_BUFFER,          IDC_CS_SET_CUTTER,
    IDC_CS_SPINDLE_RPM_LABEL,     IDC_CS_SPINDLE_RPM,
    IDC_CS_MAX_Z_HEADING,         IDC_CS_LAST_CUTTER,
    IDC_CS_SET_TABLE_ZERO,
};

void ApplyKindOfZ(HWND dialog, const SettingsFile& file) noexcept {
  const bool airZ = HasAirZ(file);
  // KEEP: enabled on a machine with a Z motor even while the controller is busy.
  EnableControl(dialog, IDC_CS_CUTTER_MODE, !airZ);
  EnableControl(dialog, IDC_CS_MULTI_PASS_MODE, !airZ);
  if (airZ) {
    Select(dialog, IDC_CS_MULTI_PASS_MODE, 1);
    dialogState.passCopies = ReadPassCopies(file);
    ShowPassCopies(dialog);
    ShowFinishDepth(dialog, false);
  }
  // KEEP: with a Z motor this shows "Set Cutter..." and the spindle speed on every machine.
  ShowControls(dialog, kCutterControls, !airZ);
  ShowControl(dialog, IDC_CS_DONT_LOWER_Z, airZ);
}

}  // namespace

void UpdateControlStates(HWND dialog, const wchar_t* path) noexcept {
  const bool idle = dialogState.busy == 0;
  EnableControls(dialog, kEditable, idle && dialogState.allowRun == 1);
  EnableControl(dialog, IDC_CS_APPLY, true);

  const bool mayRun = dialogState.allowRun != 0;
  const bool readyToRun = dialogState.mode == 1 && idle;
  EnableControl(dialog, IDOK, mayRun && readyToRun);
  EnableControl(dialog, IDC_CS_TABLE_SETUP, mayRun && idle);

  const bool automatic = readyToRun && dialogState.HasAllSwitches();
  EnableControl(dialog, IDC_CS_MECHANICAL_HOME, automatic);
  ShowControl(dialog, IDC_CS_SET_CUTTER, automatic);

  if (path != nullptr) ApplyKindOfZ(dialog, SettingsFile{path});
}

}  // namespace k7
