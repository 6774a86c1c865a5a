// Every section and key of a settings file, by name. The spelling is shared with installed
// machines' files.
#pragma once

namespace k7::keys {

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

// Keys of "Settings".
inline constexpr wchar_t kFriendlyName[] = L"FriendlyName";
inline constexpr wchar_t kScissors[] = L"Scissors";
inline constexpr wchar_t kCameraId[] = L"CameraID";

// Keys of the axes.
inline constexpr wchar_t kMotorSteps[] = L"Motor Steps";
inline constexpr wchar_t kMicroSteps[] = L"Micro Steps";
inline constexpr wchar_t kScrewPitch[] = L"Screw Pitch";
inline constexpr wchar_t kLimitSwitch[] = L"Limit Switch";
inline constexpr wchar_t kTableHome[] = L"Table Home";
inline constexpr wchar_t kProxSwitch[] = L"Prox Switch";
inline constexpr wchar_t kCutterHome[] = L"Cutter Home";
inline constexpr wchar_t kTableSurface[] = L"Table Surface";
inline constexpr wchar_t kAirZ[] = L"Air Z";
inline constexpr wchar_t kTableBuffer[] = L"Table Buffer";
// KEEP: the table-zero dialog writes the first and reads the second.
inline constexpr wchar_t kTableZeroModeWritten[] = L"Table Zero Mode";
inline constexpr wchar_t kTableZeroModeRead[] = L"Zero Table Mode";

// Keys of "Axis Round".
inline constexpr wchar_t kCircumference[] = L"Circumference";
inline constexpr wchar_t kHasRoundAttachment[] = L"Has Round Attachment";
inline constexpr wchar_t kMode[] = L"Mode";
inline constexpr wchar_t kGearRatio[] = L"Gear Ratio";  // also of "Spindle"

// Keys of "Table Size".
inline constexpr wchar_t kWidth[] = L"Width";
inline constexpr wchar_t kHeight[] = L"Height";
inline constexpr wchar_t kDepth[] = L"Depth";

// Keys of "Jog Speed".
inline constexpr wchar_t kFast[] = L"Fast";
inline constexpr wchar_t kSlow[] = L"Slow";

// Keys of "Engrave Settings".
inline constexpr wchar_t kCutterLift[] = L"Cutter Lift";
inline constexpr wchar_t kEngraveDepth[] = L"Engrave Depth";  // also of "Maximum Values"
inline constexpr wchar_t kTraverseSpeed[] = L"Traverse Speed";
inline constexpr wchar_t kCutterDownSpeed[] = L"Cutter Down Speed";
inline constexpr wchar_t kCutterUpSpeed[] = L"Cutter Up Speed";
inline constexpr wchar_t kEngraveSpeed[] = L"Engrave Speed";
inline constexpr wchar_t kGridSpeed[] = L"Grid Speed";
inline constexpr wchar_t kEngraveDelay[] = L"Engrave Delay";
inline constexpr wchar_t kXAxisFactor[] = L"X Axis Factor";
inline constexpr wchar_t kYAxisFactor[] = L"Y Axis Factor";
inline constexpr wchar_t kResolution[] = L"Resolution";
inline constexpr wchar_t kEngraveType[] = L"Engrave Type";
inline constexpr wchar_t kCutterMode[] = L"Cutter Mode";
inline constexpr wchar_t kEngraveByColor[] = L"Engrave By Color";
inline constexpr wchar_t kDontLowerAirZ[] = L"Dont Lower Air Z";
inline constexpr wchar_t kMultiPass[] = L"Multi Pass";
inline constexpr wchar_t kMultiPassMode[] = L"Multi Pass Mode";
inline constexpr wchar_t kMultiPassCopies[] = L"Multi Pass Copies";
inline constexpr wchar_t kPassCopies[] = L"Pass Copies";
inline constexpr wchar_t kMaxPassDepth[] = L"Max Pass Depth";
inline constexpr wchar_t kFinishPassDepth[] = L"Finish Pass Depth";
inline constexpr wchar_t kLastCutterSet[] = L"Last Cutter Set";
inline constexpr wchar_t kMaterialProfile[] = L"Material Profile";

// Keys of "Maximum Values".
inline constexpr wchar_t kXySpeed[] = L"XY Speed";
inline constexpr wchar_t kZSpeed[] = L"Z Speed";

// Keys of "Prox".
inline constexpr wchar_t kSemiAutoOffset[] = L"Semi Auto Offset";

// Keys of "Spindle".
inline constexpr wchar_t kHasSpindle[] = L"Has Spindle";
inline constexpr wchar_t kMotorRpm[] = L"Motor RPM";
inline constexpr wchar_t kSpindleRpm[] = L"Spindle RPM";
inline constexpr wchar_t kRampTime[] = L"Ramp Time";

// Keys of "Braille" and "Diode".
inline constexpr wchar_t kBeadInsertTool[] = L"Bead Insert Tool";
inline constexpr wchar_t kBeadInsertToolX[] = L"Bead Insert Tool X Offset";
inline constexpr wchar_t kBeadInsertToolY[] = L"Bead Insert Tool Y Offset";
inline constexpr wchar_t kDiodePointer[] = L"Diode Pointer";
inline constexpr wchar_t kDiodePointerX[] = L"Diode Pointer X Offset";
inline constexpr wchar_t kDiodePointerY[] = L"Diode Pointer Y Offset";

// Keys of "Current Location", in machine steps.
inline constexpr wchar_t kXAxis[] = L"X Axis";
inline constexpr wchar_t kYAxis[] = L"Y Axis";
inline constexpr wchar_t kRAxis[] = L"R Axis";
inline constexpr wchar_t kZAxis[] = L"Z Axis";

}  // namespace k7::keys
