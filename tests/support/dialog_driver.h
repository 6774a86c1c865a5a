// Drives the driver's real dialogs from a second thread, by control number.
#pragma once

#include <windows.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace k7test {

// A message box as it was shown.
struct BoxSeen {
  std::wstring text;
  std::wstring caption;
  std::vector<std::wstring> buttons;  // of those shown, without "&"
  bool hasIcon = false;
  HWND owner = nullptr;
};

// Runs `show`, which opens a dialog modally, on a thread of its own: the host's thread. The test's
// thread drives what is open. At the end everything still open is cancelled and the thread joined.
class DialogDriver {
 public:
  explicit DialogDriver(std::function<std::int64_t()> show);
  ~DialogDriver();
  DialogDriver(const DialogDriver&) = delete;
  DialogDriver& operator=(const DialogDriver&) = delete;

  // The foremost dialog or message box of the thread that takes input; null: none, or the thread is
  // in between. Filled when it is returned: dialogs appear after they were initialised.
  HWND Top() const;
  // Waits for the first dialog; null: deadline.
  HWND WaitForDialog() const;
  // Waits for a dialog or box over `below`; null: deadline.
  HWND WaitForDialogOver(HWND below) const;
  // Waits until `dialog` is on top again (what was over it has closed); false: deadline.
  bool WaitUntilTop(HWND dialog) const;

  // Waits for a message box over `below`, reads it, presses the button (IDOK, IDYES, ...) and waits
  // until it is gone. An empty caption and text: no box appeared.
  BoxSeen AnswerBox(HWND below, int button);

  // Whether `show` has returned; waits for it until the deadline.
  bool WaitUntilClosed() const;
  // What `show` returned; -1000 when it does not return in time.
  std::int64_t Result() const;

  // Number of the control that has the keyboard focus; 0: none, or another process is in front.
  int FocusedControl() const;
  // Waits until the focus in `dialog` is on the control, calling the dialog to the front: programs
  // that run beside this one take the focus away at any time. False: deadline.
  bool WaitForFocus(HWND dialog, int id) const;
  DWORD ThreadId() const { return threadId_; }

  // A key as the keyboard sends it, to the control of the dialog that has the focus (waits for
  // one). The dialog's own loop finds out what it means; this does not wait for that.
  void PressKey(HWND dialog, WPARAM virtualKey) const;
  // The controls that the tab key goes through, from the one that has the focus until it comes
  // round to it again.
  std::vector<int> TabRound(HWND dialog) const;

 private:
  HWND Focused() const;
  HWND WaitForFocusIn(HWND dialog) const;

  std::atomic<std::int64_t> result_{-1000};
  std::atomic<bool> closed_{false};
  std::atomic<DWORD> threadId_{0};
  std::thread thread_;
};

// One control of a dialog. Calls wait for the dialog's thread, except Press.
std::wstring TextOf(HWND dialog, int id);
void TypeText(HWND dialog, int id,
              const std::wstring& text);  // replaces it; notifies as typing does
void Click(HWND dialog, int id);          // for buttons that open nothing
void Press(HWND dialog, int id);          // does not wait: for buttons that open or close something
void SendCommand(HWND dialog, int id, int notification = 0);
bool IsShown(HWND dialog, int id);  // by its own style, whatever its dialog's
bool IsEnabled(HWND dialog, int id);
bool IsBoxChecked(HWND dialog, int id);

// Lists.
std::vector<std::wstring> EntriesOf(HWND dialog, int id);
int SelectionOf(HWND dialog, int id);
void Pick(HWND dialog, int id, int index);  // selects and notifies, as a user does
std::wstring PickedText(HWND dialog, int id);

// Selected part of an edit, first and one past the last character.
std::pair<int, int> SelectedRange(HWND dialog, int id);

}  // namespace k7test
