#include "doctor/serial_talk.h"

namespace k7host {
namespace {

constexpr DWORD kWriteMs = 2000;
constexpr DWORD kSliceMs = 50;  // how long a single read waits for its byte

}  // namespace

SerialTalk::~SerialTalk() {
  if (port_ == INVALID_HANDLE_VALUE) return;
  if (configured_) SetCommState(port_, &before_);
  CloseHandle(port_);
}

DWORD SerialTalk::Open(const std::wstring& path) {
  port_ = CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0,
                      nullptr);
  if (port_ == INVALID_HANDLE_VALUE) return GetLastError();
  before_.DCBlength = sizeof before_;
  configured_ = GetCommState(port_, &before_) != 0;
  DCB settings = before_;
  settings.BaudRate = CBR_115200;
  settings.Parity = NOPARITY;
  settings.StopBits = ONESTOPBIT;
  SetCommState(port_, &settings);
  COMMTIMEOUTS timeouts{};
  timeouts.ReadTotalTimeoutConstant = kSliceMs;
  timeouts.WriteTotalTimeoutConstant = kWriteMs;
  SetCommTimeouts(port_, &timeouts);
  PurgeComm(port_, PURGE_RXCLEAR);
  return 0;
}

bool SerialTalk::DtrIsOff() const {
  return configured_ && before_.fDtrControl == DTR_CONTROL_DISABLE;
}

bool SerialTalk::Send(std::string_view line) {
  DWORD written = 0;
  return WriteFile(port_, line.data(), static_cast<DWORD>(line.size()), &written, nullptr) != 0 &&
         written == line.size();
}

std::optional<std::string> SerialTalk::ReadLine(DWORD timeoutMs) {
  const ULONGLONG end = GetTickCount64() + timeoutMs;
  for (;;) {
    if (const std::size_t feed = pending_.find('\n'); feed != std::string::npos) {
      std::string line = pending_.substr(0, feed);
      pending_.erase(0, feed + 1);
      while (!line.empty() && line.back() == '\r') line.pop_back();
      return line;
    }
    if (GetTickCount64() >= end) return std::nullopt;
    // One byte, for which the read waits, then those that have come with it.
    char bytes[256];
    DWORD read = 0;
    if (ReadFile(port_, bytes, 1, &read, nullptr) == 0) return std::nullopt;
    pending_.append(bytes, read);
    COMSTAT state{};
    if (read == 0 || ClearCommError(port_, nullptr, &state) == 0 || state.cbInQue == 0) continue;
    const DWORD more = state.cbInQue < sizeof bytes ? state.cbInQue : DWORD{sizeof bytes};
    if (ReadFile(port_, bytes, more, &read, nullptr) != 0) pending_.append(bytes, read);
  }
}

}  // namespace k7host
