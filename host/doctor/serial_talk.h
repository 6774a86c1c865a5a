// Lines over a serial port, without the driver, which would send settings to whatever answers.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>

namespace k7host {

class SerialTalk {
 public:
  SerialTalk() = default;
  ~SerialTalk();
  SerialTalk(const SerialTalk&) = delete;
  SerialTalk& operator=(const SerialTalk&) = delete;

  // Opens the port for nobody else at 115200 baud, one stop bit, no parity, everything else as the
  // port has it, as the driver does; what the port had before comes back at the end. A system
  // error; 0: open. [host]
  DWORD Open(const std::wstring& path);

  // Whether the port switches its DTR line off, by which some boards know that somebody is there.
  bool DtrIsOff() const;

  // False: the line did not go out within two seconds. [host]
  bool Send(std::string_view line);
  // The next line without its end; none when it has not come by then. [host]
  std::optional<std::string> ReadLine(DWORD timeoutMs);
  // Bytes that have come and are no whole line yet.
  const std::string& Rest() const { return pending_; }

 private:
  HANDLE port_ = INVALID_HANDLE_VALUE;
  DCB before_{};
  bool configured_ = false;
  std::string pending_;
};

}  // namespace k7host
