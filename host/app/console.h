// What the program prints: results "name: value" on the standard output, one error line.
#pragma once

#include <windows.h>

#include <string>

namespace k7host {

// Makes the console take UTF-8. [host]
void InitConsole();

// Prints "name: value" and a line end at once, so that a reader at the far end of a pipe sees it.
// [host]
void Print(const std::string& name, const std::string& value);

// Prints a line as it is. [host]
void PrintLine(const std::string& line);

// Prints `line` over the line printed last this way, when the output is a console, and nothing
// else; Print and Fail then start a line of their own. False when it is no console. [host]
bool PrintOver(const std::string& line);

// Prints "k7host: message" to the error output and returns `exitCode`. [host]
int Fail(int exitCode, const std::string& message);

// Prints an error line as it is and returns `exitCode`. [host]
int FailLine(int exitCode, const std::string& line);

// The console's input, null when the standard input is none. [host]
HANDLE ConsoleInput();

// The virtual key of the next key pressed, if one is waiting: 0 for none. Never blocks. `shift` is
// set to whether Shift is held. [host]
WORD TakeKey(bool* shift);

// Forgets what a held key has added while it repeated itself, up to the next other key. [host]
void DropRepeats(WORD key);

}  // namespace k7host
