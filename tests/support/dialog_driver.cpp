#include "support/dialog_driver.h"

#include <algorithm>

#include "support/wait_until.h"

namespace k7test {

namespace {

std::wstring WindowText(HWND window) {
  wchar_t text[2048] = L"";
  SendMessageW(window, WM_GETTEXT, 2048, reinterpret_cast<LPARAM>(text));
  return text;
}

std::wstring ClassOf(HWND window) {
  wchar_t name[64] = L"";
  GetClassNameW(window, name, 64);
  return name;
}

BOOL CALLBACK KeepIfTakesInput(HWND window, LPARAM found) {
  if (ClassOf(window) != L"#32770" || !IsWindowVisible(window) || !IsWindowEnabled(window)) {
    return TRUE;
  }
  *reinterpret_cast<HWND*>(found) = window;
  return FALSE;
}

BOOL CALLBACK ReadBoxChild(HWND child, LPARAM seen) {
  BoxSeen& box = *reinterpret_cast<BoxSeen*>(seen);
  if ((GetWindowLongW(child, GWL_STYLE) & WS_VISIBLE) == 0) return TRUE;
  const std::wstring kind = ClassOf(child);
  std::wstring text = WindowText(child);
  if (kind == L"Button") {
    text.erase(std::remove(text.begin(), text.end(), L'&'), text.end());
    box.buttons.push_back(text);
  } else if (kind == L"Static" && (GetWindowLongW(child, GWL_STYLE) & SS_TYPEMASK) == SS_ICON) {
    box.hasIcon = box.hasIcon || SendMessageW(child, STM_GETICON, 0, 0) != 0;
  } else if (!text.empty()) {
    box.text = text;
  }
  return TRUE;
}

}  // namespace

DialogDriver::DialogDriver(std::function<std::int64_t()> show)
    : thread_{[this, show = std::move(show)] {
        threadId_ = GetCurrentThreadId();
        result_ = show();
        closed_ = true;
      }} {
  WaitUntil([this] { return threadId_ != 0; });
}

DialogDriver::~DialogDriver() {
  WaitUntil([this] {
    if (const HWND top = Top(); top != nullptr) PostMessageW(top, WM_COMMAND, IDCANCEL, 0);
    return closed_.load();
  });
  thread_.join();
}

HWND DialogDriver::Top() const {
  HWND found = nullptr;
  EnumThreadWindows(threadId_, &KeepIfTakesInput, reinterpret_cast<LPARAM>(&found));
  return found;
}

HWND DialogDriver::WaitForDialog() const {
  return WaitForDialogOver(nullptr);
}

HWND DialogDriver::WaitForDialogOver(HWND below) const {
  HWND top = nullptr;
  WaitUntil([&] {
    top = Top();
    return closed_ || (top != nullptr && top != below);
  });
  return top == below ? nullptr : top;
}

bool DialogDriver::WaitUntilTop(HWND dialog) const {
  return WaitUntil([&] { return Top() == dialog; });
}

BoxSeen DialogDriver::AnswerBox(HWND below, int button) {
  BoxSeen box;
  const HWND window = WaitForDialogOver(below);
  if (window == nullptr) return box;
  box.caption = WindowText(window);
  box.owner = GetWindow(window, GW_OWNER);
  EnumChildWindows(window, &ReadBoxChild, reinterpret_cast<LPARAM>(&box));
  PostMessageW(window, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
               reinterpret_cast<LPARAM>(GetDlgItem(window, button)));
  WaitUntil([&] { return Top() != window; });
  return box;
}

bool DialogDriver::WaitUntilClosed() const {
  return WaitUntil([this] { return closed_.load(); });
}

std::int64_t DialogDriver::Result() const {
  WaitUntilClosed();
  return result_;
}

HWND DialogDriver::Focused() const {
  GUITHREADINFO info{};
  info.cbSize = sizeof info;
  return GetGUIThreadInfo(threadId_, &info) ? info.hwndFocus : nullptr;
}

int DialogDriver::FocusedControl() const {
  const HWND focused = Focused();
  return focused == nullptr ? 0 : GetDlgCtrlID(focused);
}

HWND DialogDriver::WaitForFocusIn(HWND dialog) const {
  HWND focused = nullptr;
  WaitUntil([&] {
    focused = Focused();
    if (focused == nullptr) SetForegroundWindow(dialog);
    return IsChild(dialog, focused) != FALSE;
  });
  return focused;
}

void DialogDriver::PressKey(HWND dialog, WPARAM virtualKey) const {
  PostMessageW(WaitForFocusIn(dialog), WM_KEYDOWN, virtualKey, 1);
}

std::vector<int> DialogDriver::TabRound(HWND dialog) const {
  constexpr std::size_t kMany = 100;
  std::vector<int> round{FocusedControl()};
  while (round.size() < kMany) {
    const int from = round.back();
    PressKey(dialog, VK_TAB);
    WaitUntil([&] { return FocusedControl() != from && FocusedControl() != 0; });
    const int to = FocusedControl();
    if (to == round.front()) break;
    round.push_back(to);
  }
  return round;
}

bool DialogDriver::WaitForFocus(HWND dialog, int id) const {
  return WaitUntil([&] {
    const int focused = FocusedControl();
    if (focused == 0) SetForegroundWindow(dialog);
    return focused == id;
  });
}

std::wstring TextOf(HWND dialog, int id) {
  return WindowText(GetDlgItem(dialog, id));
}

void TypeText(HWND dialog, int id, const std::wstring& text) {
  SendDlgItemMessageW(dialog, id, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

void Click(HWND dialog, int id) {
  SendDlgItemMessageW(dialog, id, BM_CLICK, 0, 0);
}

void Press(HWND dialog, int id) {
  PostMessageW(GetDlgItem(dialog, id), BM_CLICK, 0, 0);
}

void SendCommand(HWND dialog, int id, int notification) {
  SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(id, notification),
               reinterpret_cast<LPARAM>(GetDlgItem(dialog, id)));
}

bool IsShown(HWND dialog, int id) {
  return (GetWindowLongW(GetDlgItem(dialog, id), GWL_STYLE) & WS_VISIBLE) != 0;
}

bool IsEnabled(HWND dialog, int id) {
  return IsWindowEnabled(GetDlgItem(dialog, id)) != FALSE;
}

bool IsBoxChecked(HWND dialog, int id) {
  return SendDlgItemMessageW(dialog, id, BM_GETCHECK, 0, 0) == BST_CHECKED;
}

std::vector<std::wstring> EntriesOf(HWND dialog, int id) {
  std::vector<std::wstring> entries;
  const auto count = SendDlgItemMessageW(dialog, id, CB_GETCOUNT, 0, 0);
  for (LRESULT i = 0; i < count; ++i) {
    std::wstring text(
        static_cast<std::size_t>(
            SendDlgItemMessageW(dialog, id, CB_GETLBTEXTLEN, static_cast<WPARAM>(i), 0) + 1),
        L'\0');
    SendDlgItemMessageW(dialog, id, CB_GETLBTEXT, static_cast<WPARAM>(i),
                        reinterpret_cast<LPARAM>(text.data()));
    text.pop_back();
    entries.push_back(text);
  }
  return entries;
}

int SelectionOf(HWND dialog, int id) {
  return static_cast<int>(SendDlgItemMessageW(dialog, id, CB_GETCURSEL, 0, 0));
}

void Pick(HWND dialog, int id, int index) {
  SendDlgItemMessageW(dialog, id, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
  SendCommand(dialog, id, CBN_SELCHANGE);
}

std::wstring PickedText(HWND dialog, int id) {
  return TextOf(dialog, id);
}

std::pair<int, int> SelectedRange(HWND dialog, int id) {
  DWORD first = 0;
  DWORD end = 0;
  SendDlgItemMessageW(dialog, id, EM_GETSEL, reinterpret_cast<WPARAM>(&first),
                      reinterpret_cast<LPARAM>(&end));
  return {static_cast<int>(first), static_cast<int>(end)};
}

}  // namespace k7test
