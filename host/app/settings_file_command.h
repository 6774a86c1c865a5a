// k7host settings show, get, set, ...: the settings file without a machine; and the look at it that
// comes before a machine moves.
#pragma once

#include <string>

#include "args/arguments.h"

namespace k7host {

// An exit code; everything has been printed. [host]
int RunSettingsFile(const SettingsArguments& arguments);

// For the commands that move a machine, or tell what it would do: kExitUsage, explained on the
// error output, when the settings of that controller make no sense; kExitOk for all other commands.
// [host]
int CheckSettingsBefore(Command command, const std::string& id);

}  // namespace k7host
