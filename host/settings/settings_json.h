// Settings as JSON, with units: what `export` writes, `import` takes, and `show --json` prints.
//
//   {"format": "k7 settings 1",
//    "settings": {"Axis X": {"Screw Pitch": {"value": 0.5, "unit": "in a turn"}, ...}, ...}}
//
// A value that stands in the file in another way than the driver writes it has its text beside it
// ("text"), and so has a key that is none of the driver's: nothing is lost on the way there and
// back, unless the name of such a key is no plain ASCII.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "settings/ini_text.h"

namespace k7host {

// The keys that the file holds, for ImportSettings. Ends with a line end. [any]
std::string ExportSettings(const IniText& file);

// Every key with value, unit, default, range, whether the file holds it, and what is wrong with it.
// `all` as for ShowLines. Ends with a line end. [any]
std::string ShowJson(const IniText& file, const std::string& path, bool all);

// Sets the keys that the JSON names; the others stay. On an error, which the result tells with its
// place in the JSON, `file` is as it was. [any]
std::string ImportSettings(std::string_view json, IniText& file);

}  // namespace k7host
