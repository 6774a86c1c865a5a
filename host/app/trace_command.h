// k7host trace, and --trace of the other commands.
#pragma once

#include "args/arguments.h"

namespace k7host {

// Reads a trace and prints what was asked for. Needs no machine. [host]
int RunTrace(const Arguments& arguments);

// Asks the driver, before it is loaded, to write a trace to that file (empty: none). An exit code;
// anything but kExitOk has been explained. [host]
int WantTrace(const std::string& file);

}  // namespace k7host
