#include "doctor/ports.h"

#include <windows.h>
// After windows.h, whose types they need.
#include <setupapi.h>
#include <tlhelp32.h>

#include <algorithm>

#include "core/text.h"

namespace k7host {
namespace {

constexpr int kMostPort = 256;

// Class "Ports (COM & LPT)" of the device manager.
constexpr GUID kPortsClass = {
    0x4D36E978, 0xE325, 0x11CE, {0xBF, 0xC1, 0x08, 0x00, 0x2B, 0xE1, 0x03, 0x18}};

bool HasDriverLoaded(DWORD process) {
  const HANDLE modules = CreateToolhelp32Snapshot(TH32CS_SNAPMODULE, process);
  if (modules == INVALID_HANDLE_VALUE) return false;
  MODULEENTRY32W module{};
  module.dwSize = sizeof module;
  bool found = false;
  for (BOOL more = Module32FirstW(modules, &module); more != 0 && !found;
       more = Module32NextW(modules, &module)) {
    found = lstrcmpiW(module.szModule, L"k7driver.dll") == 0;
  }
  CloseHandle(modules);
  return found;
}

}  // namespace

std::string PortName(int number) {
  return "COM" + std::to_string(number);
}

int PortNumber(const std::string& name) {
  std::size_t at = name.rfind("\\\\.\\", 0) == 0 ? 4 : 0;
  for (const char upper : {'C', 'O', 'M'}) {
    if (at >= name.size() || (name[at] != upper && name[at] != upper - 'A' + 'a')) return -1;
    ++at;
  }
  int number = 0;
  if (at == name.size() || name.size() - at > 3) return -1;
  for (; at < name.size(); ++at) {
    if (name[at] < '0' || name[at] > '9') return -1;
    number = number * 10 + (name[at] - '0');
  }
  return number <= kMostPort ? number : -1;
}

std::map<int, std::string> FriendlyPortNames() {
  std::map<int, std::string> names;
  const HDEVINFO devices = SetupDiGetClassDevsW(&kPortsClass, nullptr, nullptr, DIGCF_PRESENT);
  if (devices == INVALID_HANDLE_VALUE) return names;
  SP_DEVINFO_DATA device{};
  device.cbSize = sizeof device;
  for (DWORD i = 0; SetupDiEnumDeviceInfo(devices, i, &device) != 0; ++i) {
    wchar_t text[256] = L"";
    if (SetupDiGetDeviceRegistryPropertyW(devices, &device, SPDRP_FRIENDLYNAME, nullptr,
                                          reinterpret_cast<BYTE*>(text), sizeof text - sizeof *text,
                                          nullptr) == 0) {
      continue;
    }
    const std::string name = NarrowText(text);
    const std::size_t open = name.rfind("(COM");
    const std::size_t close = name.find(')', open == std::string::npos ? 0 : open);
    if (open == std::string::npos || close == std::string::npos) continue;
    const int number = PortNumber(name.substr(open + 1, close - open - 1));
    if (number >= 0) names[number] = name;
  }
  SetupDiDestroyDeviceInfoList(devices);
  return names;
}

std::vector<int> ListedPorts() {
  std::vector<int> ports;
  std::vector<wchar_t> all(65536);
  if (QueryDosDeviceW(nullptr, all.data(), static_cast<DWORD>(all.size())) == 0) return ports;
  for (const wchar_t* name = all.data(); *name != L'\0'; name += lstrlenW(name) + 1) {
    const int number = PortNumber(NarrowText(name));
    if (number >= 0) ports.push_back(number);
  }
  std::sort(ports.begin(), ports.end());
  return ports;
}

bool PortsAreShared() {
  const HMODULE system = GetModuleHandleW(L"ntdll.dll");
  return system != nullptr && GetProcAddress(system, "wine_get_version") != nullptr;
}

std::vector<std::string> ProgramsWithDriver() {
  std::vector<std::string> programs;
  const HANDLE processes = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
  if (processes == INVALID_HANDLE_VALUE) return programs;
  PROCESSENTRY32W process{};
  process.dwSize = sizeof process;
  for (BOOL more = Process32FirstW(processes, &process); more != 0;
       more = Process32NextW(processes, &process)) {
    const DWORD id = process.th32ProcessID;
    if (id == 0 || id == GetCurrentProcessId() || !HasDriverLoaded(id)) continue;
    programs.push_back(NarrowText(process.szExeFile) + " (process " + std::to_string(id) + ")");
  }
  CloseHandle(processes);
  return programs;
}

}  // namespace k7host
