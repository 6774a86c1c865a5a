#include <algorithm>

#include "motion/round_positions.h"
#include "settings/schema.h"
#include "ui/common/dialog_state.h"
#include "ui/common/dialog_text.h"
#include "ui/resource_ids.h"
#include "ui/settings/engrave_fields.h"
#include "ui/settings/engrave_lists.h"
#include "ui/settings/engrave_rules.h"
#include "ui/settings/engrave_settings.h"

namespace k7 {
namespace {

constexpr float kLeastAirZDelaySeconds = 0.1f;

// The delay as typed, but with a pneumatic head no less than it needs to reach the work.
float EngraveDelay(HWND dialog) noexcept {
  const float typed = ReadDecimal(dialog, IDC_CS_ENGRAVE_DELAY);
  return HasAirZ(EngraveFile(nullptr)) && typed < kLeastAirZDelaySeconds ? kLeastAirZDelaySeconds
                                                                         : typed;
}

void SaveMultiPass(HWND dialog, const SettingsFile& file) noexcept {
  if (!IsChecked(dialog, IDC_CS_MULTI_PASS)) {
    file.WriteFlag(settings::kMultiPass, false);
    return;
  }
  const FieldText depthOrCopies = ReadText(dialog, IDC_CS_PASS_DEPTH_OR_COPIES);
  if (depthOrCopies.IsEmpty()) {
    file.WriteText(settings::kMaxPassDepth, L"");
    file.WriteText(settings::kFinishPassDepth, L"");
    file.WriteFlag(settings::kMultiPass, false);
    // KEEP: not Multi Pass Copies but a key that nothing reads, so that the copies chosen earlier
    // stay in the file.
    file.WriteInt(settings::kPassCopies, 1);
    return;
  }
  const int mode = Selection(dialog, IDC_CS_MULTI_PASS_MODE);
  file.WriteFlag(settings::kMultiPass, true);
  file.WriteInt(settings::kMultiPassMode, mode);
  if (mode != 0) {
    file.WriteText(settings::kMultiPassCopies, depthOrCopies.text);
    return;
  }
  file.WriteFloat(settings::kMaxPassDepth, ReadDecimal(dialog, IDC_CS_PASS_DEPTH_OR_COPIES));
  if (ReadText(dialog, IDC_CS_FINISH_DEPTH).IsEmpty()) {
    file.WriteText(settings::kFinishPassDepth, L"");
  } else {
    file.WriteFloat(settings::kFinishPassDepth, ReadDecimal(dialog, IDC_CS_FINISH_DEPTH));
  }
}

}  // namespace

void SaveEngraveSettings(HWND dialog, const wchar_t* path) noexcept {
  if (dialogDevice == nullptr) return;
  const SettingsFile file = EngraveFile(path);
  for (const EngraveField& field : kEngraveFields) {
    file.WriteFloat(field.row, ReadDecimal(dialog, field.control));
  }
  file.WriteFloat(settings::kEngraveDelay, EngraveDelay(dialog));
  SaveResolution(dialog, path);
  file.WriteInt(settings::kEngraveType, Selection(dialog, IDC_CS_ENGRAVE_TYPE));
  file.WriteInt(settings::kCutterMode, Selection(dialog, IDC_CS_CUTTER_MODE));
  file.WriteInt(settings::kSpindleRpm,
                std::min(ReadWhole(dialog, IDC_CS_SPINDLE_RPM), MaxSpindleRpm(nullptr)));
  file.WriteFlag(settings::kEngraveByColor, IsChecked(dialog, IDC_CS_ENGRAVE_BY_COLOR));
  file.WriteFlag(settings::kDontLowerAirZ, IsChecked(dialog, IDC_CS_DONT_LOWER_Z));
  if (path == nullptr) {
    file.WriteText(settings::kMaterialProfile, ReadText(dialog, IDC_CS_MATERIAL).text);
  }
  SaveMultiPass(dialog, file);

  const int mode = Selection(dialog, IDC_CS_ROUND_FIXTURE);
  file.WriteInt(settings::kRoundMode, mode);
  file.WriteText(settings::kCircumference, ReadText(dialog, IDC_CS_CIRCUMFERENCE).text);
  SwapAxisPositions(dialogDevice->position, dialogDevice->mechanics.roundAxisMode,
                    static_cast<std::uint32_t>(mode));
}

}  // namespace k7
