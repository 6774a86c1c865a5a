#include "support/template_check.h"

#include "ui/module_instance.h"

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

std::wstring WithoutPrefix(const std::wstring& text) {
  std::wstring plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == L'&' && i + 1 < text.size()) ++i;
    plain += text[i];
  }
  return plain;
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

std::vector<std::string> TemplateOf::Overlaps() const {
  std::vector<std::string> found;
  for (std::size_t i = 0; i < controls_.size(); ++i) {
    for (std::size_t k = i + 1; k < controls_.size(); ++k) {
      RECT common{};
      if (controls_[i].kind == L"G" || controls_[k].kind == L"G") continue;
      if (IntersectRect(&common, &controls_[i].place, &controls_[k].place)) {
        found.push_back(Name(controls_[i]) + " and " + Name(controls_[k]));
      }
    }
  }
  return found;
}

std::vector<std::string> TemplateOf::OutsideMargins() const {
  constexpr LONG kMargin = 6;  // 7, and one for the rounding to pixels and back
  const SIZE size = SizeInUnits();
  std::vector<std::string> found;
  for (const ControlSeen& control : controls_) {
    const RECT& place = control.place;
    if (place.left < kMargin || place.top < kMargin || place.right > size.cx - kMargin ||
        place.bottom > size.cy - kMargin) {
      found.push_back(Name(control));
    }
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
      if (font.WidthOf(WithoutPrefix(text)) + frame >
          font.UnitsToPixels(control.place.right - control.place.left)) {
        found.push_back(Name(control) + ": " + Narrow(text) + " at " + std::to_string(dotsPerInch));
      }
    };
    for (const ControlSeen& control : controls_) check(control, control.text);
    for (const auto& [id, text] : extraTexts) {
      if (const ControlSeen* const control = Find(id)) check(*control, text);
    }
  }
  return found;
}

}  // namespace k7test
