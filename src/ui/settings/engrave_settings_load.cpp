#include <bit>
#include <cstdint>

#include "settings/keys.h"
#include "ui/common/dialog_state.h"
#include "ui/common/dialog_text.h"
#include "ui/resource_ids.h"
#include "ui/settings/control_states.h"
#include "ui/settings/engrave_lists.h"
#include "ui/settings/engrave_settings.h"
#include "ui/settings/filling.h"
#include "ui/settings/material_profiles.h"
#include "ui/settings/maximum_values.h"

namespace k7 {
namespace {

constexpr int kDecimals = 4;

struct SwitchRow {
  const wchar_t* section;
  const wchar_t* key;
  std::uint8_t DialogState::*flag;
};
constexpr SwitchRow kSwitches[] = {
    {keys::kAxisX, keys::kLimitSwitch, &DialogState::xLimitSwitch},
    {keys::kAxisY, keys::kLimitSwitch, &DialogState::yLimitSwitch},
    {keys::kAxisZ, keys::kLimitSwitch, &DialogState::zLimitSwitch},
    {keys::kAxisZ, keys::kProxSwitch, &DialogState::zProxSwitch},
};

struct FieldRow {
  int field;
  const wchar_t* key;
  float otherwise;
};
constexpr FieldRow kFields[] = {
    {IDC_CS_CUTTER_LIFT, keys::kCutterLift, 0.125f},
    {IDC_CS_ENGRAVE_DEPTH, keys::kEngraveDepth, 0.0625f},
    {IDC_CS_TRAVERSE_SPEED, keys::kTraverseSpeed, 1.0f},
    {IDC_CS_CUTTER_DOWN_SPEED, keys::kCutterDownSpeed, 1.0f},
    {IDC_CS_CUTTER_UP_SPEED, keys::kCutterUpSpeed, 1.0f},
    {IDC_CS_ENGRAVE_SPEED, keys::kEngraveSpeed, 1.0f},
    {IDC_CS_GRID_SPEED, keys::kGridSpeed, 1.0f},
    {IDC_CS_ENGRAVE_DELAY, keys::kEngraveDelay, 0.0f},
};

constexpr int kGridSpeedRow[] = {IDC_CS_GRID_SPEED_LABEL, IDC_CS_GRID_SPEED, IDC_CS_MAX_GRID_SPEED};

// A depth of which even the bit pattern is zero counts as absent.
bool IsPresent(float depth) noexcept {
  return std::bit_cast<std::uint32_t>(depth) != 0;
}

// KEEP: only ever sets flags. A profile, which has no such keys, leaves them as they are.
void SetFlags(const SettingsFile& file) noexcept {
  for (const SwitchRow& row : kSwitches) {
    if (file.ReadInt(row.section, row.key, 0) != 0) dialogState.*row.flag = 1;
  }
  if (file.ReadInt(keys::kSpindle, keys::kHasSpindle, 0) != 0) hasSpindle = 1;
}

void LoadOptions(HWND dialog, const SettingsFile& file) noexcept {
  const bool byColor = file.ReadInt(keys::kEngraveSettings, keys::kEngraveByColor, 0) != 0;
  SetChecked(dialog, IDC_CS_ENGRAVE_BY_COLOR, byColor);
  ShowControl(dialog, IDC_CS_COLOR_SETTINGS, byColor);
  SetChecked(dialog, IDC_CS_DONT_LOWER_Z,
             file.ReadInt(keys::kEngraveSettings, keys::kDontLowerAirZ, 0) != 0);
}

void LoadMultiPass(HWND dialog, const SettingsFile& file) noexcept {
  const float maxDepth = file.ReadFloat(keys::kEngraveSettings, keys::kMaxPassDepth, 0.0f);
  const float finishDepth = file.ReadFloat(keys::kEngraveSettings, keys::kFinishPassDepth, 0.0f);
  if (IsPresent(maxDepth)) {
    SetDecimal(dialog, IDC_CS_PASS_DEPTH_OR_COPIES, maxDepth, kDecimals);
    dialogState.maxPassDepth = maxDepth;
  }
  if (IsPresent(finishDepth)) SetDecimal(dialog, IDC_CS_FINISH_DEPTH, finishDepth, kDecimals);

  ClearList(dialog, IDC_CS_MULTI_PASS_MODE);
  for (const wchar_t* text : {L"Max Pass Depth", L"Pass Copies"}) {
    AddListEntry(dialog, IDC_CS_MULTI_PASS_MODE, text);
  }
  const int mode =
      HasAirZ(file) ? 1 : file.ReadInt(keys::kEngraveSettings, keys::kMultiPassMode, 0);
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

  const bool multiPass = file.ReadInt(keys::kEngraveSettings, keys::kMultiPass, 0) != 0;
  SetChecked(dialog, IDC_CS_MULTI_PASS, multiPass);
  // KEEP: switched off, the list of modes stays; switched on with copies, the label is left alone.
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
  const int mode = file.ReadInt(keys::kAxisRound, keys::kMode, 0);
  Select(dialog, IDC_CS_ROUND_FIXTURE, mode);
  const bool fitted =
      EngraveFile(nullptr).ReadInt(keys::kAxisRound, keys::kHasRoundAttachment, 0) != 0;
  hasRoundAttachment = fitted ? 1 : 0;
  ShowControl(dialog, IDC_CS_ROUND_FIXTURE_LABEL, fitted);
  ShowControl(dialog, IDC_CS_ROUND_FIXTURE, fitted);
  ShowCircumference(dialog, fitted && mode != 0);
  FieldText circumference;
  file.ReadText(keys::kAxisRound, keys::kCircumference, L"", circumference.text, kFieldCapacity);
  SetText(dialog, IDC_CS_CIRCUMFERENCE, circumference.text);
}

}  // namespace

void LoadEngraveSettings(HWND dialog, const wchar_t* path) noexcept {
  if (dialogDevice == nullptr) return;
  if (path != nullptr) SetFilling(dialog, Filling::FromProfile);
  const SettingsFile file = EngraveFile(path);

  SetWindowTextW(dialog, dialogDevice->link.friendlyName);
  SetFlags(file);
  for (const FieldRow& row : kFields) {
    SetDecimal(dialog, row.field, file.ReadFloat(keys::kEngraveSettings, row.key, row.otherwise),
               kDecimals);
  }
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
    file.ReadText(keys::kEngraveSettings, keys::kMaterialProfile, L"", profile.text,
                  kFieldCapacity);
    FillMaterialList(dialog, profile.text);
  }
  if (path != nullptr) SetFilling(dialog, Filling::None);
}

}  // namespace k7
