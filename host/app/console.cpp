// Console output and keys.
#include "app/console.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <mutex>

namespace k7host {
namespace {

bool g_over = false;          // the cursor stands behind a PrintOver line
std::size_t g_overWidth = 0;  // its length
UINT g_codePageBefore = 0;    // 0: not changed

// One line at a time. A thread that is stuck in its output does not keep another from the last
// word.
class OutputLock {
 public:
  OutputLock() : held_(Mutex().try_lock_for(std::chrono::seconds(1))) {}
  ~OutputLock() {
    if (held_) Mutex().unlock();
  }
  OutputLock(const OutputLock&) = delete;
  OutputLock& operator=(const OutputLock&) = delete;

 private:
  static std::timed_mutex& Mutex() {
    static std::timed_mutex mutex;
    return mutex;
  }

  bool held_;
};

LONG WINAPI OnCrash(EXCEPTION_POINTERS*) {
  RestoreConsole();
  return EXCEPTION_CONTINUE_SEARCH;
}

bool OutputIsConsole() {
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(STD_OUTPUT_HANDLE), &mode) != 0;
}

void EndOver() {
  if (!g_over) return;
  std::fputc('\n', stdout);
  std::fflush(stdout);
  g_over = false;
  g_overWidth = 0;
}

}  // namespace

void InitConsole() {
  g_codePageBefore = GetConsoleOutputCP();
  SetConsoleOutputCP(CP_UTF8);
  std::atexit(&RestoreConsole);
  SetUnhandledExceptionFilter(&OnCrash);
}

void RestoreConsole() {
  if (g_codePageBefore != 0) SetConsoleOutputCP(g_codePageBefore);
}

void PrintLine(const std::string& line) {
  const OutputLock lock;
  EndOver();
  std::fputs((line + "\n").c_str(), stdout);
  std::fflush(stdout);
}

void Print(const std::string& name, const std::string& value) {
  PrintLine(name + ": " + value);
}

bool PrintOver(const std::string& line) {
  if (!OutputIsConsole()) return false;
  const OutputLock lock;
  std::string text = "\r" + line;
  if (line.size() < g_overWidth) text.append(g_overWidth - line.size(), ' ');
  std::fputs(text.c_str(), stdout);
  std::fflush(stdout);
  g_over = true;
  g_overWidth = line.size();
  return true;
}

int FailLine(int exitCode, const std::string& line) {
  const OutputLock lock;
  EndOver();
  std::fputs((line + "\n").c_str(), stderr);
  std::fflush(stderr);
  return exitCode;
}

int Fail(int exitCode, const std::string& message) {
  return FailLine(exitCode, "k7host: " + message);
}

void Notice(const std::string& message) {
  FailLine(0, "k7host: " + message);
}

HANDLE ConsoleInput() {
  const HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
  DWORD mode = 0;
  return GetConsoleMode(input, &mode) != 0 ? input : nullptr;
}

WORD TakeKey(bool* shift) {
  const HANDLE input = ConsoleInput();
  INPUT_RECORD record{};
  DWORD read = 0;
  // Peeks, because the number of waiting events is no help: for a terminal under Wine it stays 0
  // until somebody reads.
  while (input != nullptr && PeekConsoleInputW(input, &record, 1, &read) && read > 0) {
    if (!ReadConsoleInputW(input, &record, 1, &read) || read == 0) return 0;
    if (record.EventType != KEY_EVENT || !record.Event.KeyEvent.bKeyDown) continue;
    if (shift != nullptr) *shift = (record.Event.KeyEvent.dwControlKeyState & SHIFT_PRESSED) != 0;
    return record.Event.KeyEvent.wVirtualKeyCode;
  }
  return 0;
}

void DropRepeats(WORD key) {
  const HANDLE input = ConsoleInput();
  INPUT_RECORD record{};
  DWORD read = 0;
  while (input != nullptr && PeekConsoleInputW(input, &record, 1, &read) && read > 0) {
    if (record.EventType == KEY_EVENT && record.Event.KeyEvent.bKeyDown &&
        record.Event.KeyEvent.wVirtualKeyCode != key) {
      return;
    }
    if (!ReadConsoleInputW(input, &record, 1, &read)) return;
  }
}

}  // namespace k7host
