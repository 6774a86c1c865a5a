// A k7driver.dll that moves nothing: it writes every operation that the host asks for to a file,
// and answers as the environment tells it. It stands for the driver in the tests of k7host.exe
// alone.
//
//   K7_FAKE_LOG    file to append to
//   K7_FAKE_COUNT  controllers found (default 1); K7_FAKE_NO_CONNECT: none of them connects
//   K7_FAKE_MOVE, K7_FAKE_ENGRAVE  first answers of MoveTo and EngraveTo, one digit each, 9 = 100
//   K7_FAKE_BEGIN=0  BeginJob refuses; K7_FAKE_HOLD: moves are queued and never begin
//   K7_FAKE_RESOLUTION: host steps per inch of X; K7_FAKE_UNSETTLED: none until asked who it is
//   K7_FAKE_HANG, K7_FAKE_LOSE: an operation that never returns, or after which the link is gone
//   K7_FAKE_SILENT: the machine gives no sign of life; K7_FAKE_SETTINGS: result of the dialog
//   K7_FAKE_PASSES, K7_FAKE_SWITCHES, K7_FAKE_SPINDLE
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <thread>
#include <utility>

#include "recording_engraver.h"

namespace {

const char* Setting(const char* name) {
  return std::getenv(name);
}

long Number(const char* name, long otherwise) {
  const char* text = Setting(name);
  return text != nullptr ? std::strtol(text, nullptr, 10) : otherwise;
}

void WriteLog(const std::string& entry) {
  const char* path = Setting("K7_FAKE_LOG");
  std::FILE* file = path != nullptr ? std::fopen(path, "ab") : nullptr;
  if (file == nullptr) return;
  std::fputs((entry + "\n").c_str(), file);
  std::fclose(file);
}

void CopyText(const wchar_t* from, wchar_t* to, std::int32_t size) {
  if (to == nullptr || size < 1) return;
  std::int32_t i = 0;
  for (; i + 1 < size && from[i] != 0; ++i) to[i] = from[i];
  to[i] = 0;
}

class FakeDevice final : public k7test::RecordingEngraver {
 public:
  FakeDevice() {
    Answers("K7_FAKE_MOVE", moveAnswers);
    Answers("K7_FAKE_ENGRAVE", engraveAnswers);
    if (Number("K7_FAKE_BEGIN", 1) == 0) beginAnswers = {false};
    holdReports = Setting("K7_FAKE_HOLD") != nullptr;
    passCount = static_cast<std::uint32_t>(Number("K7_FAKE_PASSES", 1));
    hasSpindle = Setting("K7_FAKE_SPINDLE") != nullptr;
    answers_ = Setting("K7_FAKE_SILENT") == nullptr;
    xStepsPerInch = static_cast<float>(Number("K7_FAKE_RESOLUTION", 4000));
    if (Setting("K7_FAKE_UNSETTLED") != nullptr) xStepsPerInch = 0.0f;
  }

  // Its last message has been answered by then; only its way out is waited for.
  ~FakeDevice() {
    if (thread_.joinable()) thread_.join();
  }

  void Record(const std::string& entry) override {
    WriteLog(entry);
    const auto is = [&entry](const char* name) {
      return Setting(name) != nullptr && entry == Setting(name);
    };
    if (is("K7_FAKE_HANG")) Sleep(INFINITE);
    if (is("K7_FAKE_LOSE")) alive = false;
  }

  void ResetControllerId() noexcept override { forgotten_ = true; }
  std::int32_t QueryControllerId(wchar_t*, std::int32_t) noexcept override {
    if (forgotten_ && Setting("K7_FAKE_UNSETTLED") != nullptr) xStepsPerInch = 4000.0f;
    return 24;
  }
  std::int32_t CheckAlive() noexcept override {
    if (std::exchange(forgetsSilence_, false)) return 1;
    return alive && answers_ ? 1 : 0;
  }
  void SetConnectNotify(k7::WindowHandle window, std::uint32_t message) noexcept override {
    connectWindow_ = static_cast<HWND>(window);
    connectMessage_ = message;
  }

  void SetNotifyWindow(k7::WindowHandle window, std::uint32_t, std::uint32_t, std::uint32_t,
                       std::uint32_t msgPosition, std::uint32_t,
                       std::uint32_t msgJogZ) noexcept override {
    // A window taken away while its messages stay: no message boxes from here on.
    if (window == nullptr && msgPosition != 0) Record("Window(0)");
    window_ = static_cast<HWND>(window);
    position_ = msgPosition;
    jogZ_ = msgJogZ;
  }
  std::uint32_t HomeTable() noexcept override {
    Record("HomeTable");
    if (Setting("K7_FAKE_SWITCHES") != nullptr) SendMessageW(window_, position_, 0, 0);
    return 0;
  }
  void ReadSwitches(std::uint8_t* x, std::uint8_t* y, std::uint8_t* z,
                    std::uint8_t* prox) noexcept override {
    Record("ReadSwitches");
    if (Setting("K7_FAKE_SWITCHES") == nullptr) return;
    if (x != nullptr) *x = 1;
    if (y != nullptr) *y = 0;
    if (z != nullptr) *z = 1;
    *prox = 0;
  }
  // Ends on a thread of its own, as the real jog does: the host must be serving messages.
  void StartJog(std::uint32_t direction, std::uint32_t speedMode, std::uint32_t key,
                std::uint32_t endMessage) noexcept override {
    Record("StartJog(" + std::to_string(direction) + "," + std::to_string(speedMode) + "," +
           std::to_string(key) + ")");
    thread_ = std::thread([=, this] {
      if (direction <= 3) SendMessageW(window_, position_, 4000, static_cast<LPARAM>(-2000));
      if (direction == 5) SendMessageW(window_, jogZ_, 123, 0);
      SendMessageW(window_, endMessage, 0, 0);
    });
  }
  bool StartSpindleRamp(std::int32_t direction, k7::WindowHandle window, std::uint32_t message,
                        std::uint32_t key) noexcept override {
    Record("StartSpindleRamp(" + std::to_string(direction) + "," + std::to_string(key) + ")");
    if (direction != 0) return false;
    thread_ = std::thread([=] { SendMessageW(static_cast<HWND>(window), message, 7500, 0); });
    return true;
  }
  void SetSpindle(std::uint32_t command) noexcept override {
    RecordingEngraver::SetSpindle(command);
    rpm_ = command == k7::kSpindleFull ? 20000 : command == k7::kSpindleEngrave ? 6000 : 0;
  }
  std::uint32_t GetSpindleValue() noexcept override { return rpm_; }
  void SendLine(const char* line) noexcept override {
    if (std::strcmp(line, "SmoothieIsConnected\n") != 0)
      return Record(std::string("SendLine ") + line);
    if (answers_) PostMessageW(connectWindow_, connectMessage_, 0, 0);
  }
  void GoToAsJob(std::uint32_t x, std::uint32_t y, std::uint8_t round) noexcept override {
    Record("GoToAsJob(" + std::to_string(x) + "," + std::to_string(y) + "," +
           std::to_string(round) + ")");
  }
  void GetMachinePosition(std::int32_t* x, std::int32_t* y, std::int32_t*) noexcept override {
    *x = 1250;
    *y = -500;
  }
  std::int64_t ShowSettingsDialog(k7::WindowHandle parent, std::uint32_t mode,
                                  std::uint32_t allowRun, std::uint64_t,
                                  std::uint32_t showGrid) noexcept override {
    Record("ShowSettingsDialog(" + std::to_string(IsWindow(static_cast<HWND>(parent))) + "," +
           std::to_string(mode) + "," + std::to_string(allowRun) + "," + std::to_string(showGrid) +
           ")");
    // The first check after a dialog is good, whatever the machine does.
    forgetsSilence_ = true;
    return Number("K7_FAKE_SETTINGS", 2);
  }
  std::uint32_t EstimateJobTime(const std::uint32_t*, std::uint32_t count) noexcept override {
    Record("EstimateJobTime(" + std::to_string(count) + ")");
    return 61;
  }
  std::uint32_t GetTableWidth() noexcept override { return 25000; }
  std::uint32_t GetTableHeight() noexcept override { return 16000; }
  float GetZStepsPerInch() noexcept override { return 4000.0f; }
  std::uint32_t GetLinkType() noexcept override { return k7::kLinkSerial; }
  std::int32_t GetFriendlyName(wchar_t* buffer, std::int32_t size) noexcept override {
    CopyText(L"Fräse", buffer, size);
    return 0;
  }
  std::int32_t GetPortName(wchar_t* buffer, std::int32_t size) noexcept override {
    CopyText(L"\\\\.\\COM7", buffer, size);
    return 0;
  }
  std::uint32_t GetSettingsFilePath(wchar_t* buffer, std::int32_t size) noexcept override {
    CopyText(L"C:\\k7.ini", buffer, size);
    return 0;
  }

 private:
  static void Answers(const char* name, std::deque<std::uint32_t>& answers) {
    const char* text = Setting(name);
    for (; text != nullptr && *text != 0; ++text) {
      answers.push_back(*text == '9' ? k7::kStatusRefused
                                     : static_cast<std::uint32_t>(*text - '0'));
    }
  }

  bool answers_ = true;
  bool forgetsSilence_ = false;
  bool forgotten_ = false;
  HWND connectWindow_ = nullptr;
  UINT connectMessage_ = 0;
  std::thread thread_;  // of a jog or ramp
  HWND window_ = nullptr;
  UINT position_ = 0;
  UINT jogZ_ = 0;
  std::uint32_t rpm_ = 0;
};

}  // namespace

extern "C" {

int32_t EnumerateControllers() noexcept {
  if (const char* hang = Setting("K7_FAKE_HANG"); hang && std::strcmp(hang, __func__) == 0) {
    WriteLog(hang);
    Sleep(INFINITE);
  }
  return static_cast<int32_t>(Number("K7_FAKE_COUNT", 1));
}

void GetControllerInfo(int32_t index, wchar_t* id, wchar_t* name, int32_t size) noexcept {
  const std::wstring digit = std::to_wstring(index);
  CopyText((L"000000000000000" + digit).c_str(), id, size);
  CopyText((L"Machine " + digit).c_str(), name, size);
}

k7::IEngraver* ConnectToController(const wchar_t* controllerId) noexcept {
  std::string id;
  for (; *controllerId != 0; ++controllerId) id += static_cast<char>(*controllerId);
  WriteLog("Connect " + id);
  return Setting("K7_FAKE_NO_CONNECT") != nullptr ? nullptr : new FakeDevice;
}

void ReleaseController(k7::IEngraver* device) noexcept {
  WriteLog("Release");
  delete static_cast<FakeDevice*>(device);
}

}  // extern "C"
