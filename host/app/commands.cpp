// The commands that ask or move the machine once.
#include "app/commands.h"

#include <optional>

#include "app/console.h"
#include "app/stop_request.h"
#include "core/text.h"

namespace k7host {
namespace {

constexpr DWORD kWatchMs = 200;
constexpr std::int32_t kPathCapacity = 520;

std::string LinkName(std::uint32_t type) {
  return type == k7::kLinkSerial ? "serial" : type == k7::kLinkTcp ? "tcp" : "none";
}

std::string StepsText(double stepsPerInch) {
  return InchesText(stepsPerInch);
}

std::string Fitted(k7::IEngraver& device) {
  std::string text;
  const auto add = [&text](bool fitted, const char* name) {
    if (fitted) text += (text.empty() ? "" : ", ") + std::string(name);
  };
  add(device.HasSpindle() != 0, "spindle");
  add(device.IsAirZ() != 0, "air z");
  add(device.HasBeadInsertTool() != 0, "bead insert tool");
  add(device.IsDiodePointerFitted() != 0, "diode pointer");
  add(device.GetRoundMode() != 0, "round fixture");
  return text.empty() ? "nothing" : text;
}

// "x=0 y=0 z=0 prox=0", or nothing when the driver refuses to ask the machine.
std::optional<std::string> ReadSwitchText(k7::IEngraver& device) {
  constexpr std::uint8_t kUntouched = 0xFF;
  std::uint8_t x = kUntouched;
  std::uint8_t y = kUntouched;
  std::uint8_t z = kUntouched;
  std::uint8_t prox = kUntouched;
  device.ReadSwitches(&x, &y, &z, &prox);
  if (x == kUntouched) return std::nullopt;
  return "x=" + std::to_string(x) + " y=" + std::to_string(y) + " z=" + std::to_string(z) +
         " prox=" + std::to_string(prox);
}

}  // namespace

int RunList(const Arguments&) {
  Session session;
  const int code = session.Load();
  if (code != kExitOk) return code;
  const std::int32_t count = session.Driver().enumerate();
  if (count < 1) return Fail(kExitMachine, "no controller found");
  for (std::int32_t i = 0; i < count; ++i) {
    const ControllerEntry entry = ReadEntry(session.Driver(), i);
    PrintLine(std::to_string(i) + "\t" + entry.id + "\t" + entry.name);
  }
  return kExitOk;
}

int RunInfo(const Arguments& arguments) {
  Session session;
  const int code = session.Open(arguments);
  if (code != kExitOk) return code;
  k7::IEngraver& device = session.Device();
  wchar_t name[k7::kNameCapacity] = {};
  wchar_t port[k7::kNameCapacity] = {};
  wchar_t path[kPathCapacity] = {};
  device.GetFriendlyName(name, k7::kNameCapacity);
  device.GetPortName(port, k7::kNameCapacity);
  device.GetSettingsFilePath(path, kPathCapacity);
  Print("id", session.Id());
  Print("name", NarrowText(name));
  Print("port", NarrowText(port));
  Print("link", LinkName(device.GetLinkType()));
  Print("table", InchesFromThousandths(device.GetTableWidth()) + " x " +
                     InchesFromThousandths(device.GetTableHeight()) + " inches");
  Print("resolution", StepsText(device.GetXStepsPerUnit()) + " x " +
                          StepsText(device.GetYStepsPerUnit()) + " x " +
                          StepsText(device.GetZStepsPerInch()) + " steps per inch");
  Print("passes", std::to_string(device.GetPassCount()));
  std::int32_t x = 0;
  std::int32_t y = 0;
  device.GetMachinePosition(&x, &y, nullptr);
  Print("location", InchesFromThousandths(x) + " " + InchesFromThousandths(y) + " inches");
  Print("fitted", Fitted(device));
  Print("settings", NarrowText(path));
  return kExitOk;
}

void PrintPosition(Session& session) {
  std::int32_t x = 0;
  std::int32_t y = 0;
  session.Device().GetMachinePosition(&x, &y, nullptr);
  Print("position", InchesFromThousandths(x) + " " + InchesFromThousandths(y));
}

int HomeMachine(Session& session) {
  session.Window().Clear();
  session.Device().HomeTable();
  session.Window().Wait(0);
  // The driver reports the position at the end of a homing; without a report it has not homed.
  if (!session.Window().Reports().position) {
    return Fail(kExitMachine, "the machine did not home: it needs all four switches");
  }
  PrintPosition(session);
  return kExitOk;
}

int RunHome(const Arguments& arguments) {
  Session session;
  const int code = session.Open(arguments);
  return code != kExitOk ? code : HomeMachine(session);
}

int RunSwitches(const Arguments& arguments) {
  Session session;
  const int code = session.Open(arguments);
  if (code != kExitOk) return code;
  std::string last;
  do {
    const std::optional<std::string> now = ReadSwitchText(session.Device());
    if (!now) {
      return Fail(kExitMachine, "the machine does not tell its switches: it needs all four");
    }
    if (*now != last) Print("switches", *now);
    last = *now;
    if (arguments.watch) session.Window().Wait(kWatchMs);
  } while (arguments.watch && !StopRequested());
  return kExitOk;
}

int RunGoTo(const Arguments& arguments) {
  Session session;
  const int code = session.Open(arguments);
  if (code != kExitOk) return code;
  const Table table = session.MachineTable();
  const std::int64_t x = StepsFromInches(arguments.xInches, table.xStepsPerInch);
  const std::int64_t y = StepsFromInches(arguments.yInches, table.yStepsPerInch);
  if (x > table.widthSteps || y > table.heightSteps) {
    return Fail(kExitUsage, InchesText(arguments.xInches) + " " + InchesText(arguments.yInches) +
                                " is off the table of " +
                                InchesFromSteps(table.widthSteps, table.xStepsPerInch) + " x " +
                                InchesFromSteps(table.heightSteps, table.yStepsPerInch) +
                                " inches");
  }
  session.Device().GoToAsJob(static_cast<std::uint32_t>(x), static_cast<std::uint32_t>(y), 0);
  PrintPosition(session);
  return kExitOk;
}

std::int64_t ShowSettings(Session& session, bool beforeJob, bool allowRun) {
  const std::int64_t result = session.Device().ShowSettingsDialog(
      session.Window().Handle(), beforeJob ? 1 : 0, allowRun ? 1 : 0, 0, 1);
  Print("settings", result == k7::kSettingsRunJob      ? "run job"
                    : result == k7::kSettingsApplied   ? "applied"
                    : result == k7::kSettingsCancelled ? "cancelled"
                                                       : "result " + std::to_string(result));
  return result;
}

int RunSettings(const Arguments& arguments) {
  Session session;
  const int code = session.Open(arguments);
  if (code != kExitOk) return code;
  ShowSettings(session, arguments.beforeJob, !arguments.readOnly);
  return kExitOk;
}

}  // namespace k7host
