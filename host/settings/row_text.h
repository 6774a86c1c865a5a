// Names from the driver's table of settings as texts.
#pragma once

#include <string>

#include "settings/row.h"

namespace k7host {

// ASCII of a section or key. [any]
inline std::string Narrow(const wchar_t* ascii) {
  std::string narrow;
  for (; *ascii != L'\0'; ++ascii) narrow += static_cast<char>(*ascii);
  return narrow;
}

// Who reads a key with a default of its own; empty for all of them. [any]
inline const char* NameOf(k7::settings::Reader reader) {
  using k7::settings::Reader;
  switch (reader) {
    case Reader::Load:
      return "a load";
    case Reader::SettingsDialog:
      return "the settings dialog";
    case Reader::TableSetupDialog:
      return "the table setup dialog";
    case Reader::TableHomeDialog:
      return "the table home dialog";
    case Reader::Any:
      break;
  }
  return "";
}

}  // namespace k7host
