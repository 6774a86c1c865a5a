// Whether the values of a settings file make sense, before a machine moves by them.
#pragma once

#include <string>
#include <vector>

#include "settings/ini_text.h"

namespace k7host {

enum class Severity {
  Odd,    // the machine runs with it; somebody should look at it
  Wrong,  // makes no sense: nothing is moved with it
};

struct SettingsFault {
  Severity severity = Severity::Odd;
  std::string key;      // "[Axis X] Screw Pitch"; empty: the file as a whole
  std::string problem;  // what is wrong with it
  std::string todo;     // what is expected, or what to do
};

enum class SettingsKind {
  Controller,       // the file of a controller
  MaterialProfile,  // a file of its material library, which holds a few of the keys
};

// Everything that is odd or wrong in a file, in the order of the keys. A missing key is never a
// fault: the driver has a default for it. [any]
std::vector<SettingsFault> CheckSettings(const IniText& file,
                                         SettingsKind kind = SettingsKind::Controller);

// "[Axis X] Screw Pitch: is 0 in a turn; expected 0.001 to 10 in a turn". [any]
std::string FaultText(const SettingsFault& fault);

// The number of the faults that are wrong, not only odd. [any]
std::size_t CountWrong(const std::vector<SettingsFault>& faults);

}  // namespace k7host
