#include "ui/common/dialog_text.h"

#include "base/bounded_copy.h"
#include "base/format_decimal.h"
#include "base/parse_number.h"

namespace k7 {
namespace {

constexpr int kNumberCapacity = 64;

}  // namespace

FieldText ReadText(HWND dialog, int id) noexcept {
  FieldText field;
  field.text[0] = L'\0';
  GetDlgItemTextW(dialog, id, field.text, kFieldCapacity);
  return field;
}

void SetText(HWND dialog, int id, const wchar_t* text) noexcept {
  SetDlgItemTextW(dialog, id, text);
}

void SetDecimal(HWND dialog, int id, float value, int decimals) noexcept {
  wchar_t number[kNumberCapacity];
  FormatDecimal(value, number, kNumberCapacity, decimals);
  SetText(dialog, id, number);
}

void SetLabelledDecimal(HWND dialog, int id, const wchar_t* label, float value,
                        int decimals) noexcept {
  wchar_t number[kNumberCapacity];
  FormatDecimal(value, number, kNumberCapacity, decimals);
  wchar_t text[2 * kNumberCapacity];
  CopyText(text, label);
  AppendText(text, number);
  SetText(dialog, id, text);
}

float ReadDecimal(HWND dialog, int id) noexcept {
  return ParseTypedDecimal(ReadText(dialog, id).text);
}

std::int32_t ReadWhole(HWND dialog, int id) noexcept {
  return ParseWhole(ReadText(dialog, id).text);
}

void SetChecked(HWND dialog, int id, bool checked) noexcept {
  SendDlgItemMessageW(dialog, id, BM_SETCHECK, checked ? BST_CHECKED : BST_UNCHECKED, 0);
}

bool IsChecked(HWND dialog, int id) noexcept {
  return SendDlgItemMessageW(dialog, id, BM_GETCHECK, 0, 0) == BST_CHECKED;
}

void ClearList(HWND dialog, int id) noexcept {
  SendDlgItemMessageW(dialog, id, CB_RESETCONTENT, 0, 0);
}

void AddListEntry(HWND dialog, int id, const wchar_t* text) noexcept {
  SendDlgItemMessageW(dialog, id, CB_INSERTSTRING, static_cast<WPARAM>(-1),
                      reinterpret_cast<LPARAM>(text));
}

void AddDecimalEntry(HWND dialog, int id, float value, int decimals) noexcept {
  wchar_t number[kNumberCapacity];
  FormatDecimal(value, number, kNumberCapacity, decimals);
  AddListEntry(dialog, id, number);
}

int ListCount(HWND dialog, int id) noexcept {
  return static_cast<int>(SendDlgItemMessageW(dialog, id, CB_GETCOUNT, 0, 0));
}

int Selection(HWND dialog, int id) noexcept {
  return static_cast<int>(SendDlgItemMessageW(dialog, id, CB_GETCURSEL, 0, 0));
}

void Select(HWND dialog, int id, int index) noexcept {
  SendDlgItemMessageW(dialog, id, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
}

void ShowControl(HWND dialog, int id, bool show) noexcept {
  ShowWindow(GetDlgItem(dialog, id), show ? SW_SHOW : SW_HIDE);
}

void EnableControl(HWND dialog, int id, bool enable) noexcept {
  EnableWindow(GetDlgItem(dialog, id), enable ? TRUE : FALSE);
}

}  // namespace k7
