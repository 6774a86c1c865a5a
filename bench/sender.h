// What the programs that ./k7 bench wire times have in common: the lines that they send and the
// commands that they take.
#pragma once

#include <windows.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <thread>

namespace k7bench {

// What a sender is asked to do.
class Sender {
 public:
  virtual ~Sender() = default;
  // A job of `lines` moves; returns when the last has ended. False: a move was refused.
  virtual bool Run(int lines, int pauseMs) = 0;
};

// What the host is told of each move: that it is queued, has begun, has ended.
constexpr UINT kQueued = WM_APP + 1, kStarted = WM_APP + 2, kFinished = WM_APP + 3;

inline std::atomic<int> told[3];

inline void Count(UINT message) {
  if (message >= kQueued && message <= kFinished) ++told[message - kQueued];
}
inline void ForgetTold() {
  for (std::atomic<int>& count : told) count = 0;
}
// Each of `lines` moves has been told at every stage, and none twice.
inline bool WasTold(int lines) {
  return told[0] == lines && told[1] == lines && told[2] == lines;
}

inline LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  Count(message);
  return DefWindowProcW(window, message, wParam, lParam);
}

// The host's window, on a thread of its own, which keeps its messages flowing.
inline HWND MakePumpedWindow() {
  static std::atomic<HWND> window{nullptr};
  std::thread{[] {
    WNDCLASSW description{};
    description.lpfnWndProc = &WindowProcedure;
    description.hInstance = GetModuleHandleW(nullptr);
    description.lpszClassName = L"k7_bench";
    RegisterClassW(&description);
    window = CreateWindowExW(0, description.lpszClassName, L"", WS_OVERLAPPEDWINDOW, 0, 0, 100, 100,
                             nullptr, nullptr, description.hInstance, nullptr);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
  }}.detach();
  while (window == nullptr) Sleep(1);
  return window;
}

// Where the moves go, in inches: far enough out that X and Y take three digits before the point in
// millimetres, and never twice the same, so that each line names both.
inline float PlaceX(int i) {
  return 4.0f + static_cast<float>(i * 37 % 1000) / 125.0f;
}
inline float PlaceY(int i) {
  return 4.0f + static_cast<float>(i * 59 % 1000) / 125.0f;
}

// One command a line on standard input: "run N", "pace N" (one line a second), "quit". The answer
// "done" comes when the machine stands still again. Returns the exit code.
inline int ObeyCommands(Sender& sender) {
  const auto say = [](const char* text) {
    std::printf("%s\n", text);
    std::fflush(stdout);
  };
  say("ready");
  char line[64];
  while (std::fgets(line, sizeof line, stdin) != nullptr) {
    if (std::strncmp(line, "quit", 4) == 0) break;
    const bool pace = std::strncmp(line, "pace ", 5) == 0;
    if (!pace && std::strncmp(line, "run ", 4) != 0) continue;
    const int lines = std::atoi(std::strchr(line, ' '));
    say(sender.Run(lines, pace ? 1000 : 0) ? "done" : "failed");
  }
  return 0;
}

}  // namespace k7bench
