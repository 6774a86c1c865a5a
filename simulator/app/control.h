// Commands to a running simulator, one a line: what a person at the machine can do, and writing
// files.
#pragma once

#include <string>
#include <string_view>

#include "app/simulator.h"

namespace k7sim {

enum class ControlResult { Done, Quit, WriteFiles, Bad };

inline constexpr std::string_view kControlHelp =
    "switch x|y|z|probe 1|0|auto   hold a switch closed or open, or let it follow the head\n"
    "position X,Y,Z                move the head by hand, inches from the switches\n"
    "homed 1|0                     the table counts as homed or not\n"
    "surface WORK                  put another plate on the table, as --surface\n"
    "send TEXT                     send TEXT as a line to every host\n"
    "halt [TEXT]                   halt the machine, with TEXT as its alarm\n"
    "resume                        end the halt, as M999 does\n"
    "fault FAULT                   add a fault, as --fault\n"
    "close [MS]                    close all links; open them again after MS milliseconds\n"
    "report                        write report, picture and transcript now\n"
    "quit                          write them and stop\n";

// Carries out one command. Bad: nothing has been done and `message` says why. Otherwise `message`
// is what to print; it may be empty. Quit and WriteFiles are left to the caller.
ControlResult RunControlLine(std::string_view line, Simulator& simulator, TimeUs wireUs,
                             std::string& message);

}  // namespace k7sim
