// Opens dialogs and leads their messages to handlers. Each dialog lists its commands in a table,
// and one function looks them up for all dialogs.
#pragma once

#include <windows.h>

#include <span>

#include "ui/common/activation.h"
#include "ui/common/module_instance.h"

namespace k7 {

inline constexpr int kAny = -1;  // every notification code

struct CommandRow {
  int control;
  int notification;
  void (*handler)(HWND dialog) noexcept;
};

// Calls the handler of the first row for this control and notification. False: there is no such
// row, and the command is not handled. [host]
inline bool RunCommand(std::span<const CommandRow> commands, HWND dialog, WPARAM wParam) noexcept {
  for (const CommandRow& row : commands) {
    if (row.control != LOWORD(wParam)) continue;
    if (row.notification != kAny && row.notification != HIWORD(wParam)) continue;
    row.handler(dialog);
    return true;
  }
  return false;
}

// The procedure of a dialog that handles its opening and its commands and no other message. [host]
template <void (*kOnInit)(HWND dialog) noexcept, const auto& kCommands>
INT_PTR CALLBACK CommandDialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM) noexcept {
  switch (message) {
    case WM_INITDIALOG:
      kOnInit(dialog);
      return TRUE;
    case WM_COMMAND:
      return RunCommand(kCommands, dialog, wParam) ? TRUE : FALSE;
    default:
      return FALSE;
  }
}

// What a dialog keeps for itself alone is an object of the function that opens it. The object's
// address is the dialog's initial parameter; the dialog keeps it when WM_INITDIALOG brings it, and
// its handlers get it back. Null before that message. [host]
inline void KeepState(HWND dialog, LPARAM initParam) noexcept {
  SetWindowLongPtrW(dialog, DWLP_USER, initParam);
}
template <typename State>
State* StateOf(HWND dialog) noexcept {
  return reinterpret_cast<State*>(GetWindowLongPtrW(dialog, DWLP_USER));
}

// The Cancel button of a dialog that has nothing to undo. [host]
inline void CancelDialog(HWND dialog) noexcept {
  EndDialog(dialog, IDCANCEL);
}

// Opens a dialog of this module modally on `owner`; returns what it is ended with, -1 when it
// cannot be opened. [host]
inline INT_PTR OpenDialog(int dialogId, HWND owner, DLGPROC procedure,
                          LPARAM initParam = 0) noexcept {
  const ModuleControls controls;
  return DialogBoxParamW(ModuleInstance(), MAKEINTRESOURCEW(dialogId), owner, procedure, initParam);
}

}  // namespace k7
