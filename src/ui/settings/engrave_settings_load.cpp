#include <bit>
#include <cstdint>

#include "settings/schema.h"
#include "ui/common/dialog_state.h"
#include "ui/common/dialog_text.h"
#include "ui/resource_ids.h"
#include "ui/settings/control_states.h"
#include "ui/settings/engrave_fields.h"
#include "ui/settings/engrave_lists.h"
#include "ui/settings/engrave_settings.h"
#include "ui/settings/filling.h"
#include "ui/settings/material_profiles.h"
#include "ui/settings/maximum_values.h"

namespace k7 {
namespace {

constexpr int kDecimals = 4;

struct SwitchFlag {
  const settings::FlagRow& row;
  std::uint8_t DialogState::*flag;
};
constexpr SwitchFlag kSwitches[] = {
    {settings::kLimitSwitchX, &DialogState::xLimitSwitch},
    {settings::kLimitSwitchY, &DialogState::yLimitSwitch},
    {settings::kLimitSwitchZ, &DialogState::zLimitSwitch},
    {settings::kProxSwitch, &DialogState::zProxSwitch},
};

constexpr int kGridSpeedRow[] = {IDC_CS_GRID_SPEED_LABEL, IDC_CS_GRID_SPEED, IDC_CS_MAX_GRID_SPEED};

// Whether a depth is set: 0 stands for none. By its bits, so that a stored minus zero counts as one
// that is set, as it does to a load.
bool IsPresent(float depth) noexcept {
  return std::bit_cast<std::uint32_t>(depth) != 0;
}

// KEEP: only ever sets flags. A profile, which has no such keys, leaves them as they are.
void SetFlags(const SettingsFile& file) noexcept {
  for (const SwitchFlag& fitted : kSwitches) {
    if (file.ReadFlag(fitted.row)) dialogState.*fitted.flag = 1;
  }
  if (file.ReadFlag(settings::kHasSpindle)) hasSpindle = 1;
}

void LoadOptions(HWND dialog, const SettingsFile& file) noexcept {
  const bool byColor = file.ReadFlag(settings::kEngraveByColor);
  SetChecked(dialog, IDC_CS_ENGRAVE_BY_COLOR, byColor);
  ShowControl(dialog, IDC_CS_COLOR_SETTINGS, byColor);
  SetChecked(dialog, IDC_CS_DONT_LOWER_Z, file.ReadFlag(settings::kDontLowerAirZ));
}

void LoadMultiPass(HWND dialog, const SettingsFile& file) noexcept {
  const float maxDepth = file.ReadFloat(settings::kMaxPassDepth);
  const float finishDepth = file.ReadFloat(settings::kFinishPassDepth);
  if (IsPresent(maxDepth)) {
    SetDecimal(dialog, IDC_CS_PASS_DEPTH_OR_COPIES, maxDepth, kDecimals);
    dialogState.maxPassDepth = maxDepth;
  }
  if (IsPresent(finishDepth)) SetDecimal(dialog, IDC_CS_FINISH_DEPTH, finishDepth, kDecimals);

  ClearList(dialog, IDC_CS_MULTI_PASS_MODE);
  for (const wchar_t* text : {L"Max Pass Depth", L"Pass Copies"}) {
    AddListEntry(dialog, IDC_CS_MULTI_PASS_MODE, text);
  }
  const int mode = HasAirZ(file) ? 1 : file.ReadInt(settings::kMultiPassMode);
  Select(dialog, IDC_CS_MULTI_PASS_MODE, mode);
  dialogState.passCopies = ReadPassCopies(file);
  if (mode != 0) {
    ShowPassCopies(dialog);
  } else {
    SetText(dialog, IDC_CS_PASS_LABEL, L"Maximum Pass Depth");
    if (IsPresent(maxDepth)) {
      SetDecimal(dialog, IDC_CS_PASS_DEPTH_OR_COPIES, maxDepth, kDecimals);
    }
  }

  const bool multiPass = file.ReadFlag(settings::kMultiPass);
  SetChecked(dialog, IDC_CS_MULTI_PASS, multiPass);
  // KEEP: while multi-pass is off the list of modes stays as it is, and so does the label while it
  // is on with copies.
  ShowControl(dialog, IDC_CS_PASS_DEPTH_OR_COPIES, multiPass);
  ShowControl(dialog, IDC_CS_MULTI_PASS_MODE_LABEL, multiPass);
  if (multiPass) ShowControl(dialog, IDC_CS_MULTI_PASS_MODE, true);
  const bool depths = multiPass && mode == 0;
  ShowFinishDepth(dialog, depths);
  if (depths || !multiPass) ShowControl(dialog, IDC_CS_PASS_LABEL, depths);
}

void LoadRoundFixture(HWND dialog, const SettingsFile& file) noexcept {
  ClearList(dialog, IDC_CS_ROUND_FIXTURE);
  for (const wchar_t* text : {L"Off", L"Replace X", L"Replace Y"}) {
    AddListEntry(dialog, IDC_CS_ROUND_FIXTURE, text);
  }
  const int mode = file.ReadInt(settings::kRoundMode);
  Select(dialog, IDC_CS_ROUND_FIXTURE, mode);
  const bool fitted = EngraveFile(nullptr).ReadFlag(settings::kHasRoundAttachment);
  hasRoundAttachment = fitted ? 1 : 0;
  ShowControl(dialog, IDC_CS_ROUND_FIXTURE_LABEL, fitted);
  ShowControl(dialog, IDC_CS_ROUND_FIXTURE, fitted);
  ShowCircumference(dialog, fitted && mode != 0);
  FieldText circumference;
  file.ReadText(settings::kCircumference, circumference.text, kFieldCapacity);
  SetText(dialog, IDC_CS_CIRCUMFERENCE, circumference.text);
}

}  // namespace

void LoadEngraveSettings(HWND dialog, const wchar_t* path) noexcept {
  if (dialogDevice == nullptr) return;
  if (path != nullptr) SetFilling(dialog, Filling::FromProfile);
  const SettingsFile file = EngraveFile(path);
  file.TraceLoad();

  SetWindowTextW(dialog, dialogDevice->link.friendlyName);
  SetFlags(file);
  for (const EngraveField& field : kEngraveFields) {
    SetDecimal(dialog, field.control, file.ReadFloat(field.row), kDecimals);
  }
  SetDecimal(dialog, IDC_CS_ENGRAVE_DELAY, file.ReadFloat(settings::kEngraveDelay), kDecimals);
  if (dialogState.showGrid == 0) ShowControls(dialog, kGridSpeedRow, false);
  ShowMaximumValues(dialog, file, MaximumValues::AllShown);
  LoadOptions(dialog, file);
  LoadMultiPass(dialog, file);
  LoadRoundFixture(dialog, file);
  ShowLastCutter(dialog, file);
  FillSpindleRpm(dialog, path);
  FillResolutionList(dialog, path);
  FillEngraveTypeList(dialog, path);
  FillCutterModeList(dialog, path);
  UpdateControlStates(dialog, file.Path());
  if (FillingOf(dialog) == Filling::AtOpening) {
    FieldText profile;
    file.ReadText(settings::kMaterialProfile, profile.text, kFieldCapacity);
    FillMaterialList(dialog, profile.text);
  }
  if (path != nullptr) SetFilling(dialog, Filling::None);
}

}  // namespace k7
