// The parts of k7_slots.exe: the driver it holds, its window, its commands.
#pragma once

#include <windows.h>

#include <cstdlib>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "k7/driver.h"

namespace k7slots {

using Words = std::vector<std::string>;

struct Driver {
  HMODULE module = nullptr;
  decltype(&EnumerateControllers) enumerate = nullptr;
  decltype(&GetControllerInfo) info = nullptr;
  decltype(&ConnectToController) connect = nullptr;
  decltype(&ReleaseController) release = nullptr;
  k7::IEngraver* device = nullptr;
  HWND window = nullptr;
};

// A command takes the words of its line, its own name first, and returns its answer.
using Command = std::function<std::string(Driver&, const Words&)>;
using Commands = std::map<std::string, Command>;

const Commands& DeviceCommands();  // need a connected device (slots_device.cpp)
const Commands& WindowCommands();  // likewise: the host's window and its messages
                                   // (slots_window.cpp)
const Commands& DeskCommands();    // what a person does with keyboard and dialogs, of this program
                                   // or another (slots_desk.cpp)

// A number among the words, 0 when it is left out.
inline unsigned Number(const Words& words, std::size_t index) {
  return index < words.size()
             ? static_cast<unsigned>(std::strtoll(words[index].c_str(), nullptr, 0))
             : 0u;
}

inline std::string Text(long long value) {
  return std::to_string(value);
}

// ASCII alone.
inline std::string Narrow(const wchar_t* text) {
  std::string narrow;
  for (; *text != L'\0'; ++text) narrow += static_cast<char>(*text);
  return narrow;
}

inline std::wstring Wide(const std::string& text) {
  return {text.begin(), text.end()};
}

// Holds or releases a key, for every program on the desktop.
inline void Key(unsigned key, bool down) {
  keybd_event(static_cast<BYTE>(key), 0, down ? 0 : KEYEVENTF_KEYUP, 0);
}

}  // namespace k7slots
