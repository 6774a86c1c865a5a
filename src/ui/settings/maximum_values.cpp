#include "ui/settings/maximum_values.h"

#include "settings/keys.h"
#include "ui/common/dialog_text.h"
#include "ui/resource_ids.h"

namespace k7 {
namespace {

struct MaximumRow {
  int field;
  const wchar_t* key;
  float otherwise;
};
constexpr MaximumRow kMaxima[] = {
    {IDC_CS_MAX_TRAVERSE_SPEED, keys::kXySpeed, 10.0f},
    {IDC_CS_MAX_ENGRAVE_SPEED, keys::kXySpeed, 10.0f},
    {IDC_CS_MAX_GRID_SPEED, keys::kXySpeed, 10.0f},
    {IDC_CS_MAX_CUTTER_UP_SPEED, keys::kZSpeed, 10.0f},
    {IDC_CS_MAX_CUTTER_DOWN_SPEED, keys::kZSpeed, 10.0f},
    {IDC_CS_MAX_ENGRAVE_DEPTH, keys::kEngraveDepth, 1.0f},
};

}  // namespace

void ShowMaximumValues(HWND dialog, const SettingsFile& file, MaximumValues which) noexcept {
  for (const MaximumRow& row : kMaxima) {
    if (which == MaximumValues::WithoutGridSpeed && row.field == IDC_CS_MAX_GRID_SPEED) continue;
    SetDecimal(dialog, row.field, file.ReadFloat(keys::kMaximumValues, row.key, row.otherwise), 4);
  }
}

void ShowLastCutter(HWND dialog, const SettingsFile& file) noexcept {
  SetLabelledDecimal(dialog, IDC_CS_LAST_CUTTER, L"Last Cutter: ",
                     file.ReadFloat(keys::kEngraveSettings, keys::kLastCutterSet, 0.0f), 3);
}

}  // namespace k7
