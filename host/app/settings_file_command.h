// k7host settings show, get, set, ...: the settings file without a machine; and the look at it that
// comes before a machine moves.
#pragma once

#include <map>
#include <string>

#include "args/arguments.h"

namespace k7host {

// An exit code; everything has been printed. [host]
int RunSettingsFile(const SettingsArguments& arguments);

// Files that stand where settings are looked for and are none, by identity. Asked for before a
// search, which writes a name into whatever file it finds there. [host]
using NoSettings = std::map<std::string, std::string>;
NoSettings FindNoSettings();

// For the commands that move a machine, or tell what it would do: kExitUsage, explained on the
// error output, when the settings of that controller make no sense, or were none before the search;
// kExitOk for all other commands. [host]
int CheckSettingsBefore(Command command, const std::string& id, const NoSettings& before);

}  // namespace k7host
