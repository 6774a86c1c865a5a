// The host's window, what it is told, and the operations that end by telling it.
#include <atomic>
#include <thread>

#include "slots.h"

namespace k7slots {
namespace {

constexpr UINT kMsgQueued = WM_APP + 1, kMsgStarted = WM_APP + 2, kMsgFinished = WM_APP + 3;
constexpr UINT kMsgPosition = WM_APP + 4, kMsgSurface = WM_APP + 5, kMsgJogZ = WM_APP + 6;
constexpr UINT kMsgJogEnd = WM_APP + 7, kMsgRampEnd = WM_APP + 8;

std::atomic<int> counts[10];
std::atomic<long long> lastRampRpm;

LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message > WM_APP && message < WM_APP + 10) {
    if (message == kMsgRampEnd) lastRampRpm = static_cast<long long>(static_cast<int>(wParam));
    ++counts[message - WM_APP];
    return 0;
  }
  return DefWindowProcW(window, message, wParam, lParam);
}

HWND MakeWindow() {
  WNDCLASSW description{};
  description.lpfnWndProc = &WindowProcedure;
  description.hInstance = GetModuleHandleW(nullptr);
  description.lpszClassName = L"k7_slots";
  RegisterClassW(&description);
  return CreateWindowExW(0, L"k7_slots", L"k7_slots", WS_OVERLAPPEDWINDOW, 0, 0, 100, 100, nullptr,
                         nullptr, description.hInstance, nullptr);
}

// A window on a thread of its own, which keeps its messages flowing.
HWND MakePumpedWindow() {
  std::atomic<HWND> window{nullptr};
  std::thread{[&window] {
    window = MakeWindow();
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
  }}.detach();
  while (window == nullptr) Sleep(1);
  return window;
}

// Waits for a count of window messages; the main thread's own window keeps getting sent ones.
bool WaitForCount(UINT message, int atLeast) {
  for (int i = 0; i < 6000; ++i) {
    if (counts[message - WM_APP] >= atLeast) return true;
    MSG ignored;
    PeekMessageW(&ignored, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
    Sleep(10);
  }
  return false;
}

}  // namespace

const Commands& WindowCommands() {
  static const Commands commands = {
      // jog DIRECTION SPEED HOLD_MS: holds the key VK_F12 meanwhile; answers when the jog has
      // ended.
      {"jog",
       [](Driver& d, const Words& w) {
         const int before = counts[kMsgJogEnd - WM_APP];
         Key(VK_F12, true);
         d.device->StartJog(Number(w, 1), Number(w, 2), VK_F12, kMsgJogEnd);
         Sleep(Number(w, 3));
         Key(VK_F12, false);
         return std::string{WaitForCount(kMsgJogEnd, before + 1) ? "ended" : "still jogging"};
       }},
      // jog-start DIRECTION SPEED: holds the key and returns while the jog runs.
      {"jog-start",
       [](Driver& d, const Words& w) {
         Key(VK_F12, true);
         d.device->StartJog(Number(w, 1), Number(w, 2), VK_F12, kMsgJogEnd);
         return std::string{"started"};
       }},
      {"wait-position",
       [](Driver&, const Words&) {
         return std::string{WaitForCount(kMsgPosition, 1) ? "reported" : "no report"};
       }},
      // ramp DIRECTION HOLD_MS.
      {"ramp",
       [](Driver& d, const Words& w) {
         const int before = counts[kMsgRampEnd - WM_APP];
         Key(VK_F11, true);
         const bool started = d.device->StartSpindleRamp(static_cast<int32_t>(Number(w, 1)),
                                                         d.window, kMsgRampEnd, VK_F11);
         if (!started) return Key(VK_F11, false), std::string{"refused"};
         Sleep(Number(w, 2));
         Key(VK_F11, false);
         if (!WaitForCount(kMsgRampEnd, before + 1)) return std::string{"still ramping"};
         return std::string{"reached "} + Text(lastRampRpm);
       }},
      {"ramp-start",
       [](Driver& d, const Words& w) {
         Key(VK_F11, true);
         return Text(d.device->StartSpindleRamp(static_cast<int32_t>(Number(w, 1)), d.window,
                                                kMsgRampEnd, VK_F11));
       }},
      {"window",
       [](Driver& d, const Words& w) {
         // "here": on the very thread that calls the driver, as many hosts have it.
         d.window = w.size() > 1 && w[1] == "here" ? MakeWindow() : MakePumpedWindow();
         d.device->SetNotifyWindow(d.window, kMsgQueued, kMsgStarted, kMsgFinished, kMsgPosition,
                                   kMsgSurface, kMsgJogZ);
         return std::string{"done"};
       }},
      {"counts",
       [](Driver&, const Words&) {
         std::string all;
         for (int i = 1; i < 10; ++i) all += (i > 1 ? " " : "") + Text(counts[i]);
         return all;
       }},
  };
  return commands;
}

}  // namespace k7slots
