#include "ui/common/dialog_state.h"
#include "ui/common/dialog_text.h"
#include "ui/resource_ids.h"
#include "ui/settings/engrave_settings.h"
#include "ui/settings/validation.h"

namespace k7 {
namespace {

float NumberOf(const void* context, int control) noexcept {
  return ReadDecimal(static_cast<HWND>(const_cast<void*>(context)), control);
}

}  // namespace

bool ValidateEngraveSettings(HWND dialog) noexcept {
  const ValidationRule* const broken = FirstBrokenRule({
      .valueOf = &NumberOf,
      .context = dialog,
      .multiPass = IsChecked(dialog, IDC_CS_MULTI_PASS),
      .passCopies = Selection(dialog, IDC_CS_MULTI_PASS_MODE) != 0,
      .roundFixture = Selection(dialog, IDC_CS_ROUND_FIXTURE) != 0,
      .bufferModified = dialogState.engraveBufferModified == 1,
  });
  if (broken == nullptr) return true;
  MessageBoxW(dialog, broken->text, broken->caption, MB_OK);
  if (broken->field != 0) {
    SetFocus(GetDlgItem(dialog, broken->field));
    SendDlgItemMessageW(dialog, broken->field, EM_SETSEL, 0, -1);
  }
  return false;
}

}  // namespace k7
