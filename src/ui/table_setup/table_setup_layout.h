// Groups of controls of the table setup dialog that are shown, hidden, enabled or disabled at once.
#pragma once

#include <windows.h>

#include "ui/resource_ids.h"

namespace k7 {

// Shown while the machine has a bead insert tool.
inline constexpr int kBeadToolControls[] = {
    IDC_TS_SET_BEAD_OFFSET, IDC_TS_BEAD_X_LABEL, IDC_TS_BEAD_Y_LABEL, IDC_TS_BEAD_X, IDC_TS_BEAD_Y,
};

// Shown while the machine has a diode pointer.
inline constexpr int kDiodeControls[] = {IDC_TS_SET_DIODE_OFFSET, IDC_TS_DIODE_X, IDC_TS_DIODE_Y};

// What "Edit Permanent Settings" unlocks; disabled in the template.
inline constexpr int kPermanentControls[] = {
    IDC_TS_FRIENDLY_NAME,
    IDC_TS_MOTOR_STEPS_X,
    IDC_TS_MOTOR_STEPS_Y,
    IDC_TS_MOTOR_STEPS_Z,
    IDC_TS_MICRO_STEPS_X,
    IDC_TS_MICRO_STEPS_Y,
    IDC_TS_MICRO_STEPS_Z,
    IDC_TS_SCREW_PITCH_X,
    IDC_TS_SCREW_PITCH_Y,
    IDC_TS_SCREW_PITCH_Z,
    IDC_TS_LIMIT_SWITCH_X,
    IDC_TS_LIMIT_SWITCH_Y,
    IDC_TS_LIMIT_SWITCH_Z,
    IDC_TS_PROX_SWITCH,
    IDC_TS_MOTOR_RPM,
    IDC_TS_SPINDLE_GEAR_RATIO,
    IDC_TS_RAMP_TIME,
    IDC_TS_MAX_XY_SPEED,
    IDC_TS_MAX_Z_SPEED,
    IDC_TS_MAX_ENGRAVE_DEPTH,
    IDC_TS_SEMI_AUTO_OFFSET,
    IDC_TS_TABLE_WIDTH,
    IDC_TS_TABLE_HEIGHT,
    IDC_TS_TABLE_DEPTH,
    IDC_TS_JOG_FAST,
    IDC_TS_JOG_SLOW,
    IDC_TS_SCISSORS,
    IDC_TS_HAS_SPINDLE,
    IDC_TS_HAS_BEAD_TOOL,
    IDC_TS_SET_BEAD_OFFSET,
    IDC_TS_BEAD_X,
    IDC_TS_BEAD_Y,
    IDC_TS_HAS_DIODE,
    IDC_TS_SET_DIODE_OFFSET,
    IDC_TS_ROUND_MOTOR_STEPS,
    IDC_TS_ROUND_MICRO_STEPS,
    IDC_TS_ROUND_GEAR_RATIO,
    IDC_TS_HAS_ROUND_FIXTURE,
    IDC_TS_HAS_AIR_Z,
};

// Hides what a machine with a pneumatic head has no use for while "Has Air Z" is checked, and shows
// it while the box is not checked. KEEP: showing does not look at the check boxes of the tools, so
// that buttons and offsets of absent tools appear.
// [host]
void ApplyAirZLayout(HWND dialog) noexcept;

}  // namespace k7
