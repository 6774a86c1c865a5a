// What a person at the desk does: holds keys, works a dialog, whichever program it belongs to.
#include <string>

#include "slots.h"

namespace k7slots {
namespace {

HWND dialog = nullptr;  // the one that dialog-wait has found

template <typename Condition>
bool WaitFor(Condition condition) {
  for (int i = 0; i < 2000; ++i) {
    if (condition()) return true;
    Sleep(20);
  }
  return false;
}

HWND FindDialog(const std::wstring& title) {
  const HWND found = FindWindowW(L"#32770", title.c_str());
  return found != nullptr && IsWindowVisible(found) && IsWindowEnabled(found) ? found : nullptr;
}

// The dialog's procedure hears what it would hear of a click or a choice.
WPARAM Note(int id, WORD code) {
  return MAKEWPARAM(static_cast<WORD>(id), code);
}

}  // namespace

const Commands& DeskCommands() {
  static const Commands commands = {
      // key NUMBER down|up
      {"key",
       [](Driver&, const Words& w) {
         Key(Number(w, 1), w.size() > 2 && w[2] == "down");
         return std::string{"done"};
       }},
      // dialog-wait TITLE
      {"dialog-wait",
       [](Driver&, const Words& w) {
         std::string title;
         for (std::size_t i = 1; i < w.size(); ++i) title += (i > 1 ? " " : "") + w[i];
         const bool open = WaitFor([&] { return (dialog = FindDialog(Wide(title))) != nullptr; });
         return std::string{open ? "open" : "none"};
       }},
      {"dialog-enabled",
       [](Driver&, const Words& w) {
         return Text(IsWindowEnabled(GetDlgItem(dialog, static_cast<int>(Number(w, 1)))));
       }},
      // dialog-choose ID INDEX: an entry of a list
      {"dialog-choose",
       [](Driver&, const Words& w) {
         const int id = static_cast<int>(Number(w, 1));
         const HWND list = GetDlgItem(dialog, id);
         SendMessageW(list, CB_SETCURSEL, Number(w, 2), 0);
         SendMessageW(dialog, WM_COMMAND, Note(id, CBN_SELCHANGE), reinterpret_cast<LPARAM>(list));
         return Text(SendMessageW(list, CB_GETCURSEL, 0, 0));
       }},
      // dialog-press ID: a button that closes the dialog
      {"dialog-press",
       [](Driver&, const Words& w) {
         const int id = static_cast<int>(Number(w, 1));
         PostMessageW(dialog, WM_COMMAND, Note(id, BN_CLICKED),
                      reinterpret_cast<LPARAM>(GetDlgItem(dialog, id)));
         return std::string{WaitFor([] { return !IsWindow(dialog); }) ? "closed" : "still open"};
       }},
  };
  return commands;
}

}  // namespace k7slots
