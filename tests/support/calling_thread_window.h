// CallingThreadWindow: a window of the host on the calling thread that keeps the messages sent to
// it.
#pragma once

#include <windows.h>

#include <mutex>
#include <vector>

namespace k7test {

struct SentMessage {
  UINT message;
  WPARAM wParam;
  LPARAM lParam;
  DWORD thread;  // on which the window procedure ran
  bool operator==(const SentMessage&) const = default;
};

// A message-only window. Messages from WM_APP on are kept, in order; nothing pumps for it: they
// arrive when its thread lets sent messages through.
class CallingThreadWindow {
 public:
  CallingThreadWindow();
  ~CallingThreadWindow();
  CallingThreadWindow(const CallingThreadWindow&) = delete;
  CallingThreadWindow& operator=(const CallingThreadWindow&) = delete;

  HWND Get() const { return window_; }
  std::vector<SentMessage> Messages() const;
  // Lets sent messages through until at least `count` have come; false: deadline.
  bool WaitForMessages(std::size_t count) const;

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

  mutable std::mutex guard_;
  std::vector<SentMessage> messages_;
  HWND window_;
};

}  // namespace k7test
