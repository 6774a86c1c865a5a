#include <algorithm>

#include "motion/round_positions.h"
#include "settings/keys.h"
#include "ui/common/dialog_state.h"
#include "ui/common/dialog_text.h"
#include "ui/resource_ids.h"
#include "ui/settings/engrave_lists.h"
#include "ui/settings/engrave_rules.h"
#include "ui/settings/engrave_settings.h"

namespace k7 {
namespace {

constexpr float kLeastAirZDelaySeconds = 0.1f;

struct FieldRow {
  int field;
  const wchar_t* key;
};
constexpr FieldRow kFields[] = {
    {IDC_CS_CUTTER_LIFT, keys::kCutterLift},
    {IDC_CS_ENGRAVE_DEPTH, keys::kEngraveDepth},
    {IDC_CS_TRAVERSE_SPEED, keys::kTraverseSpeed},
    {IDC_CS_CUTTER_DOWN_SPEED, keys::kCutterDownSpeed},
    {IDC_CS_CUTTER_UP_SPEED, keys::kCutterUpSpeed},
    {IDC_CS_ENGRAVE_SPEED, keys::kEngraveSpeed},
    {IDC_CS_GRID_SPEED, keys::kGridSpeed},
};

// What a pneumatic head needs to arrive, whatever was typed.
float EngraveDelay(HWND dialog) noexcept {
  const float typed = ReadDecimal(dialog, IDC_CS_ENGRAVE_DELAY);
  return HasAirZ(EngraveFile(nullptr)) && typed < kLeastAirZDelaySeconds ? kLeastAirZDelaySeconds
                                                                         : typed;
}

void WriteOption(const SettingsFile& file, const wchar_t* key, HWND dialog, int id) noexcept {
  file.WriteText(keys::kEngraveSettings, key, IsChecked(dialog, id) ? L"1" : L"0");
}

void SaveMultiPass(HWND dialog, const SettingsFile& file) noexcept {
  if (!IsChecked(dialog, IDC_CS_MULTI_PASS)) {
    file.WriteText(keys::kEngraveSettings, keys::kMultiPass, L"0");
    return;
  }
  const FieldText depthOrCopies = ReadText(dialog, IDC_CS_PASS_DEPTH_OR_COPIES);
  if (depthOrCopies.IsEmpty()) {
    file.WriteText(keys::kEngraveSettings, keys::kMaxPassDepth, L"");
    file.WriteText(keys::kEngraveSettings, keys::kFinishPassDepth, L"");
    file.WriteText(keys::kEngraveSettings, keys::kMultiPass, L"0");
    // KEEP: a key of its own, not "Multi Pass Copies".
    file.WriteText(keys::kEngraveSettings, keys::kPassCopies, L"1");
    return;
  }
  const int mode = Selection(dialog, IDC_CS_MULTI_PASS_MODE);
  file.WriteText(keys::kEngraveSettings, keys::kMultiPass, L"1");
  file.WriteInt(keys::kEngraveSettings, keys::kMultiPassMode, mode);
  if (mode != 0) {
    file.WriteText(keys::kEngraveSettings, keys::kMultiPassCopies, depthOrCopies.text);
    return;
  }
  file.WriteFloat(keys::kEngraveSettings, keys::kMaxPassDepth,
                  ReadDecimal(dialog, IDC_CS_PASS_DEPTH_OR_COPIES));
  if (ReadText(dialog, IDC_CS_FINISH_DEPTH).IsEmpty()) {
    file.WriteText(keys::kEngraveSettings, keys::kFinishPassDepth, L"");
  } else {
    file.WriteFloat(keys::kEngraveSettings, keys::kFinishPassDepth,
                    ReadDecimal(dialog, IDC_CS_FINISH_DEPTH));
  }
}

}  // namespace

void SaveEngraveSettings(HWND dialog, const wchar_t* path) noexcept {
  if (dialogDevice == nullptr) return;
  const SettingsFile file = EngraveFile(path);
  for (const FieldRow& row : kFields) {
    file.WriteFloat(keys::kEngraveSettings, row.key, ReadDecimal(dialog, row.field));
  }
  file.WriteFloat(keys::kEngraveSettings, keys::kEngraveDelay, EngraveDelay(dialog));
  SaveResolution(dialog, path);
  file.WriteInt(keys::kEngraveSettings, keys::kEngraveType, Selection(dialog, IDC_CS_ENGRAVE_TYPE));
  file.WriteInt(keys::kEngraveSettings, keys::kCutterMode, Selection(dialog, IDC_CS_CUTTER_MODE));
  file.WriteInt(keys::kSpindle, keys::kSpindleRpm,
                std::min(ReadWhole(dialog, IDC_CS_SPINDLE_RPM), MaxSpindleRpm(nullptr)));
  WriteOption(file, keys::kEngraveByColor, dialog, IDC_CS_ENGRAVE_BY_COLOR);
  WriteOption(file, keys::kDontLowerAirZ, dialog, IDC_CS_DONT_LOWER_Z);
  if (path == nullptr) {
    file.WriteText(keys::kEngraveSettings, keys::kMaterialProfile,
                   ReadText(dialog, IDC_CS_MATERIAL).text);
  }
  SaveMultiPass(dialog, file);

  const int mode = Selection(dialog, IDC_CS_ROUND_FIXTURE);
  file.WriteInt(keys::kAxisRound, keys::kMode, mode);
  file.WriteText(keys::kAxisRound, keys::kCircumference,
                 ReadText(dialog, IDC_CS_CIRCUMFERENCE).text);
  SwapAxisPositions(dialogDevice->position, dialogDevice->mechanics.roundAxisMode,
                    static_cast<std::uint32_t>(mode));
}

}  // namespace k7
