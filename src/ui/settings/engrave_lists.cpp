#include "ui/settings/engrave_lists.h"

#include <algorithm>

#include "k7/driver.h"
#include "motion/axes.h"
#include "settings/schema.h"
#include "ui/common/dialog_state.h"
#include "ui/common/dialog_text.h"
#include "ui/resource_ids.h"
#include "ui/settings/engrave_rules.h"

namespace k7 {
namespace {

float FinestResolution() noexcept {
  return std::min(StepsPerInch(dialogDevice->mechanics, Axis::X),
                  StepsPerInch(dialogDevice->mechanics, Axis::Y));
}

}  // namespace

SettingsFile EngraveFile(const wchar_t* path) noexcept {
  return path == nullptr ? SettingsFile{dialogDevice->link} : SettingsFile{path};
}

bool HasAirZ(const SettingsFile& file) noexcept {
  return file.ReadNumber(settings::kAirZ) == 1;
}

void FillResolutionList(HWND dialog, const wchar_t*) noexcept {
  if (dialogDevice == nullptr) return;
  ClearList(dialog, IDC_CS_RESOLUTION);
  const float finest = FinestResolution();
  for (int i = 0; HasResolutionEntry(finest, i); ++i) {
    AddDecimalEntry(dialog, IDC_CS_RESOLUTION, ResolutionOfEntry(finest, i), 0);
  }
  Select(dialog, IDC_CS_RESOLUTION, 0);
}

void SaveResolution(HWND dialog, const wchar_t* path) noexcept {
  if (dialogDevice == nullptr) return;
  const SettingsFile file = EngraveFile(path);
  file.WriteFloat(settings::kResolution,
                  ResolutionOfEntry(FinestResolution(), Selection(dialog, IDC_CS_RESOLUTION)));
  // KEEP: whatever resolution was chosen, the grid stays that of the motors.
  file.WriteInt(settings::kXAxisFactor, 1);
  file.WriteInt(settings::kYAxisFactor, 1);
}

void FillEngraveTypeList(HWND dialog, const wchar_t* path) noexcept {
  if (dialogDevice == nullptr) return;
  ClearList(dialog, IDC_CS_ENGRAVE_TYPE);
  for (const wchar_t* text : {L"Drag", L"Route"}) AddListEntry(dialog, IDC_CS_ENGRAVE_TYPE, text);
  const std::int32_t type = EngraveFile(path).ReadInt(settings::kEngraveType);
  Select(dialog, IDC_CS_ENGRAVE_TYPE, type);
  dialogState.currentEngraveType = static_cast<std::uint32_t>(type);
}

void FillCutterModeList(HWND dialog, const wchar_t* path) noexcept {
  if (dialogDevice == nullptr) return;
  const SettingsFile file = EngraveFile(path);
  const int mode = file.ReadInt(settings::kCutterMode);
  ShowEngraveDepthLabel(dialog, mode);

  // The entries stand in the order of the kCutter numbers.
  constexpr int kList = IDC_CS_CUTTER_MODE;
  ClearList(dialog, kList);
  AddListEntry(dialog, kList, L"No Cutter Set");
  AddListEntry(dialog, kList, L"Manual Cutter");
  if (dialogState.HasAllSwitches()) {
    AddListEntry(dialog, kList, L"Full Automatic");
    if (Selection(dialog, IDC_CS_ENGRAVE_TYPE) != 0) AddListEntry(dialog, kList, L"Semi Automatic");
  }
  Select(dialog, kList, mode >= 0 && mode < ListCount(dialog, kList) ? mode : 0);
  if (HasAirZ(file)) {
    AddListEntry(dialog, kList, L"Air Z");
    Select(dialog, kList, ListCount(dialog, kList) - 1);
  }
}

std::int32_t ReadPassCopies(const SettingsFile& file) noexcept {
  return file.ReadInt(settings::kMultiPassCopies);
}

void ShowPassCopies(HWND dialog) noexcept {
  SetText(dialog, IDC_CS_PASS_LABEL, L"Pass Copies");
  SetDecimal(dialog, IDC_CS_PASS_DEPTH_OR_COPIES, static_cast<float>(dialogState.passCopies), 0);
}

void ShowFinishDepth(HWND dialog, bool show) noexcept {
  ShowControl(dialog, IDC_CS_FINISH_DEPTH, show);
  ShowControl(dialog, IDC_CS_FINISH_DEPTH_LABEL, show);
}

void ShowCircumference(HWND dialog, bool show) noexcept {
  ShowControl(dialog, IDC_CS_CIRCUMFERENCE, show);
  ShowControl(dialog, IDC_CS_CIRCUMFERENCE_LABEL, show);
}

std::int32_t MaxSpindleRpm(const wchar_t* path) noexcept {
  if (dialogDevice == nullptr) return 0;
  const SettingsFile file = EngraveFile(path);
  return SpindleRpmLimit(file.ReadInt(settings::kMotorRpm),
                         file.ReadFloat(settings::kSpindleGearRatio));
}

void FillSpindleRpm(HWND dialog, const wchar_t* path) noexcept {
  if (dialogDevice == nullptr) return;
  const std::int32_t limit = MaxSpindleRpm(nullptr);
  const std::int32_t stored = EngraveFile(path).ReadChained(settings::kSpindleRpm, limit);
  SetDecimal(dialog, IDC_CS_SPINDLE_RPM, static_cast<float>(ShownSpindleRpm(stored, limit)), 0);
  ShowControl(dialog, IDC_CS_SPINDLE_RPM_LABEL, hasSpindle != 0);
  ShowControl(dialog, IDC_CS_SPINDLE_RPM, hasSpindle != 0);
}

void ShowEngraveDepthLabel(HWND dialog, int cutterMode) noexcept {
  const bool automatic = cutterMode == static_cast<int>(kCutterAutomatic);
  SetText(dialog, IDC_CS_ENGRAVE_DEPTH_LABEL, automatic ? L"Spring Pressure" : L"Engrave Depth");
}

}  // namespace k7
