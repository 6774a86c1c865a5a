// k7_driver_sender.exe: sends the same moves through k7driver.dll, as a host does: travels and cuts
// by slot calls, each of which sends one line. `window`: the host's window, on a thread of its own,
// is told of each; `callback`: a callback is.
#include "k7/driver.h"
#include "sender.h"

namespace {

class DriverSender final : public k7bench::Sender {
 public:
  explicit DriverSender(k7::IEngraver& device) : device_(device) {}

  bool Run(int lines, int pauseMs) override {
    k7bench::ForgetTold();
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
    return k7bench::WasTold(lines);
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
    const auto count = [](uint32_t message, uint64_t) { k7bench::Count(message); };
    device->SetNotifyCallback(count, 0, k7bench::kQueued, k7bench::kStarted, k7bench::kFinished);
  } else {
    device->SetNotifyWindow(k7bench::MakePumpedWindow(), k7bench::kQueued, k7bench::kStarted,
                            k7bench::kFinished, WM_APP + 4, WM_APP + 5, WM_APP + 6);
  }
  DriverSender sender{*device};
  const int code = k7bench::ObeyCommands(sender);
  release(device);
  return code;
}
