#include "ui/table_setup/table_setup_layout.h"

#include "ui/common/dialog_text.h"

namespace k7 {
namespace {

// What only a machine with a Z motor uses.
constexpr int kMotorZControls[] = {
    // Depth of the table, speed and depth of the cutter.
    IDC_TS_TABLE_DEPTH_LABEL,
    IDC_TS_TABLE_DEPTH,
    IDC_TS_MAX_Z_SPEED_LABEL,
    IDC_TS_MAX_Z_SPEED,
    IDC_TS_MAX_ENGRAVE_DEPTH_LABEL,
    IDC_TS_MAX_ENGRAVE_DEPTH,
    // The axis.
    IDC_TS_Z_GROUP,
    IDC_TS_MOTOR_STEPS_Z_LABEL,
    IDC_TS_MICRO_STEPS_Z_LABEL,
    IDC_TS_SCREW_PITCH_Z_LABEL,
    IDC_TS_RESOLUTION_Z_LABEL,
    IDC_TS_MOTOR_STEPS_Z,
    IDC_TS_MICRO_STEPS_Z,
    IDC_TS_SCREW_PITCH_Z,
    IDC_TS_RESOLUTION_Z,
    IDC_TS_TABLE_HOME_Z,
    IDC_TS_LIMIT_SWITCH_Z,
    IDC_TS_PROX_SWITCH,
    IDC_TS_LAMP_Z,
    IDC_TS_LAMP_PROX,
    // The spindle.
    IDC_TS_SPINDLE_GROUP,
    IDC_TS_MOTOR_RPM_LABEL,
    IDC_TS_MOTOR_RPM,
    IDC_TS_SPINDLE_GEAR_RATIO_LABEL,
    IDC_TS_SPINDLE_GEAR_RATIO,
    IDC_TS_SPINDLE_RPM_LABEL,
    IDC_TS_SPINDLE_RPM,
    IDC_TS_RAMP_TIME_LABEL,
    IDC_TS_RAMP_TIME,
    IDC_TS_HAS_SPINDLE,
    // The bead insert tool.
    IDC_TS_BRAILLE_GROUP,
    IDC_TS_HAS_BEAD_TOOL,
    IDC_TS_SET_BEAD_OFFSET,
    IDC_TS_BEAD_X_LABEL,
    IDC_TS_BEAD_Y_LABEL,
    IDC_TS_BEAD_X,
    IDC_TS_BEAD_Y,
    // The diode pointer.
    IDC_TS_DIODE_GROUP,
    IDC_TS_HAS_DIODE,
    IDC_TS_SET_DIODE_OFFSET,
    IDC_TS_DIODE_X,
    IDC_TS_DIODE_Y,
    // The round fixture.
    IDC_TS_ROUND_GROUP,
    IDC_TS_ROUND_MOTOR_STEPS_LABEL,
    IDC_TS_ROUND_MICRO_STEPS_LABEL,
    IDC_TS_ROUND_MOTOR_STEPS,
    IDC_TS_ROUND_MICRO_STEPS,
    IDC_TS_ROUND_GEAR_RATIO_LABEL,
    IDC_TS_ROUND_GEAR_RATIO,
    IDC_TS_HAS_ROUND_FIXTURE,
    // The probe.
    IDC_TS_SEMI_AUTO_OFFSET_LABEL,
    IDC_TS_SEMI_AUTO_OFFSET,
};

}  // namespace

void ApplyAirZLayout(HWND dialog) noexcept {
  ShowControls(dialog, kMotorZControls, !IsChecked(dialog, IDC_TS_HAS_AIR_Z));
}

}  // namespace k7
