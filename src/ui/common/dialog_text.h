// Fields of a dialog: their texts and numbers, check boxes, lists, and what is shown.
#pragma once

#include <windows.h>

#include <cstdint>
#include <initializer_list>

namespace k7 {

inline constexpr int kFieldCapacity = 512;  // characters of any field that is read, with terminator

// The text of a field, cut to kFieldCapacity; empty when there is no such field.
struct FieldText {
  wchar_t text[kFieldCapacity];
  bool IsEmpty() const noexcept { return text[0] == L'\0'; }
};
FieldText ReadText(HWND dialog, int id) noexcept;
void SetText(HWND dialog, int id, const wchar_t* text) noexcept;

// Shows a number with FormatDecimal, which ends the process for 32 digits or more before the point.
void SetDecimal(HWND dialog, int id, float value, int decimals) noexcept;
// The same after a fixed text: "Last Cutter: 0.125".
void SetLabelledDecimal(HWND dialog, int id, const wchar_t* label, float value,
                        int decimals) noexcept;
// The number at the start of a field's text (base/parse_number.h); 0 when there is none.
float ReadDecimal(HWND dialog, int id) noexcept;
std::int32_t ReadWhole(HWND dialog, int id) noexcept;

void SetChecked(HWND dialog, int id, bool checked) noexcept;
bool IsChecked(HWND dialog, int id) noexcept;

void ClearList(HWND dialog, int id) noexcept;
// Appends to a drop-down list. The lists have the sort style, but a stored selection is a position
// in the order of filling, so the entry is not sorted in.
void AddListEntry(HWND dialog, int id, const wchar_t* text) noexcept;
// The same with a number shown by FormatDecimal.
void AddDecimalEntry(HWND dialog, int id, float value, int decimals) noexcept;
int ListCount(HWND dialog, int id) noexcept;
// Position of the selection; -1 = none.
int Selection(HWND dialog, int id) noexcept;
void Select(HWND dialog, int id, int index) noexcept;

void ShowControl(HWND dialog, int id, bool show) noexcept;
void EnableControl(HWND dialog, int id, bool enable) noexcept;
template <typename Ids>
void ShowControls(HWND dialog, const Ids& ids, bool show) noexcept {
  for (const int id : ids) ShowControl(dialog, id, show);
}
template <typename Ids>
void EnableControls(HWND dialog, const Ids& ids, bool enable) noexcept {
  for (const int id : ids) EnableControl(dialog, id, enable);
}

}  // namespace k7
