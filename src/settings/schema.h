// Every key of a settings file, one row each: section, key, unit, default, what a technician would
// accept, what it means, the field that a load fills with it, and what single readers take for a
// missing key instead of the default. The texts are shared with the files of installed machines:
// every wide text in this file is a section or a key, and stands nowhere else.
#pragma once

#include "device/device_state.h"
#include "settings/row.h"

namespace k7::settings {

// Sections.
inline constexpr wchar_t kSettings[] = L"Settings";
inline constexpr wchar_t kAxisX[] = L"Axis X";
inline constexpr wchar_t kAxisY[] = L"Axis Y";
inline constexpr wchar_t kAxisZ[] = L"Axis Z";
inline constexpr wchar_t kAxisRound[] = L"Axis Round";
inline constexpr wchar_t kTableSize[] = L"Table Size";
inline constexpr wchar_t kJogSpeed[] = L"Jog Speed";
inline constexpr wchar_t kEngraveSettings[] = L"Engrave Settings";
inline constexpr wchar_t kMaximumValues[] = L"Maximum Values";
inline constexpr wchar_t kProx[] = L"Prox";
inline constexpr wchar_t kSpindle[] = L"Spindle";
inline constexpr wchar_t kBraille[] = L"Braille";
inline constexpr wchar_t kDiode[] = L"Diode";
inline constexpr wchar_t kCurrentLocation[] = L"Current Location";

// Units, as shown to people.
inline constexpr char kInches[] = "in";
inline constexpr char kInchesPerSecond[] = "in/s";
inline constexpr char kThousandths[] = "thousandths of an inch";
inline constexpr char kThousandthsPerSecond[] = "thousandths of an inch a second";
inline constexpr char kSeconds[] = "s";
inline constexpr char kRpm[] = "rpm";
inline constexpr char kSteps[] = "steps";
inline constexpr char kNoUnit[] = "";

inline constexpr Range kYesOrNo{0, 1};
inline constexpr Range kTableInches{0, 100};    // along the table
inline constexpr Range kDepthInches{0, 10};     // along Z
inline constexpr Range kSpeedRange{0.001, 60};  // in/s
inline constexpr Range kOffsetThousandths{-100000, 100000};
inline constexpr Range kAnySteps{-2147483648.0, 2147483647.0};

// ---------------------------------------------------------------------------------- Settings
inline constexpr auto kFriendlyName =
    TextRow(kSettings, L"FriendlyName", kNoUnit, kDefaultFriendlyName, kNameCapacity - 1)
        .Means("Name of the machine, as it is shown to the user.");
inline constexpr auto kScissors = FloatRow(kSettings, L"Scissors", kNoUnit, 1.0, {0, 1000})
                                      .Means("A number that is handed to the host as it is.")
                                      .Fills<&DeviceState::host, &HostValues::scissors>();
inline constexpr auto kCameraId =
    TextRow(kSettings, L"CameraID", kNoUnit, L"", 2047)
        .Means("Identity of a camera, kept for the host and handed to it.");

// ------------------------------------------------------------------------ Axis X, Axis Y, Axis Z
constexpr IntRow MotorSteps(const wchar_t* section) noexcept {
  return IntRow(section, L"Motor Steps", "steps a turn", 200, {1, 10000})
      .Means("Full steps of the motor in one turn.");
}
constexpr IntRow MicroSteps(const wchar_t* section) noexcept {
  return IntRow(section, L"Micro Steps", "micro-steps a step", 10, {1, 256})
      .Means("Micro-steps into which a full step of the motor is divided.");
}

// Those of a linear axis, and what it has beside them.
using LinearAxes = PerAxis<AxisMechanics>;
template <auto kAxis>
constexpr IntRow LinearMotorSteps(const wchar_t* section) noexcept {
  return MotorSteps(section)
      .Fills<&DeviceState::mechanics, &Mechanics::axis, kAxis, &AxisMechanics::motorSteps>();
}
template <auto kAxis>
constexpr IntRow LinearMicroSteps(const wchar_t* section) noexcept {
  return MicroSteps(section)
      .Fills<&DeviceState::mechanics, &Mechanics::axis, kAxis, &AxisMechanics::microSteps>();
}
template <auto kAxis>
constexpr FloatRow ScrewPitch(const wchar_t* section) noexcept {
  return FloatRow(section, L"Screw Pitch", "in a turn", 0.5, {0.001, 10})
      .Means("How far one turn of the screw moves the axis.")
      .Fills<&DeviceState::mechanics, &Mechanics::axis, kAxis, &AxisMechanics::screwPitch>();
}
template <auto kAxis>
constexpr FlagRow LimitSwitch(const wchar_t* section) noexcept {
  return FlagRow(section, L"Limit Switch", kNoUnit, 0, kYesOrNo)
      .Means("Whether a limit switch is fitted.")
      .Fills<&DeviceState::mechanics, &Mechanics::axis, kAxis, &AxisMechanics::limitSwitch>();
}
constexpr FloatRow TableHome(const wchar_t* section, Range range) noexcept {
  return FloatRow(section, L"Table Home", kInches, 0.0, range);
}

inline constexpr auto kMotorStepsX = LinearMotorSteps<&LinearAxes::x>(kAxisX);
inline constexpr auto kMicroStepsX = LinearMicroSteps<&LinearAxes::x>(kAxisX);
inline constexpr auto kScrewPitchX = ScrewPitch<&LinearAxes::x>(kAxisX);
inline constexpr auto kLimitSwitchX = LimitSwitch<&LinearAxes::x>(kAxisX);
inline constexpr auto kTableHomeX =
    TableHome(kAxisX, kTableInches).Means("Distance of the host's origin from the switch.");

inline constexpr auto kMotorStepsY = LinearMotorSteps<&LinearAxes::y>(kAxisY);
inline constexpr auto kMicroStepsY = LinearMicroSteps<&LinearAxes::y>(kAxisY);
inline constexpr auto kScrewPitchY = ScrewPitch<&LinearAxes::y>(kAxisY);
inline constexpr auto kLimitSwitchY = LimitSwitch<&LinearAxes::y>(kAxisY);
inline constexpr auto kTableHomeY =
    TableHome(kAxisY, kTableInches).Means("Distance of the host's origin from the switch.");

inline constexpr auto kMotorStepsZ = LinearMotorSteps<&LinearAxes::z>(kAxisZ);
inline constexpr auto kMicroStepsZ = LinearMicroSteps<&LinearAxes::z>(kAxisZ);
inline constexpr auto kScrewPitchZ = ScrewPitch<&LinearAxes::z>(kAxisZ);
inline constexpr auto kLimitSwitchZ = LimitSwitch<&LinearAxes::z>(kAxisZ);

// KEEP: where the key is missing the table home dialog offers 1.75, at which machines without
// switches have been set up, while the table setup dialog shows 0.
inline constexpr auto kTableHomeZ =
    TableHome(kAxisZ, kDepthInches)
        .Means("Z of the table home, for the dialogs alone: the driver goes by Cutter Home.")
        .ButFor(Reader::TableHomeDialog, 1.75);
inline constexpr auto kProxSwitch = FlagRow(kAxisZ, L"Prox Switch", kNoUnit, 0, kYesOrNo)
                                        .Means("Whether a proximity switch is fitted.")
                                        .Fills<&DeviceState::mechanics, &Mechanics::proxSwitch>();
inline constexpr auto kCutterHome = FloatRow(kAxisZ, L"Cutter Home", kInches, 0.0, kDepthInches)
                                        .Means("Z at which the cutter touches the work.");
inline constexpr auto kTableSurface =
    IntRow(kAxisZ, L"Table Surface", kSteps, kNoDefault, {0, 100000000})
        .Means("Deepest Z that a plunge may reach; 0 stands for the cutter home.")
        .ButFor(Reader::Load, "the table's Depth, in steps");
// KEEP: a load of a file without this key takes the number read for Cutter Mode: installed files
// name an air head by Cutter Mode 1 alone. Dialogs, which show the key, take 0.
inline constexpr auto kAirZ =
    FlagRow(kAxisZ, L"Air Z", kNoUnit, 0, kYesOrNo)
        .Means("1, and no other number: a pneumatic head in place of the Z axis.")
        .ButFor(Reader::Load, "Cutter Mode");
inline constexpr auto kTableBuffer = FloatRow(kAxisZ, L"Table Buffer", kInches, 0.0, kDepthInches)
                                         .Means("Distance kept above the surface that was found.");
// KEEP: the table zero dialog writes this key and reads the next one, so that it offers what the
// next one holds and never the mode chosen last; installed files hold both.
inline constexpr auto kTableZeroMode =
    IntRow(kAxisZ, L"Table Zero Mode", kNoUnit, kNoDefault, {0, 2})
        .Means("Method chosen last in the table zero dialog: 0 table depth, 1 current Z, 2 probe.");
inline constexpr auto kZeroTableMode =
    IntRow(kAxisZ, L"Zero Table Mode", kNoUnit, 0, {0, 2})
        .Means("Method that the table zero dialog offers; nothing writes it.");

// ------------------------------------------------------------------------------- Axis Round
inline constexpr auto kRoundMotorSteps =
    MotorSteps(kAxisRound).Fills<&DeviceState::mechanics, &Mechanics::motorStepsRound>();
inline constexpr auto kRoundMicroSteps =
    MicroSteps(kAxisRound).Fills<&DeviceState::mechanics, &Mechanics::microStepsRound>();
inline constexpr auto kCircumference =
    TextRow(kAxisRound, L"Circumference", kInches, L"", 2047)
        .Means("Circumference of the work on the fixture; with a D in the text, its diameter.");
inline constexpr auto kHasRoundAttachment =
    FlagRow(kAxisRound, L"Has Round Attachment", kNoUnit, 0, kYesOrNo)
        .Means("Whether a round fixture is fitted.");
// KEEP: a load of a file without this key takes the length of the text of Circumference, so that a
// file with a circumference of one or two characters and no mode has its fixture switched on, and
// installed files rely on that. The settings dialog takes 0.
inline constexpr auto kRoundMode =
    IntRow(kAxisRound, L"Mode", kNoUnit, 0, {0, 2})
        .Means("The axis that the round fixture replaces: 0 none, 1 X, 2 Y.")
        .ButFor(Reader::Load, "length of the text of Circumference");
inline constexpr auto kRoundGearRatio =
    FloatRow(kAxisRound, L"Gear Ratio", kNoUnit, 20.0, {0.001, 1000})
        .Means("Turns of the motor in one turn of the work.")
        .Fills<&DeviceState::mechanics, &Mechanics::roundGearRatio>();

// ------------------------------------------------------------------------------- Table Size
inline constexpr auto kTableWidth = IntRow(kTableSize, L"Width", kThousandths, 25000, {1, 100000})
                                        .Means("Length of the table along X.")
                                        .Fills<&DeviceState::mechanics, &Mechanics::tableWidth>();
inline constexpr auto kTableHeight = IntRow(kTableSize, L"Height", kThousandths, 16000, {1, 100000})
                                         .Means("Length of the table along Y.")
                                         .Fills<&DeviceState::mechanics, &Mechanics::tableHeight>();
inline constexpr auto kTableDepth = IntRow(kTableSize, L"Depth", kThousandths, 2000, {1, 10000})
                                        .Means("Length of the way along Z.")
                                        .Fills<&DeviceState::mechanics, &Mechanics::tableDepth>();

// -------------------------------------------------------------------------------- Jog Speed
inline constexpr auto kJogFastSpeed =
    IntRow(kJogSpeed, L"Fast", kThousandthsPerSecond, 5000, {1, 60000})
        .Means("Speed of a fast jog.")
        .Fills<&DeviceState::jog, &JogState::jogFast>();
inline constexpr auto kJogSlowSpeed =
    IntRow(kJogSpeed, L"Slow", kThousandthsPerSecond, 250, {1, 60000})
        .Means("Speed of a slow jog.")
        .Fills<&DeviceState::jog, &JogState::jogSlow>();

// -------------------------------------------------------------------------- Engrave Settings
inline constexpr auto kCutterLift =
    FloatRow(kEngraveSettings, L"Cutter Lift", kInches, 0.125, {0.1, 10})
        .Means("How high the cutter stands between strokes; a load takes at least 0.001.")
        .Fills<&DeviceState::tools, &Tools::cutterLift>();
inline constexpr auto kEngraveDepth =
    FloatRow(kEngraveSettings, L"Engrave Depth", kInches, 0.0625, kDepthInches)
        .Means("How deep a stroke goes; in the automatic mode the pressure of the spring.")
        .Fills<&DeviceState::tools, &Tools::engraveDepth>();
inline constexpr auto kTraverseSpeed =
    FloatRow(kEngraveSettings, L"Traverse Speed", kInchesPerSecond, 1.0, kSpeedRange)
        .Means("Speed along the table with the cutter up.")
        .Fills<&DeviceState::tools, &Tools::traverseSpeed>();
inline constexpr auto kCutterDownSpeed =
    FloatRow(kEngraveSettings, L"Cutter Down Speed", kInchesPerSecond, 1.0, kSpeedRange)
        .Means("Speed of the Z axis when the cutter is lowered.")
        .Fills<&DeviceState::tools, &Tools::cutterDownSpeed>();
inline constexpr auto kCutterUpSpeed =
    FloatRow(kEngraveSettings, L"Cutter Up Speed", kInchesPerSecond, 1.0, kSpeedRange)
        .Means("Speed of the Z axis when the cutter is lifted.")
        .Fills<&DeviceState::tools, &Tools::cutterUpSpeed>();
inline constexpr auto kEngraveSpeed =
    FloatRow(kEngraveSettings, L"Engrave Speed", kInchesPerSecond, 1.0, kSpeedRange)
        .Means("Speed along the table with the cutter in the work.")
        .Fills<&DeviceState::tools, &Tools::engraveSpeed>();
inline constexpr auto kGridSpeed =
    FloatRow(kEngraveSettings, L"Grid Speed", kInchesPerSecond, 1.0, kSpeedRange)
        .Means("Speed along the table with the cutter in the work while the host runs a grid.")
        .Fills<&DeviceState::tools, &Tools::gridSpeed>();
inline constexpr auto kEngraveDelay =
    FloatRow(kEngraveSettings, L"Engrave Delay", kSeconds, 0.0, {0, 60})
        .Means("Pause after each plunge, cut to whole milliseconds.");
inline constexpr auto kXAxisFactor =
    IntRow(kEngraveSettings, L"X Axis Factor", kSteps, 1, {1, 10000})
        .Means("Machine steps in one step of the host along X.")
        .Fills<&DeviceState::mechanics, &Mechanics::xAxisFactor>();
inline constexpr auto kYAxisFactor =
    IntRow(kEngraveSettings, L"Y Axis Factor", kSteps, 1, {1, 10000})
        .Means("Machine steps in one step of the host along Y.")
        .Fills<&DeviceState::mechanics, &Mechanics::yAxisFactor>();
inline constexpr auto kResolution =
    FloatRow(kEngraveSettings, L"Resolution", "steps an inch", kNoDefault, {1, 10000000})
        .Means("Resolution chosen last in the settings dialog.");
// KEEP: a load of a file without this key takes the number of Table Surface, and Cutter Mode and
// Air Z follow in turn: installed files that lack the later keys rely on it. Dialogs take 0.
inline constexpr auto kEngraveType =
    IntRow(kEngraveSettings, L"Engrave Type", kNoUnit, 0, {0, 1})
        .Means("0 drags the cutter; 1 routes: the spindle runs while the cutter is down.")
        .ButFor(Reader::Load, "Table Surface as it stands in the file");
// KEEP: a load of a file without this key takes the number read for Engrave Type, a link of the
// same chain. Dialogs take 0.
inline constexpr auto kCutterMode =
    IntRow(kEngraveSettings, L"Cutter Mode", kNoUnit, 0, {0, 4})
        .Means("How the cutter is set: 0 not, 1 by hand, 2 automatic, 3 semi-automatic, 4 air.")
        .ButFor(Reader::Load, "Engrave Type");
inline constexpr auto kEngraveByColor =
    FlagRow(kEngraveSettings, L"Engrave By Color", kNoUnit, 0, kYesOrNo)
        .Means("Whether the host engraves one colour after the other.")
        .Fills<&DeviceState::host, &HostValues::engraveByColor>();
inline constexpr auto kDontLowerAirZ =
    FlagRow(kEngraveSettings, L"Dont Lower Air Z", kNoUnit, 0, kYesOrNo)
        .Means("Whether an air head stays up while it engraves.")
        .Fills<&DeviceState::tools, &Tools::dontLowerAirZ>();
inline constexpr auto kMultiPass = FlagRow(kEngraveSettings, L"Multi Pass", kNoUnit, 0, kYesOrNo)
                                       .Means("Whether the drawing is engraved in several passes.");
inline constexpr auto kMultiPassMode =
    IntRow(kEngraveSettings, L"Multi Pass Mode", kNoUnit, 0, {0, 1})
        .Means("0 passes that go deeper step by step, 1 copies at the full depth.");
inline constexpr auto kMultiPassCopies =
    IntRow(kEngraveSettings, L"Multi Pass Copies", "passes", 2, {2, 1000})
        .Means("Number of copies.");
inline constexpr auto kPassCopies =
    IntRow(kEngraveSettings, L"Pass Copies", "passes", kNoDefault, {1, 1})
        .Means("1 once the multi-pass fields were saved empty.");
inline constexpr auto kMaxPassDepth =
    FloatRow(kEngraveSettings, L"Max Pass Depth", kInches, 0.0, kDepthInches)
        .Means("How much deeper each pass may go than the one before; 0 makes it a single pass.");
inline constexpr auto kFinishPassDepth =
    FloatRow(kEngraveSettings, L"Finish Pass Depth", kInches, 0.0, kDepthInches)
        .Means("What is left for a last, fine pass; 0 for none.");
inline constexpr auto kLastCutterSet =
    FloatRow(kEngraveSettings, L"Last Cutter Set", kInches, 0.0, kDepthInches)
        .Means("Depth to which a cutter was set last.");
inline constexpr auto kMaterialProfile =
    TextRow(kEngraveSettings, L"Material Profile", kNoUnit, L"", 251)
        .Means("Name of the material profile in use.");

// --------------------------------------------------------------------------- Maximum Values
inline constexpr auto kMaxXySpeed =
    FloatRow(kMaximumValues, L"XY Speed", kInchesPerSecond, 10.0, kSpeedRange)
        .Means("What the settings dialog accepts as a speed along the table.");
inline constexpr auto kMaxZSpeed =
    FloatRow(kMaximumValues, L"Z Speed", kInchesPerSecond, 10.0, kSpeedRange)
        .Means("What the settings dialog accepts as a speed of the Z axis.");
inline constexpr auto kMaxEngraveDepth =
    FloatRow(kMaximumValues, L"Engrave Depth", kInches, 1.0, {0.001, 10})
        .Means("What the settings dialog accepts as an engrave depth.");

// ------------------------------------------------------------------------------------- Prox
// KEEP: the table setup dialog shows a missing offset as 0, and its OK writes that 0, so that a
// machine set up by the dialog alone probes without an offset.
inline constexpr auto kSemiAutoOffset =
    FloatRow(kProx, L"Semi Auto Offset", kInches, 0.5, kDepthInches)
        .Means("What is taken off a surface found by a probe.")
        .ButFor(Reader::TableSetupDialog, 0.0);

// ---------------------------------------------------------------------------------- Spindle
inline constexpr auto kMotorRpm = IntRow(kSpindle, L"Motor RPM", kRpm, 4000, {1, 100000})
                                      .Means("Full speed of the spindle's motor.");
inline constexpr auto kSpindleGearRatio =
    FloatRow(kSpindle, L"Gear Ratio", kNoUnit, 3.25, {0.01, 100})
        .Means("Turns of the spindle in one turn of its motor.");
inline constexpr auto kRampTime = IntRow(kSpindle, L"Ramp Time", kSeconds, 30, {1, 600})
                                      .Means("Time of a ramp from stop to full speed.");
inline constexpr auto kHasSpindle =
    FlagRow(kSpindle, L"Has Spindle", kNoUnit, 0, kYesOrNo)
        .Means("Whether a spindle is fitted.")
        .Fills<&DeviceState::spindle, &SpindleState::spindlePresent>();
// KEEP: a load of a file without this key takes the whole number that stands in the file for Semi
// Auto Offset, the bits of a float. It is far above any maximum, so that a spindle without a chosen
// speed runs at its full speed, as installed machines do. The settings dialog takes the maximum.
inline constexpr auto kSpindleRpm =
    IntRow(kSpindle, L"Spindle RPM", kRpm, kNoDefault, {1, 1000000})
        .Means("Chosen speed of the spindle, at most Motor RPM times Gear Ratio.")
        .ButFor(Reader::Load, "Semi Auto Offset as it stands in the file")
        .ButFor(Reader::SettingsDialog, "Motor RPM times Gear Ratio");

// ---------------------------------------------------------------------------------- Braille
inline constexpr auto kBeadInsertTool = FlagRow(kBraille, L"Bead Insert Tool", kNoUnit, 0, kYesOrNo)
                                            .Means("Whether a bead insert tool is fitted.")
                                            .Fills<&DeviceState::tools, &Tools::beadInsertTool>();
inline constexpr auto kBeadToolOffsetX =
    IntRow(kBraille, L"Bead Insert Tool X Offset", kThousandths, 0, kOffsetThousandths)
        .Means("Distance of the tool from the cutter along X.")
        .Fills<&DeviceState::tools, &Tools::beadToolOffsetX>();
// KEEP: a load of a file without this key takes the X offset; the table setup dialog shows 0.
inline constexpr auto kBeadToolOffsetY =
    IntRow(kBraille, L"Bead Insert Tool Y Offset", kThousandths, 0, kOffsetThousandths)
        .Means("Distance of the tool from the cutter along Y.")
        .Fills<&DeviceState::tools, &Tools::beadToolOffsetY>()
        .ButFor(Reader::Load, "Bead Insert Tool X Offset");

// ------------------------------------------------------------------------------------ Diode
inline constexpr auto kDiodePointer = FlagRow(kDiode, L"Diode Pointer", kNoUnit, 0, kYesOrNo)
                                          .Means("Whether a diode pointer is fitted.")
                                          .Fills<&DeviceState::tools, &Tools::diodePointer>();
inline constexpr auto kDiodeOffsetX =
    IntRow(kDiode, L"Diode Pointer X Offset", kThousandths, 0, kOffsetThousandths)
        .Means("Distance of the pointer from the cutter along X.")
        .Fills<&DeviceState::tools, &Tools::diodeOffsetX>();
// KEEP: a load of a file without this key takes the X offset; the table setup dialog shows 0.
inline constexpr auto kDiodeOffsetY =
    IntRow(kDiode, L"Diode Pointer Y Offset", kThousandths, 0, kOffsetThousandths)
        .Means("Distance of the pointer from the cutter along Y.")
        .Fills<&DeviceState::tools, &Tools::diodeOffsetY>()
        .ButFor(Reader::Load, "Diode Pointer X Offset");

// ------------------------------------------------------------------------- Current Location
inline constexpr auto kLocationX = IntRow(kCurrentLocation, L"X Axis", kSteps, 0, kAnySteps)
                                       .Means("Where X stood when it was saved last.");
inline constexpr auto kLocationY = IntRow(kCurrentLocation, L"Y Axis", kSteps, 0, kAnySteps)
                                       .Means("Where Y stood when it was saved last.");
inline constexpr auto kLocationRound =
    IntRow(kCurrentLocation, L"R Axis", kSteps, 0, kAnySteps)
        .Means("Where the round fixture stood when it was saved last.");
inline constexpr auto kLocationZ =
    IntRow(kCurrentLocation, L"Z Axis", kSteps, kNoDefault, kAnySteps)
        .Means("Where Z stood after the last jog.");

// All rows, in the order of this file.
inline constexpr const Row* kRows[] = {
    &kFriendlyName,       &kScissors,
    &kCameraId,           &kMotorStepsX,
    &kMicroStepsX,        &kScrewPitchX,
    &kLimitSwitchX,       &kTableHomeX,
    &kMotorStepsY,        &kMicroStepsY,
    &kScrewPitchY,        &kLimitSwitchY,
    &kTableHomeY,         &kMotorStepsZ,
    &kMicroStepsZ,        &kScrewPitchZ,
    &kLimitSwitchZ,       &kTableHomeZ,
    &kProxSwitch,         &kCutterHome,
    &kTableSurface,       &kAirZ,
    &kTableBuffer,        &kTableZeroMode,
    &kZeroTableMode,      &kRoundMotorSteps,
    &kRoundMicroSteps,    &kCircumference,
    &kHasRoundAttachment, &kRoundMode,
    &kRoundGearRatio,     &kTableWidth,
    &kTableHeight,        &kTableDepth,
    &kJogFastSpeed,       &kJogSlowSpeed,
    &kCutterLift,         &kEngraveDepth,
    &kTraverseSpeed,      &kCutterDownSpeed,
    &kCutterUpSpeed,      &kEngraveSpeed,
    &kGridSpeed,          &kEngraveDelay,
    &kXAxisFactor,        &kYAxisFactor,
    &kResolution,         &kEngraveType,
    &kCutterMode,         &kEngraveByColor,
    &kDontLowerAirZ,      &kMultiPass,
    &kMultiPassMode,      &kMultiPassCopies,
    &kPassCopies,         &kMaxPassDepth,
    &kFinishPassDepth,    &kLastCutterSet,
    &kMaterialProfile,    &kMaxXySpeed,
    &kMaxZSpeed,          &kMaxEngraveDepth,
    &kSemiAutoOffset,     &kMotorRpm,
    &kSpindleGearRatio,   &kRampTime,
    &kHasSpindle,         &kSpindleRpm,
    &kBeadInsertTool,     &kBeadToolOffsetX,
    &kBeadToolOffsetY,    &kDiodePointer,
    &kDiodeOffsetX,       &kDiodeOffsetY,
    &kLocationX,          &kLocationY,
    &kLocationRound,      &kLocationZ,
};

}  // namespace k7::settings
