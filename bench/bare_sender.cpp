// k7_bare_sender.exe: the least that a Windows program can do to send moves over a serial port with
// 32 outstanding. One thread writes lines made beforehand, one reads the answers; overlapped
// operations and nothing else. What the driver is measured against. With `window`, a window on a
// third thread is told of each answer, as the driver tells its host.
#include <string>
#include <thread>
#include <vector>

#include "sender.h"

namespace {

constexpr int kWindow = 32;

class BareSender final : public k7bench::Sender {
 public:
  // `window`: null for none.
  BareSender(const wchar_t* path, HWND window)
      : port_(CreateFileW(path, GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                          FILE_FLAG_OVERLAPPED, nullptr)),
        window_(window),
        written_(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
        read_(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {
    DCB settings{};
    settings.DCBlength = sizeof settings;
    GetCommState(port_, &settings);
    settings.BaudRate = CBR_115200;
    settings.Parity = NOPARITY;
    settings.StopBits = ONESTOPBIT;
    SetCommState(port_, &settings);
    COMMTIMEOUTS none{};
    SetCommTimeouts(port_, &none);
    for (int i = 0; i < 1000; ++i) {
      char line[40];
      std::snprintf(line, sizeof line, "G0 X%.6f Y%.6f\n",
                    static_cast<double>(k7bench::PlaceX(i)) * 25.4,
                    static_cast<double>(k7bench::PlaceY(i)) * 25.4);
      lines_.push_back(line);
    }
    std::thread{[this] { ReadAnswers(); }}.detach();
  }

  bool IsOpen() const { return port_ != INVALID_HANDLE_VALUE; }

  bool Run(int lines, int pauseMs) override {
    k7bench::ForgetTold();
    for (int i = 0; i < lines; ++i) {
      AwaitFewer(kWindow);
      AcquireSRWLockExclusive(&lock_);
      ++outstanding_;
      ReleaseSRWLockExclusive(&lock_);
      if (!Write(lines_[static_cast<std::size_t>(i) % lines_.size()])) return false;
      if (pauseMs > 0) Sleep(static_cast<DWORD>(pauseMs));
    }
    AwaitFewer(1);
    return window_ == nullptr || k7bench::WasTold(lines);
  }

 private:
  // Waits until fewer than `lines` are outstanding.
  void AwaitFewer(int lines) {
    AcquireSRWLockExclusive(&lock_);
    while (outstanding_ >= lines) SleepConditionVariableSRW(&changed_, &lock_, INFINITE, 0);
    ReleaseSRWLockExclusive(&lock_);
  }

  bool Write(const std::string& line) {
    OVERLAPPED block{};
    block.hEvent = written_;
    const auto size = static_cast<DWORD>(line.size());
    if (WriteFile(port_, line.data(), size, nullptr, &block)) return true;
    DWORD count = 0;
    return GetLastError() == ERROR_IO_PENDING && GetOverlappedResult(port_, &block, &count, TRUE) &&
           count == size;
  }

  // The three answers to a move are always as long: a read of so many bytes ends just then.
  [[noreturn]] void ReadAnswers() {
    for (;;) {
      char answers[sizeof "QX\r\nBX\r\nEX\r\n" - 1];
      OVERLAPPED block{};
      block.hEvent = read_;
      DWORD count = 0;
      if (!ReadFile(port_, answers, sizeof answers, nullptr, &block) &&
          GetLastError() != ERROR_IO_PENDING) {
        std::exit(4);
      }
      if (!GetOverlappedResult(port_, &block, &count, TRUE) || count != sizeof answers ||
          answers[0] != 'Q') {
        std::exit(4);
      }
      if (window_ != nullptr) {
        for (const UINT message : {k7bench::kQueued, k7bench::kStarted, k7bench::kFinished}) {
          SendMessageW(window_, message, 0, 0);
        }
      }
      AcquireSRWLockExclusive(&lock_);
      --outstanding_;
      ReleaseSRWLockExclusive(&lock_);
      WakeConditionVariable(&changed_);
    }
  }

  HANDLE port_;
  HWND window_;
  HANDLE written_, read_;
  std::vector<std::string> lines_;
  SRWLOCK lock_ = SRWLOCK_INIT;
  CONDITION_VARIABLE changed_ = CONDITION_VARIABLE_INIT;
  int outstanding_ = 0;  // lines sent, not yet answered
};

}  // namespace

int main(int argc, char** argv) {
  const bool window = argc > 1 && std::strcmp(argv[1], "window") == 0;
  static BareSender sender{L"\\\\.\\COM7", window ? k7bench::MakePumpedWindow() : nullptr};
  if (!sender.IsOpen()) {
    std::fprintf(stderr, "k7_bare_sender: COM7 cannot be opened\n");
    return 3;
  }
  return k7bench::ObeyCommands(sender);
}
