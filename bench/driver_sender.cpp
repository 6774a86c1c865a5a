// k7_driver_sender.exe: sends the same moves through k7driver.dll, as a host does: travels and cuts
// by slot calls, each of which sends one line. `window`: the host's window, on a thread of its own,
// is told of each; `callback`: a callback is.
#include <atomic>
#include <thread>

#include "k7/driver.h"
#include "sender.h"

namespace {

constexpr UINT kQueued = WM_APP + 1, kStarted = WM_APP + 2, kFinished = WM_APP + 3;

std::atomic<int> told[3];

void Count(unsigned message) {
  if (message >= kQueued && message <= kFinished) ++told[message - kQueued];
}

LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  Count(message);
  return DefWindowProcW(window, message, wParam, lParam);
}

// A window on a thread of its own, which keeps its messages flowing.
HWND MakePumpedWindow() {
  static std::atomic<HWND> window{nullptr};
  std::thread{[] {
    WNDCLASSW description{};
    description.lpfnWndProc = &WindowProcedure;
    description.hInstance = GetModuleHandleW(nullptr);
    description.lpszClassName = L"k7_driver_sender";
    RegisterClassW(&description);
    window = CreateWindowExW(0, description.lpszClassName, L"", WS_OVERLAPPEDWINDOW, 0, 0, 100, 100,
                             nullptr, nullptr, description.hInstance, nullptr);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
  }}.detach();
  while (window == nullptr) Sleep(1);
  return window;
}

class DriverSender final : public k7bench::Sender {
 public:
  explicit DriverSender(k7::IEngraver& device) : device_(device) {}

  bool Run(int lines, int pauseMs) override {
    for (std::atomic<int>& count : told) count = 0;
    if (!device_.BeginJob()) return false;
    const float perInchX = device_.GetXStepsPerUnit(), perInchY = device_.GetYStepsPerUnit();
    for (int i = 0; i < lines; ++i) {
      const auto x = static_cast<uint32_t>(k7bench::PlaceX(i) * perInchX);
      const auto y = static_cast<uint32_t>(k7bench::PlaceY(i) * perInchY);
      const uint32_t status = i % 2 == 0 ? device_.MoveTo(x, y) : device_.EngraveTo(x, y);
      if (status != k7::kStatusSent) return false;
      if (pauseMs > 0) Sleep(static_cast<DWORD>(pauseMs));
    }
    device_.EndJob();
    // The host has heard of each move at every stage.
    return told[0] == lines && told[1] == lines && told[2] == lines;
  }

 private:
  k7::IEngraver& device_;
};

template <typename Function>
Function Load(HMODULE module, const char* name) {
  return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

}  // namespace

int main(int argc, char** argv) {
  const HMODULE driver = LoadLibraryW(L"k7driver.dll");
  if (driver == nullptr || argc != 2) {
    std::fprintf(stderr, "usage: k7_driver_sender window|callback, beside k7driver.dll\n");
    return 2;
  }
  const auto connect = Load<decltype(&ConnectToController)>(driver, "ConnectToController");
  const auto release = Load<decltype(&ReleaseController)>(driver, "ReleaseController");
  k7::IEngraver* const device = connect(L"BENCHBENCHBENCH0");
  if (device == nullptr) {
    std::fprintf(stderr, "k7_driver_sender: no controller\n");
    return 3;
  }
  if (std::strcmp(argv[1], "callback") == 0) {
    const auto count = [](uint32_t message, uint64_t) { Count(message); };
    device->SetNotifyCallback(count, 0, kQueued, kStarted, kFinished);
  } else {
    device->SetNotifyWindow(MakePumpedWindow(), kQueued, kStarted, kFinished, WM_APP + 4,
                            WM_APP + 5, WM_APP + 6);
  }
  DriverSender sender{*device};
  const int code = k7bench::ObeyCommands(sender);
  release(device);
  return code;
}
