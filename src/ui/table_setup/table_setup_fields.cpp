#include "ui/table_setup/table_setup_fields.h"

#include "base/arithmetic.h"
#include "settings/keys.h"
#include "ui/common/dialog_state.h"
#include "ui/common/dialog_text.h"
#include "ui/resource_ids.h"

namespace k7 {
namespace {

enum class FieldKind {
  Text,         // as typed
  Whole,        // whole number; written as typed
  Decimal,      // single-precision number
  Thousandths,  // thousandths of an inch; typed in inches
  Check,        // check box, "1" or "0"
};

struct FieldRow {
  int control;
  const wchar_t* section;
  const wchar_t* key;
  FieldKind kind;
  float otherwise;  // as the file holds it
  int decimals;
  void (*remember)(bool set) noexcept = nullptr;  // the dialogs' flag for a check box
  int onlyWith = 0;                               // saved only while this box is checked
};

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

using enum FieldKind;

// In the order in which they are saved.
constexpr FieldRow kFields[] = {
    {IDC_TS_FRIENDLY_NAME, keys::kSettings, keys::kFriendlyName, Text, 0.0f, 0},

    {IDC_TS_MOTOR_STEPS_X, keys::kAxisX, keys::kMotorSteps, Whole, 200.0f, 0},
    {IDC_TS_MICRO_STEPS_X, keys::kAxisX, keys::kMicroSteps, Whole, 10.0f, 0},
    {IDC_TS_SCREW_PITCH_X, keys::kAxisX, keys::kScrewPitch, Decimal, 0.5f, 4},
    {IDC_TS_LIMIT_SWITCH_X, keys::kAxisX, keys::kLimitSwitch, Check, 0.0f, 0, &RememberLimitX},

    {IDC_TS_MOTOR_STEPS_Y, keys::kAxisY, keys::kMotorSteps, Whole, 200.0f, 0},
    {IDC_TS_MICRO_STEPS_Y, keys::kAxisY, keys::kMicroSteps, Whole, 10.0f, 0},
    {IDC_TS_SCREW_PITCH_Y, keys::kAxisY, keys::kScrewPitch, Decimal, 0.5f, 4},
    {IDC_TS_LIMIT_SWITCH_Y, keys::kAxisY, keys::kLimitSwitch, Check, 0.0f, 0, &RememberLimitY},

    {IDC_TS_MOTOR_STEPS_Z, keys::kAxisZ, keys::kMotorSteps, Whole, 200.0f, 0},
    {IDC_TS_MICRO_STEPS_Z, keys::kAxisZ, keys::kMicroSteps, Whole, 10.0f, 0},
    {IDC_TS_SCREW_PITCH_Z, keys::kAxisZ, keys::kScrewPitch, Decimal, 0.5f, 4},
    {IDC_TS_LIMIT_SWITCH_Z, keys::kAxisZ, keys::kLimitSwitch, Check, 0.0f, 0, &RememberLimitZ},
    {IDC_TS_PROX_SWITCH, keys::kAxisZ, keys::kProxSwitch, Check, 0.0f, 0, &RememberProx},

    {IDC_TS_MOTOR_RPM, keys::kSpindle, keys::kMotorRpm, Whole, 4000.0f, 0},
    {IDC_TS_SPINDLE_GEAR_RATIO, keys::kSpindle, keys::kGearRatio, Decimal, 3.25f, 4},
    {IDC_TS_RAMP_TIME, keys::kSpindle, keys::kRampTime, Whole, 30.0f, 0},
    {IDC_TS_HAS_SPINDLE, keys::kSpindle, keys::kHasSpindle, Check, 0.0f, 0, &RememberSpindle},

    {IDC_TS_MAX_XY_SPEED, keys::kMaximumValues, keys::kXySpeed, Decimal, 10.0f, 4},
    {IDC_TS_MAX_Z_SPEED, keys::kMaximumValues, keys::kZSpeed, Decimal, 10.0f, 4},
    {IDC_TS_MAX_ENGRAVE_DEPTH, keys::kMaximumValues, keys::kEngraveDepth, Decimal, 1.0f, 4},
    // KEEP: a missing offset is 0 here and 0.5 to a load: OK settles it at 0.
    {IDC_TS_SEMI_AUTO_OFFSET, keys::kProx, keys::kSemiAutoOffset, Decimal, 0.0f, 4},
    {IDC_TS_TABLE_WIDTH, keys::kTableSize, keys::kWidth, Thousandths, 25000.0f, 3},
    {IDC_TS_TABLE_HEIGHT, keys::kTableSize, keys::kHeight, Thousandths, 16000.0f, 3},
    {IDC_TS_TABLE_DEPTH, keys::kTableSize, keys::kDepth, Thousandths, 2000.0f, 3},
    {IDC_TS_JOG_FAST, keys::kJogSpeed, keys::kFast, Thousandths, 5000.0f, 3},
    {IDC_TS_JOG_SLOW, keys::kJogSpeed, keys::kSlow, Thousandths, 250.0f, 3},
    {IDC_TS_SCISSORS, keys::kSettings, keys::kScissors, Decimal, 1.0f, 4},

    {IDC_TS_HAS_BEAD_TOOL, keys::kBraille, keys::kBeadInsertTool, Check, 0.0f, 0},
    // KEEP: the offsets of an absent tool stay as they were, whatever is typed.
    // KEEP: a missing Y offset is 0 here and the X offset to a load.
    {IDC_TS_BEAD_X, keys::kBraille, keys::kBeadInsertToolX, Thousandths, 0.0f, 3, nullptr,
     IDC_TS_HAS_BEAD_TOOL},
    {IDC_TS_BEAD_Y, keys::kBraille, keys::kBeadInsertToolY, Thousandths, 0.0f, 3, nullptr,
     IDC_TS_HAS_BEAD_TOOL},
    {IDC_TS_HAS_DIODE, keys::kDiode, keys::kDiodePointer, Check, 0.0f, 0},

    {IDC_TS_ROUND_MOTOR_STEPS, keys::kAxisRound, keys::kMotorSteps, Whole, 200.0f, 0},
    {IDC_TS_ROUND_MICRO_STEPS, keys::kAxisRound, keys::kMicroSteps, Whole, 10.0f, 0},
    {IDC_TS_ROUND_GEAR_RATIO, keys::kAxisRound, keys::kGearRatio, Decimal, 20.0f, 4},
    {IDC_TS_HAS_ROUND_FIXTURE, keys::kAxisRound, keys::kHasRoundAttachment, Check, 0.0f, 0,
     &RememberRoundFixture},
    {IDC_TS_HAS_AIR_Z, keys::kAxisZ, keys::kAirZ, Check, 0.0f, 0},
};

// Half up also below zero: an offset that was only shown is saved unchanged.
std::int32_t ReadThousandths(HWND dialog, int id) noexcept {
  return RoundHalfUp(ReadDecimal(dialog, id) * 1000.0f);
}

std::int32_t WholeIn(const SettingsFile& file, const FieldRow& row) noexcept {
  return file.ReadInt(row.section, row.key, static_cast<std::int32_t>(row.otherwise));
}

float NumberIn(const SettingsFile& file, const FieldRow& row) noexcept {
  switch (row.kind) {
    case Whole:
      return static_cast<float>(WholeIn(file, row));
    case Decimal:
      return file.ReadFloat(row.section, row.key, row.otherwise);
    case Thousandths:
      return static_cast<float>(WholeIn(file, row)) / 1000.0f;
    default:
      return 0.0f;
  }
}

void Fill(HWND dialog, const SettingsFile& file, const FieldRow& row) noexcept {
  switch (row.kind) {
    case Text: {
      FieldText field;
      file.ReadText(row.section, row.key, kDefaultFriendlyName, field.text, kFieldCapacity);
      SetText(dialog, row.control, field.text);
      break;
    }
    case Whole:
    case Decimal:
    case Thousandths:
      SetDecimal(dialog, row.control, NumberIn(file, row), row.decimals);
      break;
    case Check: {
      const bool set = WholeIn(file, row) != 0;
      SetChecked(dialog, row.control, set);
      // KEEP: a missing switch clears no flag here, only on saving.
      if (set && row.remember != nullptr) row.remember(true);
      break;
    }
  }
}

void Save(HWND dialog, const SettingsFile& file, const FieldRow& row) noexcept {
  if (row.onlyWith != 0 && !IsChecked(dialog, row.onlyWith)) return;
  switch (row.kind) {
    case Text:
    case Whole:
      file.WriteText(row.section, row.key, ReadText(dialog, row.control).text);
      break;
    case Decimal:
      file.WriteFloat(row.section, row.key, ReadDecimal(dialog, row.control));
      break;
    case Thousandths:
      file.WriteInt(row.section, row.key, ReadThousandths(dialog, row.control));
      break;
    case Check: {
      const bool set = IsChecked(dialog, row.control);
      file.WriteText(row.section, row.key, set ? L"1" : L"0");
      if (row.remember != nullptr) row.remember(set);
      break;
    }
  }
}

struct HomeRow {
  int control;
  const wchar_t* section;
};
constexpr HomeRow kHomes[] = {
    {IDC_TS_TABLE_HOME_X, keys::kAxisX},
    {IDC_TS_TABLE_HOME_Y, keys::kAxisY},
    {IDC_TS_TABLE_HOME_Z, keys::kAxisZ},
};

float ReadInches(const SettingsFile& file, const wchar_t* section, const wchar_t* key) noexcept {
  return static_cast<float>(file.ReadInt(section, key, 0)) / 1000.0f;
}

}  // namespace

void FillPermanentSettings(HWND dialog) noexcept {
  const SettingsFile file{dialogDevice->link};
  for (const FieldRow& row : kFields) Fill(dialog, file, row);
  ShowTableHomes(dialog, file);
  ShowDiodeOffsets(dialog, file);
}

float StoredNumber(const SettingsFile& file, int control) noexcept {
  for (const FieldRow& row : kFields) {
    if (row.control == control) return NumberIn(file, row);
  }
  return 0.0f;
}

void SavePermanentSettings(HWND dialog) noexcept {
  if (dialogDevice == nullptr) return;
  const SettingsFile file{dialogDevice->link};
  for (const FieldRow& row : kFields) Save(dialog, file, row);
}

void ShowTableHomes(HWND dialog, const SettingsFile& file) noexcept {
  for (const HomeRow& row : kHomes) {
    SetLabelledDecimal(dialog, row.control, L"Table Home  ",
                       file.ReadFloat(row.section, keys::kTableHome, 0.0f), 6);
  }
}

void ShowBeadToolOffsets(HWND dialog, const SettingsFile& file) noexcept {
  for (const int control : {IDC_TS_BEAD_X, IDC_TS_BEAD_Y}) {
    SetDecimal(dialog, control, StoredNumber(file, control), 3);
  }
}

void ShowDiodeOffsets(HWND dialog, const SettingsFile& file) noexcept {
  SetLabelledDecimal(dialog, IDC_TS_DIODE_X, L"X: ",
                     ReadInches(file, keys::kDiode, keys::kDiodePointerX), 4);
  SetLabelledDecimal(dialog, IDC_TS_DIODE_Y, L"Y: ",
                     ReadInches(file, keys::kDiode, keys::kDiodePointerY), 4);
}

}  // namespace k7
