#include "ui/set_cutter_dialog.h"

#include <cstdint>

#include "base/arithmetic.h"
#include "device/module_state.h"
#include "motion/probing.h"
#include "settings/file.h"
#include "settings/schema.h"
#include "ui/common/dialog_commands.h"
#include "ui/common/dialog_text.h"
#include "ui/resource_ids.h"

namespace k7 {
namespace {

constexpr float kLeastInches = 0.001f;  // this or less sets nothing

// Reads a text that consists of digits only as an unsigned whole number; 0 for any other text and
// for numbers that need more than 32 bits. GetDlgItemInt does not serve here, because on some
// platforms it also accepts digits with other text after them.
std::uint32_t ReadDigits(const wchar_t* text) noexcept {
  std::uint64_t number = 0;
  for (; *text >= L'0' && *text <= L'9'; ++text) {
    number = number * 10 + static_cast<std::uint64_t>(*text - L'0');
    if (number > UINT32_MAX) return 0;
  }
  return *text == L'\0' ? static_cast<std::uint32_t>(number) : 0;
}

void OnInit(HWND dialog) noexcept {
  if (dialogDevice == nullptr) return;
  const SettingsFile file{dialogDevice->link};
  SetDecimal(dialog, IDC_SC_DEPTH, file.ReadFloat(settings::kLastCutterSet), 3);
}

void OnOk(HWND dialog) noexcept {
  if (dialogDevice != nullptr) {
    const float inches = ReadDecimal(dialog, IDC_SC_DEPTH);
    if (inches > kLeastInches) {
      SettingsFile{dialogDevice->link}.WriteFloat(settings::kLastCutterSet, inches);
      ProbeAndLift(*dialogDevice, RoundToSteps(inches * 1000.0f));
    }
    // KEEP: text of digits only is used a second time, as thousandths: "3" sets 3000 and then 3.
    // 2147483648 and more become a negative lift, which is refused.
    const std::uint32_t thousandths = ReadDigits(ReadText(dialog, IDC_SC_DEPTH).text);
    ProbeAndLift(*dialogDevice, static_cast<std::int32_t>(thousandths));
  }
  EndDialog(dialog, IDOK);
}

constexpr CommandRow kCommands[] = {
    {IDOK, kAny, &OnOk},
    {IDCANCEL, kAny, &CancelDialog},
};

}  // namespace

INT_PTR ShowSetCutterDialog(HWND owner) noexcept {
  return OpenDialog(IDD_SET_CUTTER, owner, &CommandDialogProc<&OnInit, kCommands>);
}

}  // namespace k7
