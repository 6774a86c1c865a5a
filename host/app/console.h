// What the program prints: results "name: value" on the standard output, one error line.
#pragma once

#include <windows.h>

#include <string>

namespace k7host {

// Sets the output of the console to UTF-8, in which everything is printed; RestoreConsole, the end
// of the program and a crash put back what was set before. [host]
void InitConsole();
void RestoreConsole();

// Prints "name: value" and a line end, and flushes, so that a program that reads the output through
// a pipe gets each line when it is printed. [any]
void Print(const std::string& name, const std::string& value);

// Prints a line as it is. [any]
void PrintLine(const std::string& line);

// On a console, writes `line` over the line that PrintOver wrote last; what the other functions
// print next starts on a new line. On any other output it prints nothing and returns false. [host]
bool PrintOver(const std::string& line);

// Prints "k7host: message" to the error output and returns `exitCode`. [any]
int Fail(int exitCode, const std::string& message);

// Prints "k7host: message" to the error output: what the user should know while a command goes on.
// [any]
void Notice(const std::string& message);

// Prints an error line as it is and returns `exitCode`. [any]
int FailLine(int exitCode, const std::string& line);

// The console's input, null when the standard input is none. [host]
HANDLE ConsoleInput();

// The virtual key of the next key pressed, if one is waiting: 0 for none. Never blocks. `shift` is
// set to whether Shift is held. [host]
WORD TakeKey(bool* shift);

// Drops the waiting repeats of `key`, which a held key adds while nobody reads the keys, up to the
// next press of another key. [host]
void DropRepeats(WORD key);

}  // namespace k7host
