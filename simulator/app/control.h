// Commands to a running simulator, one a line: what a person at the machine would do.
#pragma once

#include <string>
#include <string_view>

#include "app/simulator.h"

namespace k7sim {

enum class ControlResult { Done, Quit, WriteFiles, Bad };

inline constexpr std::string_view kControlHelp =
    "switch x|y|z|probe 1|0|auto   hold a switch closed or open, or let it go\n"
    "position X,Y,Z                push the head there by hand, inches from the switches\n"
    "homed 1|0                     the table counts as homed or not\n"
    "surface WORK                  put other work on the table\n"
    "send TEXT                     send a line nobody asked for\n"
    "halt [TEXT]                   halt the machine, with TEXT as its alarm\n"
    "resume                        as M999\n"
    "fault FAULT                   add a fault\n"
    "close [MS]                    pull the cable, and put it back after MS\n"
    "report                        write report, picture and transcript now\n"
    "quit                          write them and stop\n";

// Carries out one command. Bad: nothing was done and `message` says why; else `message` is empty
// or something to print.
ControlResult RunControlLine(std::string_view line, Simulator& simulator, TimeUs wireUs,
                             std::string& message);

}  // namespace k7sim
