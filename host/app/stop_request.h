// Ctrl-C, Ctrl-Break and the end of console or session, as a request to stop.
#pragma once

#include <windows.h>

namespace k7host {

// How long a closing console or session waits for the job's end. Windows ends the process after 5
// s.
inline constexpr DWORD kCloseWaitMs = 4500;

// From here on the first Ctrl-C (or Ctrl-Break, or closing of the console) asks to stop, the second
// asks to end at once, and the third ends the program. [host]
void InstallStopHandler();

// Asks to stop as the first Ctrl-C does. [any]
void RequestStop();

// The user has asked to stop. [any]
bool StopRequested();

// Signalled once the user has asked to stop, and once the user has asked to end at once. [any]
HANDLE StopEvent();
HANDLE SecondStopEvent();

// What to do when the console closes and StopHandled has not been called in time; null: nothing.
// [host]
void SetStopDeadline(void (*onDeadline)());

// Lets the console close: the program has ended the job and released the machine. [host]
void StopHandled();

}  // namespace k7host
