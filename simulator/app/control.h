// Commands to a running simulator, one a line: what a person at the machine can do, and writing
// files. The control pipe and the page of --view both take them.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "app/simulator.h"

namespace k7sim {

enum class ControlResult { Done, Quit, WriteFiles, Bad };

// One command at work.
struct ControlCall {
  const std::string& rest;  // what follows the verb
  Simulator& simulator;
  TimeUs wireUs;
  std::string& message;  // see RunControlLine
};

struct ControlCommand {
  std::string_view verb;
  std::string_view arguments;  // what may follow the verb
  std::string_view help;
  ControlResult (*run)(const ControlCall& call);
};

// All of them but `help`, in the order in which it lists them.
std::span<const ControlCommand> ControlCommands();

// Each command with its arguments, one a line.
std::string ControlHelp();

// Carries out one command. Bad: nothing has been done and `message` says why. Otherwise `message`
// is what to print; it may be empty. Quit and WriteFiles are left to the caller.
ControlResult RunControlLine(std::string_view line, Simulator& simulator, TimeUs wireUs,
                             std::string& message);

}  // namespace k7sim
