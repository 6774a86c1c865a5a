#include "ui/set_table_zero_dialog.h"

#include "motion/probing.h"
#include "settings/file.h"
#include "settings/schema.h"
#include "ui/common/dialog_commands.h"
#include "ui/common/dialog_state.h"
#include "ui/common/dialog_text.h"
#include "ui/resource_ids.h"

namespace k7 {
namespace {

// The position in the list is the method of SetTableSurface.
constexpr const wchar_t* kModes[] = {L"Max Table Depth", L"Current Z Location", L"Do Z Probe"};
constexpr int kProbe = 2;

bool MayProbe() noexcept {
  return dialogState.mode == 1 && dialogState.busy == 0 && dialogState.HasAllSwitches();
}

void OnInit(HWND dialog) noexcept {
  if (dialogDevice == nullptr) return;
  const SettingsFile file{dialogDevice->link};
  SetDecimal(dialog, IDC_TZ_BUFFER, file.ReadFloat(settings::kTableBuffer), 3);
  // KEEP: this is not the key that OK writes, so the mode chosen last is not shown at the next
  // opening.
  std::int32_t mode = file.ReadInt(settings::kZeroTableMode);
  for (int i = 0; i < kProbe; ++i) AddListEntry(dialog, IDC_TZ_MODE, kModes[i]);
  if (MayProbe()) {
    AddListEntry(dialog, IDC_TZ_MODE, kModes[kProbe]);
  } else if (mode == kProbe) {
    mode = 0;
  }
  Select(dialog, IDC_TZ_MODE, mode);
}

void OnOk(HWND dialog) noexcept {
  if (dialogDevice != nullptr) {
    const SettingsFile file{dialogDevice->link};
    const float bufferInches = ReadDecimal(dialog, IDC_TZ_BUFFER);
    file.WriteFloat(settings::kTableBuffer, bufferInches);
    const int mode = Selection(dialog, IDC_TZ_MODE);
    file.WriteInt(settings::kTableZeroMode, mode);
    SetTableSurface(*dialogDevice, bufferInches, mode);
    dialogState.engraveBufferModified = 0;
  }
  EndDialog(dialog, IDOK);
}

constexpr CommandRow kCommands[] = {
    {IDOK, kAny, &OnOk},
    {IDCANCEL, kAny, &CancelDialog},
};

}  // namespace

INT_PTR ShowSetTableZeroDialog(HWND owner) noexcept {
  return OpenDialog(IDD_SET_TABLE_ZERO, owner, &CommandDialogProc<&OnInit, kCommands>);
}

}  // namespace k7
