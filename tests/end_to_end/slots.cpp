// k7_slots.exe: runs k7driver.dll through its exports and slots alone, one command a line from
// standard input, one answer a line to standard output. What the end-to-end tests drive.
#include "slots.h"

#include <cstdint>
#include <cstdio>
#include <iostream>
#include <sstream>

namespace k7slots {
namespace {

template <typename Function>
void Load(HMODULE module, Function& function, const char* name) {
  function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
  if (function == nullptr) std::exit(3);
}

bool LoadDriver(Driver& driver) {
  driver.module = LoadLibraryW(L"k7driver.dll");
  if (driver.module == nullptr) return false;
  Load(driver.module, driver.enumerate, "EnumerateControllers");
  Load(driver.module, driver.info, "GetControllerInfo");
  Load(driver.module, driver.connect, "ConnectToController");
  Load(driver.module, driver.release, "ReleaseController");
  return true;
}

const Commands& ExportCommands() {
  static const Commands commands = {
      {"enumerate", [](Driver& d, const Words&) { return Text(d.enumerate()); }},
      {"info",
       [](Driver& d, const Words& w) {
         wchar_t id[64] = L"?", friendly[64] = L"?";
         d.info(static_cast<int32_t>(Number(w, 1)), id, friendly, 64);
         return Narrow(id) + "|" + Narrow(friendly);
       }},
      {"connect",
       [](Driver& d, const Words& w) {
         d.device = d.connect(w.size() > 1 ? Wide(w[1]).c_str() : nullptr);
         return std::string{d.device == nullptr ? "null" : "connected"};
       }},
      {"release",
       [](Driver& d, const Words&) {
         d.release(d.device);
         d.device = nullptr;
         return std::string{"released"};
       }},
      // What this process holds; the driver need not be connected.
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
  };
  return commands;
}

std::string Run(Driver& driver, const Words& words) {
  for (const Commands* commands : {&ExportCommands(), &DeskCommands()}) {
    const auto found = commands->find(words[0]);
    if (found != commands->end()) return found->second(driver, words);
  }
  for (const Commands* commands : {&DeviceCommands(), &WindowCommands()}) {
    const auto found = commands->find(words[0]);
    if (found == commands->end()) continue;
    return driver.device != nullptr ? found->second(driver, words) : "no device";
  }
  return "unknown command";
}

}  // namespace
}  // namespace k7slots

int main() {
  using namespace k7slots;
  Driver driver;
  if (!LoadDriver(driver)) {
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
