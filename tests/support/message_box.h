// MessageBoxAnswer: a user who reads one message box and presses a button.
#pragma once

#include <windows.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace k7test {

// Waits, on a thread of its own, for a message box of this process with that caption, reads it and
// presses the button. Make it before the call that shows the box; ask it after that has returned.
class MessageBoxAnswer {
 public:
  explicit MessageBoxAnswer(std::wstring caption, int buttonId = IDOK);
  ~MessageBoxAnswer();  // stops waiting
  MessageBoxAnswer(const MessageBoxAnswer&) = delete;
  MessageBoxAnswer& operator=(const MessageBoxAnswer&) = delete;

  // A box was seen and answered; false once the wait has been given up.
  bool Appeared();
  // What it showed. After Appeared.
  const std::wstring& Text() const { return text_; }
  // The window that owned it, null when none.
  HWND Owner() const { return owner_; }
  // Control ids of its buttons, in ascending order.
  const std::vector<int>& Buttons() const { return buttons_; }

 private:
  void Run();
  void Read(HWND box);

  const std::wstring caption_;
  const int buttonId_;
  std::wstring text_;
  HWND owner_ = nullptr;
  std::vector<int> buttons_;
  std::atomic<bool> answered_{false};
  std::atomic<bool> stop_{false};
  std::thread thread_;
};

// A message box of this process with that caption stands on the screen now.
bool MessageBoxIsShown(const std::wstring& caption);

}  // namespace k7test
