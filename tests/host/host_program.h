// k7host.exe started as a program: what it prints, its exit code and what it asks of the driver. A
// recording driver stands in for k7driver.dll, in a folder of its own beside a copy of the program.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>

namespace k7test {

struct Outcome {
  DWORD exitCode = 0;
  std::string out;
  std::string err;
  std::string log;  // the driver's
};

class Program : public testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  // Tells the recording driver, by an environment variable, how to answer.
  void Set(const std::string& name, const std::string& value);

  // Makes the text a drawing in the program's folder; its name.
  std::string File(const std::string& text);

  // Starts k7host; its outputs go to files, its input is empty.
  HANDLE Start(const std::string& arguments);
  // Waits for its end and closes the handle.
  Outcome Finish(HANDLE process);
  Outcome Host(const std::string& arguments) { return Finish(Start(arguments)); }

  // Waits until the error output of the program that was started holds the text.
  bool WaitForError(const std::string& text) const;

  // What the driver has written down so far.
  std::string Log() const;
  void ForgetLog() const;

  // A request to stop travels through a console that both share; there may be none yet.
  static void ShareConsole();
  // Asks the program to stop as the console does: with Ctrl-Break, or where the platform knows
  // none, with Ctrl-C.
  void Break() const;

  std::filesystem::path folder_;

 private:
  DWORD processId_ = 0;
  std::map<std::string, std::string> set_;
};

}  // namespace k7test
