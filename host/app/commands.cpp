// The commands that ask or move the machine once.
#include "app/commands.h"

#include <cmath>
#include <optional>
#include <vector>

#include "app/console.h"
#include "app/ports.h"
#include "app/stop_request.h"
#include "app/watchdog.h"
#include "core/machine_check.h"
#include "core/text.h"

namespace k7host {
namespace {

constexpr DWORD kWatchMs = 200;
constexpr std::int32_t kPathCapacity = 520;
constexpr int kLifeTries = 20;
constexpr DWORD kLifeMs = 50;

std::string LinkName(std::uint32_t type) {
  return type == k7::kLinkSerial ? "serial" : type == k7::kLinkTcp ? "tcp" : "none";
}

// Without a resolution nobody knows how far a step goes.
std::string StepsText(std::int64_t steps, double stepsPerInch) {
  return stepsPerInch > 0.0 && std::isfinite(stepsPerInch) ? InchesFromSteps(steps, stepsPerInch)
                                                           : "unknown";
}

// A place as the driver tells it; one that no table can have is not known.
std::string PlaceText(std::int32_t thousandths) {
  return SaneText(std::abs(thousandths / 1000.0) < 100000.0 ? thousandths / 1000.0 : NAN);
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

std::optional<std::string> AskSwitches(Session& session) {
  const WaitingFor waiting(Waiting::Switches);
  return ReadSwitchText(session.Device());
}

// "COM7", of "\\\\.\\COM7".
std::string PortName(k7::IEngraver& device) {
  wchar_t port[k7::kNameCapacity] = {};
  device.GetPortName(port, k7::kNameCapacity);
  const std::string name = NarrowText(port);
  return name.starts_with("\\\\.\\") ? name.substr(4) : name;
}

// Port and link of a controller, separated by a tab.
std::string AskPort(const Arguments& arguments, const std::string& id) {
  Arguments one = arguments;
  one.id = id;
  Session session;
  if (session.Open(one) != kExitOk) return "-\t-";
  return PortName(session.Device()) + "\t" + LinkName(session.Device().GetLinkType());
}

// Over TCP nothing is searched for: whoever answers there is the list.
int ListTheOneAt(const Arguments& arguments) {
  Session session;
  if (const int code = session.Open(arguments); code != kExitOk) return code;
  wchar_t name[k7::kNameCapacity] = {};
  session.Device().GetFriendlyName(name, k7::kNameCapacity);
  PrintLine("0\t" + session.Id() + "\t" + NarrowText(name) + "\t" + PortName(session.Device()) +
            "\t" + LinkName(session.Device().GetLinkType()));
  return kExitOk;
}

}  // namespace

int RunList(const Arguments& arguments) {
  if (!arguments.tcp.empty()) return ListTheOneAt(arguments);
  Session session;
  const int code = session.Load();
  if (code != kExitOk) return code;
  const std::uint64_t start = GetTickCount64();
  const std::int32_t count = Search(session.Driver());
  const std::uint64_t tookMs = GetTickCount64() - start;
  SerialPorts ports = LookAtPorts();
  if (count > 0) ports.programs.clear();  // nobody has taken anything away
  Notice("the search took " + InchesFromThousandths(static_cast<std::int64_t>(tookMs)) +
         " s: " + PortsText(ports));
  if (count < 1) return Fail(kExitMachine, "no controller found");
  std::vector<ControllerEntry> entries;
  for (std::int32_t i = 0; i < count; ++i) entries.push_back(ReadEntry(session.Driver(), i));
  // The search finds controllers on serial ports alone.
  const bool sure = entries.size() == 1 && ports.free.size() == 1;
  if (!sure && !arguments.ports) Notice("k7host list --ports asks each for its port");
  for (std::size_t i = 0; i < entries.size(); ++i) {
    std::string port = sure ? ports.free[0] + "\tserial" : "-\t-";
    if (arguments.ports) port = AskPort(arguments, entries[i].id);
    PrintLine(std::to_string(i) + "\t" + entries[i].id + "\t" + entries[i].name + "\t" + port);
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
  Print("resolution", SaneText(device.GetXStepsPerUnit()) + " x " +
                          SaneText(device.GetYStepsPerUnit()) + " x " +
                          SaneText(device.GetZStepsPerInch()) + " steps per inch");
  Print("passes", std::to_string(device.GetPassCount()));
  Print("location", PositionText(session));
  Print("fitted", Fitted(device));
  Print("settings", NarrowText(path));
  return kExitOk;
}

std::string PositionText(Session& session) {
  HostWindow& window = session.Window();
  window.Clear();
  // Told in steps, which are exact. The thousandths of GetMachinePosition are rounded half up, also
  // below zero, and would differ from what a jog to the same place shows.
  session.Device().GetCurrentPosition(nullptr, nullptr);
  if (const auto& position = window.Reports().position) {
    const Table table = session.MachineTable();
    return StepsText(position->xSteps, table.xStepsPerInch) + " " +
           StepsText(position->ySteps, table.yStepsPerInch) + " inches";
  }
  std::int32_t x = 0;
  std::int32_t y = 0;
  session.Device().GetMachinePosition(&x, &y, nullptr);
  return PlaceText(x) + " " + PlaceText(y) + " inches";
}

void PrintPosition(Session& session) {
  Print("position", PositionText(session));
}

int HomeMachine(Session& session) {
  session.Window().Clear();
  {
    const WaitingFor waiting(Waiting::Homing);
    session.Device().HomeTable();
  }
  session.Window().Wait(0);
  if (const int code = session.CheckLink("homing"); code != kExitOk) return code;
  // The driver reports the position at the end of a homing; without a report it has not homed.
  if (!session.Window().Reports().position) {
    return Fail(kExitMachine, "the machine did not home: it needs all four switches");
  }
  PrintPosition(session);
  return kExitOk;
}

int RunHome(const Arguments& arguments) {
  Session session;
  int code = session.Open(arguments);
  if (code == kExitOk) code = session.CheckSettings();
  return code != kExitOk ? code : HomeMachine(session);
}

int RunSwitches(const Arguments& arguments) {
  Session session;
  const int code = session.Open(arguments);
  if (code != kExitOk) return code;
  std::string last;
  do {
    // The driver waits for the first report alone; a watch asks for signs of life as well.
    const std::optional<std::string> now = AskSwitches(session);
    if (!now) {
      return Fail(kExitMachine, "the machine does not tell its switches: it needs all four");
    }
    if (*now != last) Print("switches", *now);
    last = *now;
    if (arguments.watch && session.Device().CheckAlive() == 0) {
      return Fail(kExitUnknown, session.IsLinkLost() ? "link lost: the machine is gone"
                                                     : "the machine no longer answers");
    }
    if (arguments.watch) session.Window().Wait(kWatchMs);
  } while (arguments.watch && !StopRequested());
  return kExitOk;
}

int RunGoTo(const Arguments& arguments) {
  Session session;
  int code = session.Open(arguments);
  if (code == kExitOk) code = session.CheckSettings();
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
  {
    const WaitingFor waiting(Waiting::GoTo);
    session.Device().GoToAsJob(static_cast<std::uint32_t>(x), static_cast<std::uint32_t>(y), 0);
  }
  if (const int lost = session.CheckLink("on the way"); lost != kExitOk) return lost;
  PrintPosition(session);
  return kExitOk;
}

std::int64_t ShowSettings(Session& session, bool beforeJob, bool allowRun) {
  const WaitingFor waiting(Waiting::Dialog);
  // The dialog closes at its first look when the last sign of life is older than two seconds.
  for (int i = 0; i < kLifeTries && session.Device().CheckAlive() == 0; ++i) {
    session.Window().Wait(kLifeMs);
  }
  const std::int64_t result = session.Device().ShowSettingsDialog(
      session.Window().Handle(), beforeJob ? 1 : 0, allowRun ? 1 : 0, 0, 1);
  // A dialog that closes by itself says no more than one that was cancelled, and with it the driver
  // forgets when the machine last answered: its next check is good whatever the machine does.
  if (result == k7::kSettingsCancelled && (session.IsLinkLost() || !TheWatch().Answers())) {
    Fail(kExitUnknown,
         std::string("the dialog was closed because ") +
             (session.IsLinkLost() ? "the link was lost" : "the controller has fallen silent"));
    return kSettingsSilent;
  }
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
  const std::int64_t result = ShowSettings(session, arguments.beforeJob, !arguments.readOnly);
  return result == kSettingsSilent ? kExitUnknown : kExitOk;
}

}  // namespace k7host
