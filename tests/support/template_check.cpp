#include "support/template_check.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ui/common/module_instance.h"

namespace k7test {

namespace {

INT_PTR CALLBACK NoProcedure(HWND, UINT, WPARAM, LPARAM) {
  return FALSE;
}

std::wstring KindOf(HWND control, LONG style) {
  wchar_t name[64] = L"";
  GetClassNameW(control, name, 64);
  const std::wstring kind = name;
  if (kind == L"Static") return L"S";
  if (kind == L"Edit") return L"E";
  if (kind == L"ComboBox") return L"C";
  switch (style & BS_TYPEMASK) {
    case BS_GROUPBOX:
      return L"G";
    case BS_AUTOCHECKBOX:
      return L"X";
    case BS_DEFPUSHBUTTON:
      return L"D";
    default:
      return L"B";
  }
}

std::string Narrow(const std::wstring& text) {
  std::string narrow;
  for (const wchar_t c : text) narrow += static_cast<char>(c);
  return narrow;
}

std::string Name(const ControlSeen& control) {
  return std::to_string(control.id) + " \"" + Narrow(control.text) + "\"";
}

BOOL CALLBACK Collect(HWND control, LPARAM windows) {
  reinterpret_cast<std::vector<HWND>*>(windows)->push_back(control);
  return TRUE;
}

// Pixels of a text, and of the horizontal dialog unit, in the dialog font at a resolution.
class DialogFont {
 public:
  explicit DialogFont(int dotsPerInch) : device_{CreateCompatibleDC(nullptr)} {
    font_ = CreateFontW(-MulDiv(8, dotsPerInch, 72), 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE,
                        DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY,
                        DEFAULT_PITCH | FF_DONTCARE, L"MS Shell Dlg");
    before_ = SelectObject(device_, font_);
    const int letters = WidthOf(L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
    unit_ = (letters / 26 + 1) / 2;
  }
  ~DialogFont() {
    SelectObject(device_, before_);
    DeleteObject(font_);
    DeleteDC(device_);
  }
  int WidthOf(const std::wstring& text) const {
    SIZE size{};
    GetTextExtentPoint32W(device_, text.c_str(), static_cast<int>(text.size()), &size);
    return size.cx;
  }
  int UnitsToPixels(LONG units) const { return MulDiv(static_cast<int>(units), unit_, 4); }

 private:
  HDC device_;
  HFONT font_;
  HGDIOBJ before_;
  int unit_ = 1;
};

// Pixels that a control needs beside its text.
int FrameOf(const std::wstring& kind) {
  if (kind == L"X") return 18;
  if (kind == L"C") return 26;
  if (kind == L"E") return 8;
  if (kind == L"B" || kind == L"D") return 8;
  if (kind == L"G") return 16;
  return 0;
}

// Height in units below which a control cuts its text.
LONG LeastUnitsHigh(const std::wstring& kind) {
  if (kind == L"B" || kind == L"D") return 14;
  if (kind == L"E") return 12;
  if (kind == L"X") return 10;
  return 8;
}

// As the text is drawn: "&&" is one.
std::wstring AsDrawn(const std::wstring& text) {
  std::wstring drawn;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == L'&' && i + 1 < text.size()) ++i;
    drawn += text[i];
  }
  return drawn;
}

bool HasAccessKey(const std::wstring& text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != L'&') continue;
    if (i + 1 == text.size() || text[i + 1] != L'&') return true;
    ++i;
  }
  return false;
}

bool IsInside(const RECT& inner, const RECT& outer) {
  return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
         inner.bottom <= outer.bottom;
}

}  // namespace

TemplateOf::TemplateOf(int dialogId) {
  window_ = CreateDialogParamW(k7::ModuleInstance(), MAKEINTRESOURCEW(dialogId), nullptr,
                               &NoProcedure, 0);
  RECT base{0, 0, 4000, 8000};
  MapDialogRect(window_, &base);
  std::vector<HWND> windows;
  EnumChildWindows(window_, &Collect, reinterpret_cast<LPARAM>(&windows));
  for (const HWND window : windows) {
    ControlSeen control{};
    wchar_t text[256] = L"";
    GetWindowTextW(window, text, 256);
    control.text = text;
    control.style = GetWindowLongW(window, GWL_STYLE);
    control.id = GetDlgCtrlID(window);
    control.kind = KindOf(window, control.style);
    control.shown = (control.style & WS_VISIBLE) != 0;
    control.enabled = (control.style & WS_DISABLED) == 0;
    RECT place{};
    GetWindowRect(window, &place);
    MapWindowPoints(nullptr, window_, reinterpret_cast<POINT*>(&place), 2);
    control.pixels = place;
    control.place = {MulDiv(place.left, 4000, base.right), MulDiv(place.top, 8000, base.bottom),
                     MulDiv(place.right, 4000, base.right),
                     MulDiv(place.bottom, 8000, base.bottom)};
    controls_.push_back(control);
  }
}

TemplateOf::~TemplateOf() {
  DestroyWindow(window_);
}

const ControlSeen* TemplateOf::Find(int id) const {
  for (const ControlSeen& control : controls_) {
    if (control.id == id) return &control;
  }
  return nullptr;
}

SIZE TemplateOf::SizeInUnits() const {
  RECT base{0, 0, 4000, 8000};
  MapDialogRect(window_, &base);
  RECT client{};
  GetClientRect(window_, &client);
  return {MulDiv(client.right, 4000, base.right), MulDiv(client.bottom, 8000, base.bottom)};
}

int TemplateOf::PixelsWide(LONG units) const {
  RECT unit{0, 0, units, 0};
  MapDialogRect(window_, &unit);
  return unit.right;
}

int TemplateOf::PixelsHigh(LONG units) const {
  RECT unit{0, 0, 0, units};
  MapDialogRect(window_, &unit);
  return unit.bottom;
}

std::vector<std::string> TemplateOf::Overlaps() const {
  const auto holds = [this](const ControlSeen& group, const ControlSeen& control) {
    RECT inside = group.pixels;
    inside.top += PixelsHigh(8);
    return group.kind == L"G" && control.kind != L"G" && IsInside(control.pixels, inside);
  };
  std::vector<std::string> found;
  for (std::size_t i = 0; i < controls_.size(); ++i) {
    for (std::size_t k = i + 1; k < controls_.size(); ++k) {
      const ControlSeen& one = controls_[i];
      const ControlSeen& other = controls_[k];
      RECT common{};
      if (!IntersectRect(&common, &one.pixels, &other.pixels)) continue;
      if (!holds(one, other) && !holds(other, one)) {
        found.push_back(Name(one) + " and " + Name(other));
      }
    }
  }
  return found;
}

std::vector<std::string> TemplateOf::OutsideMargins() const {
  RECT inside{};
  GetClientRect(window_, &inside);
  InflateRect(&inside, -PixelsWide(7), -PixelsHigh(7));
  // Right and bottom are sums of two rounded lengths.
  ++inside.right;
  ++inside.bottom;
  std::vector<std::string> found;
  for (const ControlSeen& control : controls_) {
    if (!IsInside(control.pixels, inside)) found.push_back(Name(control));
  }
  return found;
}

std::vector<std::string> TemplateOf::AccessKeys() const {
  std::vector<std::string> found;
  for (const ControlSeen& control : controls_) {
    if (HasAccessKey(control.text)) found.push_back(Name(control));
  }
  return found;
}

std::vector<std::string> TemplateOf::ClippedTexts(
    const std::vector<std::pair<int, std::wstring>>& extraTexts) const {
  std::vector<std::string> found;
  for (const int dotsPerInch : {96, 120, 144}) {
    const DialogFont font{dotsPerInch};
    const auto check = [&](const ControlSeen& control, const std::wstring& text) {
      const int frame = MulDiv(FrameOf(control.kind), dotsPerInch, 96);
      if (font.WidthOf(AsDrawn(text)) + frame >
          font.UnitsToPixels(control.place.right - control.place.left)) {
        found.push_back(Name(control) + ": " + Narrow(text) + " at " + std::to_string(dotsPerInch));
      }
    };
    for (const ControlSeen& control : controls_) check(control, control.text);
    for (const auto& [id, text] : extraTexts) {
      const ControlSeen* const control = Find(id);
      if (control == nullptr) {
        found.push_back("no control " + std::to_string(id));
      } else {
        check(*control, text);
      }
    }
  }
  for (const ControlSeen& control : controls_) {
    if (control.text.empty() && control.kind != L"E") continue;
    if (control.pixels.bottom - control.pixels.top < PixelsHigh(LeastUnitsHigh(control.kind)) - 1) {
      found.push_back(Name(control) + " is too low");
    }
  }
  return found;
}

void ExpectControls(const TemplateOf& dialog, std::span<const ControlRow> rows,
                    const std::function<bool(int id)>& enabled) {
  ASSERT_NE(dialog.Window(), nullptr);
  for (const ControlRow& row : rows) {
    const ControlSeen* const control = dialog.Find(row.id);
    ASSERT_NE(control, nullptr) << row.id;
    EXPECT_EQ(control->kind, row.kind) << row.id;
    EXPECT_EQ(control->text, row.text) << row.id;
    EXPECT_EQ(control->shown, row.shown) << row.id;
    EXPECT_EQ(control->enabled, enabled(row.id)) << row.id;
  }
  EXPECT_EQ(dialog.Controls().size(), rows.size()) << "and no others";
  EXPECT_THAT(dialog.AccessKeys(), testing::IsEmpty());
}

void ExpectFrame(const TemplateOf& dialog, const wchar_t* caption, SIZE units) {
  constexpr LONG kStyle = static_cast<LONG>(WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME);
  EXPECT_EQ(GetWindowLongW(dialog.Window(), GWL_STYLE) & kStyle, kStyle);
  wchar_t seen[64] = L"";
  GetWindowTextW(dialog.Window(), seen, 64);
  EXPECT_STREQ(seen, caption);
  EXPECT_EQ(dialog.SizeInUnits().cx, units.cx);
  EXPECT_EQ(dialog.SizeInUnits().cy, units.cy);
}

void ExpectTabStops(const TemplateOf& dialog) {
  for (const ControlSeen& control : dialog.Controls()) {
    const bool takesInput = control.kind != L"S" && control.kind != L"G" &&
                            (control.kind != L"E" || (control.style & ES_READONLY) == 0);
    EXPECT_EQ((control.style & WS_TABSTOP) != 0, takesInput) << control.id;
  }
}

void ExpectCarefulLayout(const TemplateOf& dialog,
                         const std::vector<std::pair<int, std::wstring>>& extraTexts) {
  EXPECT_THAT(dialog.Overlaps(), testing::IsEmpty());
  EXPECT_THAT(dialog.OutsideMargins(), testing::IsEmpty());
  EXPECT_THAT(dialog.ClippedTexts(extraTexts), testing::IsEmpty());
}

}  // namespace k7test
