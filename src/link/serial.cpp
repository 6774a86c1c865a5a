#include "link/serial.h"

#include "base/trace.h"

namespace k7 {

namespace {

// KEEP: byte size, flow control and the special characters stay as the port has them, so that what
// a user has set for an unusual adapter holds; none of the results is checked.
void Configure(HANDLE port) noexcept {
  DCB settings{};
  settings.DCBlength = sizeof settings;
  GetCommState(port, &settings);
  settings.BaudRate = CBR_115200;
  settings.Parity = NOPARITY;
  settings.StopBits = ONESTOPBIT;
  SetCommState(port, &settings);
  GetCommState(port, &settings);

  COMMTIMEOUTS timeouts{};
  timeouts.ReadIntervalTimeout = MAXDWORD;  // with the zeros: a read returns at once
  SetCommTimeouts(port, &timeouts);
  SetCommMask(port, EV_RXCHAR);
}

}  // namespace

UniqueFile OpenSerialPort(const wchar_t* path) noexcept {
  UniqueFile port{CreateFileW(path, GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                              FILE_FLAG_OVERLAPPED, nullptr)};
  if (!port) {
    TraceFailure(nullptr, "open", GetLastError(), path);
    return port;
  }
  TraceName(port.Get(), "open", "serial", path);
  Configure(port.Get());
  return port;
}

}  // namespace k7
