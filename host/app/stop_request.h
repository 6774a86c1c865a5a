// Ctrl-C, Ctrl-Break and the closing of the console, as a request to stop.
#pragma once

#include <windows.h>

namespace k7host {

// From here on the first Ctrl-C (or Ctrl-Break, or closing of the console) sets a flag instead of
// ending the program; the second ends it at once. [host]
void InstallStopHandler();

// The user has asked to stop. [any]
bool StopRequested();

// Signalled once the user has asked to stop; for waits. [any]
HANDLE StopEvent();

// Lets the console close: the program has ended the job and released the machine. [host]
void StopHandled();

}  // namespace k7host
