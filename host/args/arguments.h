// The command line of k7host: what was asked for, or the text that says why not.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "args/settings_arguments.h"

namespace k7host {

// Exit codes of the program.
inline constexpr int kExitOk = 0;
inline constexpr int kExitMachine = 1;  // the machine or the driver refused or failed
inline constexpr int kExitUsage = 2;    // wrong usage or bad input

enum class Command {
  List,
  Info,
  Engrave,
  Estimate,
  Home,
  Switches,
  Jog,
  GoTo,
  Spindle,
  Settings,      // the dialog
  SettingsFile,  // settings show, get, set, ...
  Setup,
  Doctor,
};

enum class SpindleAction { On, Full, Off, RampUp, RampDown };

struct Arguments {
  Command command = Command::List;
  std::string id;    // controller identity; empty: the only one there is
  std::string file;  // engrave, estimate
  // engrave
  std::uint32_t passes = 0;   // 0: all
  std::uint32_t runKind = 0;  // a k7::kRun number
  bool home = false;
  bool spindle = false;
  bool showSettings = false;
  bool batch = false;
  // switches
  bool watch = false;
  // jog
  std::optional<std::uint32_t> direction;  // a k7::kJog number; none: with the keyboard
  std::uint32_t key = 0;                   // virtual key, also of a spindle ramp; 0: none
  bool slow = false;
  // goto
  double xInches = 0.0;
  double yInches = 0.0;
  // spindle
  SpindleAction spindleAction = SpindleAction::Off;
  double seconds = 0.0;  // 0: until a key is pressed
  SettingsArguments settings;
  DoctorArguments doctor;
  // dialog, settings alone
  bool beforeJob = false;
  bool readOnly = false;
};

struct ParsedArguments {
  std::optional<Arguments> arguments;
  int exitCode = kExitOk;  // when there are no arguments
  std::string help;        // text asked for, for the standard output
  std::string error;       // one line, for the error output
};

// Reads the arguments after the program's name. [any]
ParsedArguments ParseArguments(const std::vector<std::string>& words);

}  // namespace k7host
