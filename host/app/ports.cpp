#include "app/ports.h"

#include <windows.h>

#include "doctor/ports.h"

namespace k7host {
namespace {

constexpr int kPortCount = 50;

std::string Joined(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ", ") + name;
  return text;
}

}  // namespace

SerialPorts LookAtPorts() {
  SerialPorts ports;
  for (int i = 0; i < kPortCount; ++i) {
    const std::string name = "COM" + std::to_string(i);
    const HANDLE port = CreateFileA(("\\\\.\\" + name).c_str(), GENERIC_READ | GENERIC_WRITE, 0,
                                    nullptr, OPEN_EXISTING, FILE_FLAG_OVERLAPPED, nullptr);
    const DWORD error = port == INVALID_HANDLE_VALUE ? GetLastError() : ERROR_SUCCESS;
    if (port != INVALID_HANDLE_VALUE) CloseHandle(port);
    if (error == ERROR_SUCCESS) {
      ports.free.push_back(name);
    } else if (error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION) {
      ports.taken.push_back(name);
    }
  }
  ports.programs = ProgramsWithDriver();
  return ports;
}

std::string PortsText(const SerialPorts& ports) {
  std::string text = ports.free.empty() ? "" : "looked at " + Joined(ports.free);
  if (!ports.taken.empty()) {
    text += (text.empty() ? "" : "; ") + Joined(ports.taken) +
            (ports.taken.size() == 1 ? " is" : " are") + " in use by another program";
  }
  if (text.empty()) text = "there is no serial port COM0 to COM49";
  if (ports.programs.empty()) return text;
  return text + "; " + Joined(ports.programs) + (ports.programs.size() == 1 ? " has" : " have") +
         " the driver loaded and may have the port: end " +
         (ports.programs.size() == 1 ? "it" : "them") + " first";
}

}  // namespace k7host
