// HostWindow: the host's window, which keeps what the driver tells it.
#pragma once

#include <windows.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <mutex>
#include <ostream>
#include <thread>
#include <vector>

namespace k7test {

struct HostMessage {
  UINT message;
  std::int64_t wParam, lParam;
  bool operator==(const HostMessage&) const = default;
};
void PrintTo(const HostMessage& message, std::ostream* out);

// A hidden window that records every message from WM_APP up. It lives on a thread of its own, or on
// the thread that makes it: a host that calls the driver on the thread of its window. Nothing pumps
// for such a one: messages arrive when its thread lets sent messages through.
class HostWindow {
 public:
  enum class Lives { OnItsOwnThread, OnThisThread };

  explicit HostWindow(Lives lives = Lives::OnItsOwnThread);
  ~HostWindow();
  HostWindow(const HostWindow&) = delete;
  HostWindow& operator=(const HostWindow&) = delete;

  HWND Handle() const { return window_; }
  // Calls `handler` in the window's thread when this message arrives, after recording it.
  void OnMessage(UINT message, std::function<void()> handler);
  std::vector<HostMessage> Seen() const;
  // How many messages of this number have arrived.
  int Count(UINT message) const;
  // Waits until `count` messages of this number have arrived; false: deadline. On the window's own
  // thread it lets sent messages through meanwhile, and nothing else.
  bool WaitFor(UINT message, int count = 1) const;

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  void Open();

  std::atomic<HWND> window_{nullptr};
  mutable std::mutex guard_;  // seen_, handlers_
  std::vector<HostMessage> seen_;
  std::vector<std::pair<UINT, std::function<void()>>> handlers_;
  std::thread thread_;
};

// Holds a key down, as the user does who jogs, until released or to the end of the scope.
class HeldKey {
 public:
  explicit HeldKey(std::uint8_t virtualKey);
  ~HeldKey() { Release(); }
  HeldKey(const HeldKey&) = delete;
  HeldKey& operator=(const HeldKey&) = delete;
  void Release();

 private:
  std::uint8_t key_;
  bool held_ = true;
};

}  // namespace k7test
