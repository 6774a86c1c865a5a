#include "app/doctor_command.h"

#include <algorithm>

#include "app/console.h"
#include "app/stop_request.h"
#include "core/text.h"
#include "doctor/file_checks.h"
#include "doctor/ports.h"
#include "settings/settings_files.h"

namespace k7host {
namespace {

// Settings of the controllers that answered, or that was asked for, or of all there are.
void CheckSettingsOf(std::vector<std::string> ids, const DoctorArguments& arguments,
                     const Tell& tell) {
  if (ids.empty() && !arguments.id.empty()) ids = {arguments.id};
  if (ids.empty()) ids = ControllersWithSettings();
  if (ids.empty()) {
    return tell({Level::Ok, About::Settings, "settings",
                 "none yet in " + NarrowText(ControllersFolder()), ""});
  }
  for (const std::string& id : ids) {
    CheckSettingsAt(SettingsPath(id), id, tell);
    CheckLibraries(id, tell);
  }
}

}  // namespace

int RunDoctor(const DoctorArguments& arguments) {
  PortQuestion question{-1, arguments.id};
  if (!arguments.port.empty()) {
    question.port = PortNumber(arguments.port);
    if (question.port < 0) {
      return Fail(kExitUsage, "'" + arguments.port + "' is no port; expected COM0 to COM256");
    }
  }
  std::vector<Finding> findings;
  const Tell tell = [&](Finding finding) {
    // Each line as soon as it is known: a search may take seconds.
    if (!arguments.json) PrintLine(FindingLine(finding));
    findings.push_back(std::move(finding));
  };
  CheckComputer(tell);
  if (!arguments.file.empty()) {
    CheckSettingsAt(WideText(arguments.file), "", tell);
  } else {
    CheckSettingsOf(CheckPorts(question, tell, [] { return StopRequested(); }), arguments, tell);
  }
  if (StopRequested()) return Fail(kExitMachine, "stopped by Ctrl-C; not everything was checked");
  if (arguments.json) {
    std::string json = ReportJson(findings);
    json.pop_back();  // its line end, which PrintLine adds
    PrintLine(json);
  } else {
    Print("doctor", SummaryText(findings));
  }
  return ExitCodeOf(findings);
}

}  // namespace k7host
