#include "ui/set_cutter_dialog.h"

#include "device/module_state.h"
#include "motion/probing.h"
#include "motion/units.h"
#include "settings/settings_file.h"
#include "settings/settings_keys.h"
#include "ui/dialog_text.h"
#include "ui/module_instance.h"
#include "ui/resource_ids.h"
#include "ui/typed_number.h"

namespace k7 {
namespace {

constexpr float kLeastInches = 0.001f;  // up to here nothing is set

// GetDlgItemInt would do, but some platforms let it take the digits before other text.
bool IsDigitsOnly(const wchar_t* text) noexcept {
  const wchar_t* end = text;
  while (*end >= L'0' && *end <= L'9') ++end;
  return end != text && *end == L'\0';
}

void OnInit(HWND dialog) noexcept {
  if (dialogDevice == nullptr) return;
  const SettingsFile file{*dialogDevice};
  SetDecimal(dialog, IDC_SC_DEPTH,
             file.ReadFloat(keys::kEngraveSettings, keys::kLastCutterSet, 0.0f), 3);
}

void OnOk(HWND dialog) noexcept {
  if (dialogDevice != nullptr) {
    const float inches = ReadDecimal(dialog, IDC_SC_DEPTH);
    if (inches > kLeastInches) {
      SettingsFile{*dialogDevice}.WriteFloat(keys::kEngraveSettings, keys::kLastCutterSet, inches);
      ProbeAndLift(*dialogDevice, RoundToSteps(inches * 1000.0f));
    }
    // KEEP: text of digits only counts once more, as thousandths: "3" sets 3000 and then 3.
    const FieldText text = ReadText(dialog, IDC_SC_DEPTH);
    if (IsDigitsOnly(text.text)) ProbeAndLift(*dialogDevice, ParseWhole(text.text));
  }
  EndDialog(dialog, IDOK);
}

INT_PTR CALLBACK SetCutterDialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM) noexcept {
  if (message == WM_INITDIALOG) {
    OnInit(dialog);
    return TRUE;
  }
  if (message != WM_COMMAND) return FALSE;
  switch (LOWORD(wParam)) {
    case IDOK:
      OnOk(dialog);
      return TRUE;
    case IDCANCEL:
      EndDialog(dialog, IDCANCEL);
      return TRUE;
    default:
      return FALSE;
  }
}

}  // namespace

INT_PTR ShowSetCutterDialog(HWND owner) noexcept {
  return DialogBoxParamW(ModuleInstance(), MAKEINTRESOURCEW(IDD_SET_CUTTER), owner,
                         &SetCutterDialogProc, 0);
}

}  // namespace k7
