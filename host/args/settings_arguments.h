// The command line of settings: k7host settings, dialog, doctor and setup.
#pragma once

#include <string>

namespace CLI {
class App;
}

namespace k7host {

struct Arguments;

enum class SettingsAction { Show, Get, Set, Diff, Export, Import, Backup, Restore };

struct SettingsArguments {
  SettingsAction action = SettingsAction::Show;
  std::string which;  // show, diff: an identity or a path
  std::string other;  // diff: the second
  std::string id;     // of whose file; empty: the only one there is
  std::string file;   // or that file
  std::string key;    // get, set: "Axis X/Screw Pitch"
  std::string value;  // set: as it was typed
  std::string path;   // export, import: the JSON; backup, restore: the folder
  bool all = false;
  bool json = false;
};

struct DoctorArguments {
  std::string id;    // all empty: every port, and the settings of every controller that answers
  std::string port;  // "COM7"
  std::string file;
  bool json = false;
};

// Adds `settings` with its subcommands, `dialog`, which is today's name of what `settings` alone
// does, `doctor`, and `setup`. [any]
void AddSettingsCommands(CLI::App& app, Arguments& out);

}  // namespace k7host
