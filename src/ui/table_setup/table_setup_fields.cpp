#include "ui/table_setup/table_setup_fields.h"

#include "base/arithmetic.h"
#include "settings/schema.h"
#include "ui/common/dialog_state.h"
#include "ui/common/dialog_text.h"
#include "ui/resource_ids.h"

namespace k7 {

using namespace settings;  // the rows, all over this file

namespace {

enum class FieldKind {
  Text,         // as typed
  Whole,        // whole number; written as typed
  Decimal,      // single-precision number
  Thousandths,  // thousandths of an inch; typed in inches
  Check,        // check box
};

struct Field {
  int control;
  const Row& row;
  FieldKind kind;
  int decimals = 0;
  void (*remember)(bool set) noexcept = nullptr;  // the dialogs' flag for a check box
  int onlyWith = 0;                               // saved only while this box is checked
};

// The kinds of field, each over rows of its encoding.
constexpr Field Text(int control, const TextRow& row) noexcept {
  return {control, row, FieldKind::Text};
}
constexpr Field Whole(int control, const IntRow& row) noexcept {
  return {control, row, FieldKind::Whole};
}
constexpr Field Decimal(int control, const FloatRow& row) noexcept {
  return {control, row, FieldKind::Decimal, 4};
}
constexpr Field Thousandths(int control, const IntRow& row, int onlyWith = 0) noexcept {
  return {control, row, FieldKind::Thousandths, 3, nullptr, onlyWith};
}
constexpr Field Check(int control, const FlagRow& row,
                      void (*remember)(bool set) noexcept = nullptr) noexcept {
  return {control, row, FieldKind::Check, 0, remember};
}

void RememberLimitX(bool set) noexcept {
  dialogState.xLimitSwitch = set ? 1 : 0;
}
void RememberLimitY(bool set) noexcept {
  dialogState.yLimitSwitch = set ? 1 : 0;
}
void RememberLimitZ(bool set) noexcept {
  dialogState.zLimitSwitch = set ? 1 : 0;
}
void RememberProx(bool set) noexcept {
  dialogState.zProxSwitch = set ? 1 : 0;
}
void RememberSpindle(bool set) noexcept {
  hasSpindle = set ? 1 : 0;
}
void RememberRoundFixture(bool set) noexcept {
  hasRoundAttachment = set ? 1 : 0;
}

// In the order in which they are saved.
constexpr Field kFields[] = {
    Text(IDC_TS_FRIENDLY_NAME, kFriendlyName),

    Whole(IDC_TS_MOTOR_STEPS_X, kMotorStepsX),
    Whole(IDC_TS_MICRO_STEPS_X, kMicroStepsX),
    Decimal(IDC_TS_SCREW_PITCH_X, kScrewPitchX),
    Check(IDC_TS_LIMIT_SWITCH_X, kLimitSwitchX, &RememberLimitX),

    Whole(IDC_TS_MOTOR_STEPS_Y, kMotorStepsY),
    Whole(IDC_TS_MICRO_STEPS_Y, kMicroStepsY),
    Decimal(IDC_TS_SCREW_PITCH_Y, kScrewPitchY),
    Check(IDC_TS_LIMIT_SWITCH_Y, kLimitSwitchY, &RememberLimitY),

    Whole(IDC_TS_MOTOR_STEPS_Z, kMotorStepsZ),
    Whole(IDC_TS_MICRO_STEPS_Z, kMicroStepsZ),
    Decimal(IDC_TS_SCREW_PITCH_Z, kScrewPitchZ),
    Check(IDC_TS_LIMIT_SWITCH_Z, kLimitSwitchZ, &RememberLimitZ),
    Check(IDC_TS_PROX_SWITCH, kProxSwitch, &RememberProx),

    Whole(IDC_TS_MOTOR_RPM, kMotorRpm),
    Decimal(IDC_TS_SPINDLE_GEAR_RATIO, kSpindleGearRatio),
    Whole(IDC_TS_RAMP_TIME, kRampTime),
    Check(IDC_TS_HAS_SPINDLE, kHasSpindle, &RememberSpindle),

    Decimal(IDC_TS_MAX_XY_SPEED, kMaxXySpeed),
    Decimal(IDC_TS_MAX_Z_SPEED, kMaxZSpeed),
    Decimal(IDC_TS_MAX_ENGRAVE_DEPTH, kMaxEngraveDepth),
    Decimal(IDC_TS_SEMI_AUTO_OFFSET, kSemiAutoOffset),
    Thousandths(IDC_TS_TABLE_WIDTH, kTableWidth),
    Thousandths(IDC_TS_TABLE_HEIGHT, kTableHeight),
    Thousandths(IDC_TS_TABLE_DEPTH, kTableDepth),
    Thousandths(IDC_TS_JOG_FAST, kJogFastSpeed),
    Thousandths(IDC_TS_JOG_SLOW, kJogSlowSpeed),
    Decimal(IDC_TS_SCISSORS, kScissors),

    Check(IDC_TS_HAS_BEAD_TOOL, kBeadInsertTool),
    // KEEP: the offsets of a tool that is not fitted stay as they were, whatever is typed.
    Thousandths(IDC_TS_BEAD_X, kBeadToolOffsetX, IDC_TS_HAS_BEAD_TOOL),
    Thousandths(IDC_TS_BEAD_Y, kBeadToolOffsetY, IDC_TS_HAS_BEAD_TOOL),
    Check(IDC_TS_HAS_DIODE, kDiodePointer),

    Whole(IDC_TS_ROUND_MOTOR_STEPS, kRoundMotorSteps),
    Whole(IDC_TS_ROUND_MICRO_STEPS, kRoundMicroSteps),
    Decimal(IDC_TS_ROUND_GEAR_RATIO, kRoundGearRatio),
    Check(IDC_TS_HAS_ROUND_FIXTURE, kHasRoundAttachment, &RememberRoundFixture),
    Check(IDC_TS_HAS_AIR_Z, kAirZ),
};

// Rounded half up below zero as well, so that an offset that was shown and not edited is saved
// unchanged.
std::int32_t ReadThousandths(HWND dialog, int id) noexcept {
  return RoundHalfUp(ReadDecimal(dialog, id) * 1000.0f);
}

std::int32_t WholeIn(const SettingsFile& file, const Row& row) noexcept {
  return file.ReadNumber(row, Reader::TableSetupDialog);
}

float InchesIn(const SettingsFile& file, const Row& row) noexcept {
  return static_cast<float>(WholeIn(file, row)) / 1000.0f;
}

float NumberIn(const SettingsFile& file, const Field& field) noexcept {
  switch (field.kind) {
    case FieldKind::Whole:
      return static_cast<float>(WholeIn(file, field.row));
    case FieldKind::Decimal:
      return FloatOfBits(WholeIn(file, field.row));
    case FieldKind::Thousandths:
      return InchesIn(file, field.row);
    default:
      return 0.0f;
  }
}

void Fill(HWND dialog, const SettingsFile& file, const Field& field) noexcept {
  switch (field.kind) {
    case FieldKind::Text: {
      FieldText text;
      file.ReadText(static_cast<const TextRow&>(field.row), text.text, kFieldCapacity);
      SetText(dialog, field.control, text.text);
      break;
    }
    case FieldKind::Whole:
    case FieldKind::Decimal:
    case FieldKind::Thousandths:
      SetDecimal(dialog, field.control, NumberIn(file, field), field.decimals);
      break;
    case FieldKind::Check: {
      const bool set = WholeIn(file, field.row) != 0;
      SetChecked(dialog, field.control, set);
      // KEEP: a missing switch clears no flag here, only on saving.
      if (set && field.remember != nullptr) field.remember(true);
      break;
    }
  }
}

void Save(HWND dialog, const SettingsFile& file, const Field& field) noexcept {
  if (field.onlyWith != 0 && !IsChecked(dialog, field.onlyWith)) return;
  switch (field.kind) {
    case FieldKind::Text:
    case FieldKind::Whole:
      file.WriteText(field.row, ReadText(dialog, field.control).text);
      break;
    case FieldKind::Decimal:
      file.WriteFloat(static_cast<const FloatRow&>(field.row), ReadDecimal(dialog, field.control));
      break;
    case FieldKind::Thousandths:
      file.WriteInt(static_cast<const IntRow&>(field.row), ReadThousandths(dialog, field.control));
      break;
    case FieldKind::Check: {
      const bool set = IsChecked(dialog, field.control);
      file.WriteFlag(static_cast<const FlagRow&>(field.row), set);
      if (field.remember != nullptr) field.remember(set);
      break;
    }
  }
}

struct Home {
  int control;
  const FloatRow& row;
};
constexpr Home kHomes[] = {
    {IDC_TS_TABLE_HOME_X, kTableHomeX},
    {IDC_TS_TABLE_HOME_Y, kTableHomeY},
    {IDC_TS_TABLE_HOME_Z, kTableHomeZ},
};

}  // namespace

void FillPermanentSettings(HWND dialog) noexcept {
  const SettingsFile file{dialogDevice->link};
  for (const Field& field : kFields) Fill(dialog, file, field);
  ShowTableHomes(dialog, file);
  ShowDiodeOffsets(dialog, file);
}

float StoredNumber(const SettingsFile& file, int control) noexcept {
  for (const Field& field : kFields) {
    if (field.control == control) return NumberIn(file, field);
  }
  return 0.0f;
}

void SavePermanentSettings(HWND dialog) noexcept {
  if (dialogDevice == nullptr) return;
  const SettingsFile file{dialogDevice->link};
  for (const Field& field : kFields) Save(dialog, file, field);
}

void ShowTableHomes(HWND dialog, const SettingsFile& file) noexcept {
  for (const Home& home : kHomes) {
    SetLabelledDecimal(dialog, home.control, L"Table Home  ",
                       file.ReadFloat(home.row, Reader::TableSetupDialog), 6);
  }
}

void ShowBeadToolOffsets(HWND dialog, const SettingsFile& file) noexcept {
  for (const int control : {IDC_TS_BEAD_X, IDC_TS_BEAD_Y}) {
    SetDecimal(dialog, control, StoredNumber(file, control), 3);
  }
}

void ShowDiodeOffsets(HWND dialog, const SettingsFile& file) noexcept {
  SetLabelledDecimal(dialog, IDC_TS_DIODE_X, L"X: ", InchesIn(file, kDiodeOffsetX), 4);
  SetLabelledDecimal(dialog, IDC_TS_DIODE_Y, L"Y: ", InchesIn(file, kDiodeOffsetY), 4);
}

}  // namespace k7
