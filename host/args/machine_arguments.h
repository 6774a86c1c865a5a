// The command line of what is done with a machine alone, and what every command has that talks to
// one.
#pragma once

#include "args/arguments.h"

namespace CLI {
class App;
}

namespace k7host {

// The longest way that a command line may name.
inline constexpr double kLongestInches = 10000.0;

// Adds --tcp to a command. [any]
void AddTcp(CLI::App* sub, Arguments& out);

// Adds a command that becomes Arguments::command when it is given; with --tcp and, but for
// `list`, which talks to all, with --id. [any]
CLI::App* AddDeviceCommand(CLI::App& app, Arguments& out, Command command, const char* name,
                           const char* description, const char* footer);

// Adds `list` and `info`. [any]
void AddListCommands(CLI::App& app, Arguments& out);

// Adds `home`, `switches`, `jog`, `goto` and `spindle`. [any]
void AddMachineCommands(CLI::App& app, Arguments& out);

}  // namespace k7host
