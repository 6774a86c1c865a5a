#include "ui/settings/maximum_values.h"

#include "settings/schema.h"
#include "ui/common/dialog_text.h"
#include "ui/resource_ids.h"

namespace k7 {
namespace {

struct MaximumRow {
  int field;
  const settings::FloatRow& row;
};
constexpr MaximumRow kMaxima[] = {
    {IDC_CS_MAX_TRAVERSE_SPEED, settings::kMaxXySpeed},
    {IDC_CS_MAX_ENGRAVE_SPEED, settings::kMaxXySpeed},
    {IDC_CS_MAX_GRID_SPEED, settings::kMaxXySpeed},
    {IDC_CS_MAX_CUTTER_UP_SPEED, settings::kMaxZSpeed},
    {IDC_CS_MAX_CUTTER_DOWN_SPEED, settings::kMaxZSpeed},
    {IDC_CS_MAX_ENGRAVE_DEPTH, settings::kMaxEngraveDepth},
};

}  // namespace

void ShowMaximumValues(HWND dialog, const SettingsFile& file, MaximumValues which) noexcept {
  for (const MaximumRow& maximum : kMaxima) {
    const bool grid = maximum.field == IDC_CS_MAX_GRID_SPEED;
    if (grid && which == MaximumValues::WithoutGridSpeed) continue;
    SetDecimal(dialog, maximum.field, file.ReadFloat(maximum.row), 4);
  }
}

void ShowLastCutter(HWND dialog, const SettingsFile& file) noexcept {
  SetLabelledDecimal(dialog, IDC_CS_LAST_CUTTER, L"Last Cutter: ",
                     file.ReadFloat(settings::kLastCutterSet), 3);
}

}  // namespace k7
