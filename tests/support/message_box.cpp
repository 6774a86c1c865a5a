#include "support/message_box.h"

#include <algorithm>
#include <cwchar>
#include <utility>

#include "support/wait_until.h"

namespace k7test {

namespace {

constexpr int kTextId = 0xFFFF;  // the static control of a message box

struct Search {
  const std::wstring& caption;
  HWND found = nullptr;
};

BOOL CALLBACK MatchBox(HWND window, LPARAM parameter) {
  auto& search = *reinterpret_cast<Search*>(parameter);
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  wchar_t kind[16] = L"";
  GetClassNameW(window, kind, 16);
  wchar_t caption[256] = L"";
  if (process != GetCurrentProcessId() || !IsWindowVisible(window) ||
      std::wcscmp(kind, L"#32770") != 0) {
    return TRUE;
  }
  GetWindowTextW(window, caption, 256);
  if (search.caption != caption || GetDlgItem(window, kTextId) == nullptr) return TRUE;
  search.found = window;
  return FALSE;
}

HWND FindBox(const std::wstring& caption) {
  Search search{caption};
  EnumWindows(MatchBox, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

BOOL CALLBACK CollectButton(HWND window, LPARAM parameter) {
  wchar_t kind[16] = L"";
  GetClassNameW(window, kind, 16);
  if (_wcsicmp(kind, L"Button") == 0 && IsWindowVisible(window)) {
    reinterpret_cast<std::vector<int>*>(parameter)->push_back(GetDlgCtrlID(window));
  }
  return TRUE;
}

}  // namespace

MessageBoxAnswer::MessageBoxAnswer(std::wstring caption, int buttonId)
    : caption_{std::move(caption)}, buttonId_{buttonId}, thread_{[this] { Run(); }} {}

MessageBoxAnswer::~MessageBoxAnswer() {
  stop_ = true;
  if (thread_.joinable()) thread_.join();
}

bool MessageBoxAnswer::Appeared() {
  WaitUntil([&] { return answered_.load(); });
  stop_ = true;
  if (thread_.joinable()) thread_.join();
  return answered_;
}

void MessageBoxAnswer::Read(HWND box) {
  wchar_t text[1024] = L"";
  GetDlgItemTextW(box, kTextId, text, 1024);
  text_ = text;
  owner_ = GetWindow(box, GW_OWNER);
  buttons_.clear();
  EnumChildWindows(box, CollectButton, reinterpret_cast<LPARAM>(&buttons_));
  std::sort(buttons_.begin(), buttons_.end());
}

// A box that has just been made may not take the press yet: it is pressed until it has gone,
// however long that takes.
void MessageBoxAnswer::Run() {
  HWND pressed = nullptr;
  while (!stop_) {
    if (pressed != nullptr && !IsWindow(pressed)) {
      answered_ = true;
      return;
    }
    if (const HWND box = FindBox(caption_)) {
      if (box != pressed) Read(box);
      pressed = box;
      PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(buttonId_),
                   reinterpret_cast<LPARAM>(GetDlgItem(box, buttonId_)));
    }
    Sleep(20);
  }
}

bool MessageBoxIsShown(const std::wstring& caption) {
  return FindBox(caption) != nullptr;
}

}  // namespace k7test
