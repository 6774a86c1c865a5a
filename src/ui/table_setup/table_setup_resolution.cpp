#include "ui/table_setup/table_setup_resolution.h"

#include "base/arithmetic.h"
#include "base/parse_number.h"
#include "ui/common/dialog_text.h"
#include "ui/resource_ids.h"
#include "ui/table_setup/table_setup_fields.h"

namespace k7 {
namespace {

struct AxisRow {
  int motorSteps;
  int microSteps;
  int screwPitch;
  int resolution;
};
constexpr AxisRow kAxes[] = {
    {IDC_TS_MOTOR_STEPS_X, IDC_TS_MICRO_STEPS_X, IDC_TS_SCREW_PITCH_X, IDC_TS_RESOLUTION_X},
    {IDC_TS_MOTOR_STEPS_Y, IDC_TS_MICRO_STEPS_Y, IDC_TS_SCREW_PITCH_Y, IDC_TS_RESOLUTION_Y},
    {IDC_TS_MOTOR_STEPS_Z, IDC_TS_MICRO_STEPS_Z, IDC_TS_SCREW_PITCH_Z, IDC_TS_RESOLUTION_Z},
};

// KEEP: only the first 15 characters of a field count for the results shown; saving takes them all.
float ReadShortDecimal(HWND dialog, int id) noexcept {
  wchar_t text[16] = L"";
  GetDlgItemTextW(dialog, id, text, 16);
  return ParseTypedDecimal(text);
}

float ReadRounded(HWND dialog, int id) noexcept {
  return static_cast<float>(RoundHalfUp(ReadShortDecimal(dialog, id)));
}

void ShowRounded(HWND dialog, int id, float value) noexcept {
  SetDecimal(dialog, id, static_cast<float>(RoundHalfUp(value)), 0);
}

}  // namespace

void ShowStoredResults(HWND dialog, const SettingsFile& file) noexcept {
  for (const AxisRow& row : kAxes) {
    const float steps = StoredNumber(file, row.microSteps) * StoredNumber(file, row.motorSteps);
    ShowRounded(dialog, row.resolution, steps / StoredNumber(file, row.screwPitch));
  }
  const float motorRpm = StoredNumber(file, IDC_TS_MOTOR_RPM);
  ShowRounded(dialog, IDC_TS_SPINDLE_RPM, StoredNumber(file, IDC_TS_SPINDLE_GEAR_RATIO) * motorRpm);
}

void UpdateAxisResolution(HWND dialog, int axis) noexcept {
  if (axis < 1 || axis > 3) return;
  const AxisRow& row = kAxes[axis - 1];
  const float steps = ReadRounded(dialog, row.microSteps) * ReadRounded(dialog, row.motorSteps);
  ShowRounded(dialog, row.resolution, steps / ReadShortDecimal(dialog, row.screwPitch));
}

void UpdateSpindleRpm(HWND dialog) noexcept {
  const float motorRpm = ReadRounded(dialog, IDC_TS_MOTOR_RPM);
  ShowRounded(dialog, IDC_TS_SPINDLE_RPM,
              ReadShortDecimal(dialog, IDC_TS_SPINDLE_GEAR_RATIO) * motorRpm);
}

}  // namespace k7
