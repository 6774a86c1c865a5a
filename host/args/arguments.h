// The command line of k7host: what was asked for, or the text that says why not.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "args/settings_arguments.h"
#include "drawing/drawing.h"
#include "drawing/placement.h"

namespace k7host {

// Exit codes of the program.
inline constexpr int kExitOk = 0;
inline constexpr int kExitMachine = 1;  // the machine or the driver refused or failed
inline constexpr int kExitUsage = 2;    // wrong usage, bad input, settings that make no sense
inline constexpr int kExitUnknown = 3;  // ended with the machine's state unknown

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
  Trace,
  Doctor,
};

enum class SpindleAction { On, Full, Off, RampUp, RampDown };

struct Arguments {
  Command command = Command::List;
  std::vector<std::string> words;  // the whole command line
  std::string id;                  // controller identity; empty: the only one there is
  std::string tcp;    // "HOST" or "HOST:PORT"; empty: the serial port that the controller is on
  std::string file;   // engrave, estimate, trace
  std::string trace;  // file or folder for a trace of the command itself; empty: none
  double toleranceInches = kDefaultToleranceInches;
  Placement placement;
  bool optimise = false;
  std::string preview;  // file to write; empty: none
  // engrave
  std::uint32_t passes = 0;   // 0: all
  std::uint32_t runKind = 0;  // a k7::kRun number
  bool home = false;
  bool spindle = false;
  bool showSettings = false;
  bool batch = false;
  std::uint32_t fromStroke = 0;  // 0: not given
  std::string resume;            // file to go on from; empty: none
  std::string resumeTo;          // where to keep what is needed to go on; empty: beside the drawing
  bool noHome = false;
  // list
  bool ports = false;
  bool dryRun = false;
  bool frame = false;
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
  // trace
  bool traceSummary = false;
  bool traceFollow = false;
  std::string traceSvg;  // picture to write; empty: none
  bool json = false;
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
