// k7_slots.exe: runs k7driver.dll through its exports and slots alone, one command a line from
// standard input, one answer a line to standard output. What the end-to-end tests drive.
#include <windows.h>

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <map>
#include <mutex>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "k7/driver.h"

namespace {

using Words = std::vector<std::string>;

constexpr UINT kMsgQueued = WM_APP + 1, kMsgStarted = WM_APP + 2, kMsgFinished = WM_APP + 3;
constexpr UINT kMsgPosition = WM_APP + 4, kMsgSurface = WM_APP + 5, kMsgJogZ = WM_APP + 6;
constexpr UINT kMsgJogEnd = WM_APP + 7, kMsgRampEnd = WM_APP + 8, kMsgConnected = WM_APP + 9;

std::atomic<int> counts[10];
std::atomic<long long> lastPosition[2];
std::atomic<long long> lastRampRpm;

LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message > WM_APP && message < WM_APP + 10) {
    if (message == kMsgPosition) {
      lastPosition[0] = static_cast<long long>(static_cast<int>(wParam));
      lastPosition[1] = static_cast<long long>(static_cast<int>(lParam));
    }
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

std::string Narrow(const wchar_t* text) {
  std::string narrow;
  for (; *text != L'\0'; ++text) narrow += static_cast<char>(*text);
  return narrow;
}

std::wstring Wide(const std::string& text) {
  return {text.begin(), text.end()};
}

struct Driver {
  HMODULE module = nullptr;
  decltype(&EnumerateControllers) enumerate = nullptr;
  decltype(&GetControllerInfo) info = nullptr;
  decltype(&ConnectToController) connect = nullptr;
  decltype(&ReleaseController) release = nullptr;
  k7::IEngraver* device = nullptr;
  HWND window = nullptr;

  template <typename Function>
  void Load(Function& function, const char* name) {
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
    if (function == nullptr) std::exit(3);
  }

  bool LoadModule() {
    module = LoadLibraryW(L"k7driver.dll");
    if (module == nullptr) return false;
    Load(enumerate, "EnumerateControllers");
    Load(info, "GetControllerInfo");
    Load(connect, "ConnectToController");
    Load(release, "ReleaseController");
    return true;
  }
};

unsigned Number(const Words& words, std::size_t index) {
  return index < words.size()
             ? static_cast<unsigned>(std::strtoll(words[index].c_str(), nullptr, 0))
             : 0u;
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

void Key(unsigned key, bool down) {
  keybd_event(static_cast<BYTE>(key), 0, down ? 0 : KEYEVENTF_KEYUP, 0);
}

using Command = std::function<std::string(Driver&, const Words&)>;

std::string Text(long long value) {
  return std::to_string(value);
}

// Commands that need a device.
const std::map<std::string, Command>& DeviceCommands() {
  static const std::map<std::string, Command> commands = {
      {"begin", [](Driver& d, const Words&) { return Text(d.device->BeginJob()); }},
      {"end", [](Driver& d, const Words&) { return d.device->EndJob(), std::string{"done"}; }},
      {"move", [](Driver& d,
                  const Words& w) { return Text(d.device->MoveTo(Number(w, 1), Number(w, 2))); }},
      {"engrave",
       [](Driver& d, const Words& w) {
         return Text(d.device->EngraveTo(Number(w, 1), Number(w, 2)));
       }},
      {"lower", [](Driver& d, const Words&) { return Text(d.device->LowerCutter()); }},
      {"lower-continue",
       [](Driver& d, const Words&) { return Text(d.device->LowerCutterContinue()); }},
      {"travel",
       [](Driver& d, const Words& w) {
         return Text(d.device->TravelTo(Number(w, 1), Number(w, 2)));
       }},
      {"goto",
       [](Driver& d, const Words& w) {
         d.device->SyncCurrentLocation(Number(w, 1), Number(w, 2), 0);
         return std::string{"done"};
       }},
      {"goto-as-job",
       [](Driver& d, const Words& w) {
         d.device->GoToAsJob(Number(w, 1), Number(w, 2), static_cast<uint8_t>(Number(w, 3)));
         return std::string{"done"};
       }},
      {"home", [](Driver& d, const Words&) { return Text(d.device->HomeTable()); }},
      {"cutter-home", [](Driver& d, const Words&) { return Text(d.device->FindCutterHome()); }},
      {"hold",
       [](Driver& d, const Words& w) {
         d.device->SetPlungeHold(static_cast<uint8_t>(Number(w, 1)));
         return std::string{"done"};
       }},
      {"spindle",
       [](Driver& d, const Words& w) {
         d.device->SetSpindle(Number(w, 1));
         return Text(d.device->GetSpindleValue());
       }},
      {"motors",
       [](Driver& d, const Words& w) {
         d.device->EnableMotors(static_cast<uint8_t>(Number(w, 1)));
         return std::string{"done"};
       }},
      {"grid",
       [](Driver& d, const Words& w) {
         d.device->SetGridMode(Number(w, 1));
         return Text(d.device->GetGridMode());
       }},
      {"switches",
       [](Driver& d, const Words&) {
         uint8_t state[4] = {9, 9, 9, 9};
         d.device->ReadSwitches(&state[0], &state[1], &state[2], &state[3]);
         return Text(state[0]) + " " + Text(state[1]) + " " + Text(state[2]) + " " + Text(state[3]);
       }},
      {"location",
       [](Driver& d, const Words&) {
         int32_t x = -1, y = -1;
         d.device->GetMachinePosition(&x, &y, nullptr);
         return Text(x) + " " + Text(y);
       }},
      {"location-round",
       [](Driver& d, const Words&) {
         int32_t x = -1, y = -1, round = -1;
         d.device->GetMachinePosition(&x, &y, &round);
         return Text(x) + " " + Text(y) + " " + Text(round);
       }},
      {"display",
       [](Driver& d, const Words&) {
         int32_t x = -1, y = -1, third = -1;
         d.device->GetTableHome(&x, &y, &third);
         return Text(x) + " " + Text(y) + " " + Text(third);
       }},
      {"report",
       [](Driver& d, const Words&) {
         int32_t x = 0, y = 0;
         d.device->GetCurrentPosition(&x, &y);
         return Text(x) + " " + Text(y) + " message " + Text(lastPosition[0]) + " " +
                Text(lastPosition[1]);
       }},
      {"pass",
       [](Driver& d, const Words& w) {
         wchar_t status[128] = L"";
         d.device->StartPass(Number(w, 1), Number(w, 2), Number(w, 3), status, 128);
         return Narrow(status);
       }},
      {"passes", [](Driver& d, const Words&) { return Text(d.device->GetPassCount()); }},
      {"alive", [](Driver& d, const Words&) { return Text(d.device->CheckAlive()); }},
      {"connected", [](Driver& d, const Words&) { return Text(d.device->IsConnected()); }},
      {"send",
       [](Driver& d, const Words& w) {
         std::string line;
         for (std::size_t i = 1; i < w.size(); ++i) line += (i > 1 ? " " : "") + w[i];
         d.device->SendLine((line + "\n").c_str());
         return std::string{"done"};
       }},
      {"path",
       [](Driver& d, const Words&) {
         wchar_t path[512] = L"";
         d.device->GetSettingsFilePath(path, 512);
         return Narrow(path);
       }},
      // Speed, parity, stop bits, time-outs and event mask of the serial port.
      {"port",
       [](Driver& d, const Words&) {
         DCB line{};
         line.DCBlength = sizeof line;
         COMMTIMEOUTS times{};
         DWORD events = 0;
         const HANDLE port = d.device->GetLinkHandle();
         if (!GetCommState(port, &line) || !GetCommTimeouts(port, &times) ||
             !GetCommMask(port, &events)) {
           return std::string{"no port"};
         }
         return Text(line.BaudRate) + " " + Text(line.Parity) + " " + Text(line.StopBits) +
                ", time-outs " + Text(times.ReadIntervalTimeout) + " " +
                Text(times.ReadTotalTimeoutMultiplier) + " " +
                Text(times.ReadTotalTimeoutConstant) + " " +
                Text(times.WriteTotalTimeoutMultiplier) + " " +
                Text(times.WriteTotalTimeoutConstant) + ", events " + Text(events);
       }},
      {"resolution",
       [](Driver& d, const Words&) {
         return Text(static_cast<long long>(d.device->GetXStepsPerUnit())) + " " +
                Text(static_cast<long long>(d.device->GetYStepsPerUnit()));
       }},
      {"load",
       [](Driver& d, const Words&) { return d.device->LoadSettings(), std::string{"done"}; }},
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
      {"handles",
       [](Driver&, const Words&) {
         // By asking for each: not every platform keeps a count.
         int count = 0;
         for (std::uintptr_t value = 4; value < 0x20000; value += 4) {
           DWORD flags = 0;
           if (GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags)) ++count;
         }
         return Text(count);
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
      // strokes N SEED: a job's worth of N random strokes, each a travel and three cuts.
      {"strokes",
       [](Driver& d, const Words& w) {
         unsigned state = Number(w, 2);
         const auto next = [&state] {
           state = state * 1664525u + 1013904223u;
           return 1 + (state >> 8) % 40000u;
         };
         for (unsigned i = 0; i < Number(w, 1); ++i) {
           d.device->MoveTo(next(), next());
           for (int k = 0; k < 3; ++k) {
             if (d.device->EngraveTo(next(), next()) != k7::kStatusSent) return Text(i);
           }
         }
         return Text(Number(w, 1));
       }},
  };
  return commands;
}

std::string Run(Driver& driver, const Words& words) {
  const std::string& name = words[0];
  if (name == "enumerate") return Text(driver.enumerate());
  if (name == "info") {
    wchar_t id[64] = L"?", friendly[64] = L"?";
    driver.info(static_cast<int32_t>(Number(words, 1)), id, friendly, 64);
    return Narrow(id) + "|" + Narrow(friendly);
  }
  if (name == "connect") {
    driver.device = driver.connect(words.size() > 1 ? Wide(words[1]).c_str() : nullptr);
    return driver.device == nullptr ? "null" : "connected";
  }
  if (name == "release") {
    driver.release(driver.device);
    driver.device = nullptr;
    return "released";
  }
  if (name == "sleep") return Sleep(Number(words, 1)), "slept";
  const auto found = DeviceCommands().find(name);
  if (found == DeviceCommands().end()) return "unknown command";
  if (driver.device == nullptr) return "no device";
  return found->second(driver, words);
}

}  // namespace

int main() {
  Driver driver;
  if (!driver.LoadModule()) {
    std::fprintf(stderr, "k7_slots: k7driver.dll cannot be loaded\n");
    return 3;
  }
  std::string line;
  while (std::getline(std::cin, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    std::istringstream split{line};
    Words words;
    for (std::string word; split >> word;) words.push_back(word);
    if (words.empty()) continue;
    if (words[0] == "quit") break;
    std::printf("%s\n", Run(driver, words).c_str());
    std::fflush(stdout);
  }
  return 0;
}
