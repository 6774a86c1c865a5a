// k7host: runs an engraving machine from the command line through k7driver.dll.
#include <windows.h>

#include <shellapi.h>

#include <cstdio>

#include "app/commands.h"
#include "app/console.h"
#include "app/doctor_command.h"
#include "app/settings_file_command.h"
#include "app/stop_request.h"
#include "app/trace_command.h"
#include "app/watchdog.h"
#include "core/text.h"

namespace k7host {
namespace {

int Run(const Arguments& arguments) {
  switch (arguments.command) {
    case Command::List:
      return RunList(arguments);
    case Command::Info:
      return RunInfo(arguments);
    case Command::Engrave:
      return RunEngrave(arguments);
    case Command::Estimate:
      return RunEstimate(arguments);
    case Command::Home:
      return RunHome(arguments);
    case Command::Switches:
      return RunSwitches(arguments);
    case Command::Jog:
      return RunJog(arguments);
    case Command::GoTo:
      return RunGoTo(arguments);
    case Command::Spindle:
      return RunSpindle(arguments);
    case Command::Settings:
    case Command::Setup:
      return RunSettings(arguments);
    case Command::Trace:
      return RunTrace(arguments);
    case Command::SettingsFile:
      return RunSettingsFile(arguments.settings);
    case Command::Doctor:
      return RunDoctor(arguments.doctor);
  }
  return kExitUsage;
}

// The words after the program's name, as UTF-8.
std::vector<std::string> Words() {
  int count = 0;
  wchar_t** wide = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::string> words;
  for (int i = 1; i < count; ++i) words.push_back(NarrowText(wide[i]));
  LocalFree(wide);
  return words;
}

}  // namespace
}  // namespace k7host

int main() {
  using namespace k7host;
  InitConsole();
  const ParsedArguments parsed = ParseArguments(Words());
  if (!parsed.arguments) {
    std::fputs(parsed.help.c_str(), stdout);
    return parsed.error.empty() ? parsed.exitCode : FailLine(parsed.exitCode, parsed.error);
  }
  InstallStopHandler();
  int code = WantTrace(parsed.arguments->trace);
  if (code == kExitOk) code = RunWatched([&parsed] { return Run(*parsed.arguments); });
  StopHandled();
  return code;
}
