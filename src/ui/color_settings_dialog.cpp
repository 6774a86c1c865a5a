#include "ui/color_settings_dialog.h"

#include "device/device_state.h"
#include "device/module_state.h"
#include "ui/common/dialog_commands.h"
#include "ui/common/dialog_text.h"
#include "ui/common/solid_brush.h"
#include "ui/host_colors.h"
#include "ui/resource_ids.h"

namespace k7 {
namespace {

// One entry of the host's table, in its order.
struct ColorRow {
  int swatch;
  int check;
};
constexpr ColorRow kRows[kHostColors] = {
    {IDC_CO_SWATCH_0, IDC_CO_CHECK_0},   {IDC_CO_SWATCH_1, IDC_CO_CHECK_1},
    {IDC_CO_SWATCH_2, IDC_CO_CHECK_2},   {IDC_CO_SWATCH_3, IDC_CO_CHECK_3},
    {IDC_CO_SWATCH_4, IDC_CO_CHECK_4},   {IDC_CO_SWATCH_5, IDC_CO_CHECK_5},
    {IDC_CO_SWATCH_6, IDC_CO_CHECK_6},   {IDC_CO_SWATCH_7, IDC_CO_CHECK_7},
    {IDC_CO_SWATCH_8, IDC_CO_CHECK_8},   {IDC_CO_SWATCH_9, IDC_CO_CHECK_9},
    {IDC_CO_SWATCH_10, IDC_CO_CHECK_10}, {IDC_CO_SWATCH_11, IDC_CO_CHECK_11},
    {IDC_CO_SWATCH_12, IDC_CO_CHECK_12}, {IDC_CO_SWATCH_13, IDC_CO_CHECK_13},
    {IDC_CO_SWATCH_14, IDC_CO_CHECK_14}, {IDC_CO_SWATCH_15, IDC_CO_CHECK_15},
};
constexpr std::uint32_t kWhite = 0xFFFFFF;

// What one open dialog keeps.
struct Swatches {
  SolidBrush brushes[kHostColors];  // none where the row is hidden
};

HostColors TableOfHost() noexcept {
  if (dialogDevice == nullptr || dialogDevice->host.hostColorTlsIndex == 0)
    return HostColors{nullptr};
  return HostColors{TlsGetValue(dialogDevice->host.hostColorTlsIndex)};
}

void OnInit(HWND dialog) noexcept {
  Swatches& swatches = *StateOf<Swatches>(dialog);
  const HostColors table = TableOfHost();
  if (!table.IsPresent()) return;
  for (int i = 0; i < kHostColors; ++i) {
    // KEEP: white is the colour of the material and never offered, whatever its use count.
    if (table.Color(i) == kWhite || table.UseCount(i) < 1) {
      ShowControl(dialog, kRows[i].swatch, false);
      ShowControl(dialog, kRows[i].check, false);
      continue;
    }
    swatches.brushes[i].Make(table.Color(i));
    if (table.Flag(i) == 1) SetChecked(dialog, kRows[i].check, true);
  }
}

// The brush that a swatch is painted with; null: the control is painted as usual.
HBRUSH BrushOf(const Swatches& swatches, HWND control) noexcept {
  const int id = GetDlgCtrlID(control);
  for (int i = 0; i < kHostColors; ++i) {
    if (kRows[i].swatch == id) return swatches.brushes[i].Get();
  }
  return nullptr;
}

void OnOk(HWND dialog) noexcept {
  bool on[kHostColors];
  bool any = false;
  // KEEP: a hidden row counts as unchecked, and is switched off below.
  for (int i = 0; i < kHostColors; ++i) {
    on[i] = IsChecked(dialog, kRows[i].check);
    any = any || on[i];
  }
  if (!any) {
    MessageBoxW(dialog, L"At least 1 color MUST be turned on", L"Warning!", MB_OK);
    return;
  }
  if (const HostColors table = TableOfHost(); table.IsPresent()) {
    for (int i = 0; i < kHostColors; ++i) table.SetFlag(i, on[i] ? 1 : 0);
  }
  EndDialog(dialog, IDOK);
}

constexpr CommandRow kCommands[] = {
    {IDOK, kAny, &OnOk},
    {IDCANCEL, kAny, &CancelDialog},
};

INT_PTR CALLBACK ColorSettingsDialogProc(HWND dialog, UINT message, WPARAM wParam,
                                         LPARAM lParam) noexcept {
  if (message == WM_INITDIALOG) KeepState(dialog, lParam);
  const Swatches* const swatches = StateOf<Swatches>(dialog);
  if (swatches == nullptr) return FALSE;
  if (message == WM_CTLCOLORSTATIC) {
    return reinterpret_cast<INT_PTR>(BrushOf(*swatches, reinterpret_cast<HWND>(lParam)));
  }
  return CommandDialogProc<&OnInit, kCommands>(dialog, message, wParam, lParam);
}

}  // namespace

INT_PTR ShowColorSettingsDialog(HWND owner) noexcept {
  Swatches swatches;
  return OpenDialog(IDD_COLOR_SETTINGS, owner, &ColorSettingsDialogProc,
                    reinterpret_cast<LPARAM>(&swatches));
}

}  // namespace k7
