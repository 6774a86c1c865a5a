// Jogging: the driver moves the axis for as long as a key is held; the host names the key and waits
// for the driver's message that the jog has ended.
#include "app/commands.h"
#include "app/console.h"
#include "app/stop_request.h"
#include "app/watchdog.h"

namespace k7host {
namespace {

constexpr DWORD kWaitMs = 50;

struct JogKey {
  WORD key;
  std::uint32_t direction;
  bool isZ;
};

constexpr JogKey kJogKeys[] = {
    {VK_RIGHT, k7::kJogXPlus, false}, {VK_LEFT, k7::kJogXMinus, false},
    {VK_UP, k7::kJogYPlus, false},    {VK_DOWN, k7::kJogYMinus, false},
    {VK_PRIOR, k7::kJogZUp, true},    {VK_NEXT, k7::kJogZDown, true},
};

std::string ReportText(Session& session) {
  const HostReports& reports = session.Window().Reports();
  if (reports.position) {
    const Table table = session.MachineTable();
    return "position: " + InchesFromSteps(reports.position->xSteps, table.xStepsPerInch) + " " +
           InchesFromSteps(reports.position->ySteps, table.yStepsPerInch) + " inches";
  }
  return reports.zSteps ? "z: " + std::to_string(*reports.zSteps) + " steps" : "";
}

}  // namespace

bool JogOnce(Session& session, std::uint32_t direction, bool slow, std::uint32_t key) {
  HostWindow& window = session.Window();
  window.Clear();
  session.Device().StartJog(direction, slow ? k7::kJogSlow : k7::kJogFast, key, kMsgJogEnd);
  std::string shown;
  const WaitingFor waiting(Waiting::Jog);
  while (!window.Reports().jogEnded) {
    window.Wait(kWaitMs);
    const std::string text = ReportText(session);
    if (text != shown) PrintOver(text);
    shown = text;
  }
  return window.Reports().position || window.Reports().zSteps;
}

bool JogByKeys(Session& session, bool allAxes, bool slow) {
  while (!StopRequested() && !session.IsLinkLost()) {
    bool shift = false;
    const WORD key = TakeKey(&shift);
    if (key == VK_ESCAPE) return false;
    if (key == VK_RETURN) return true;
    for (const JogKey& row : kJogKeys) {
      if (row.key != key || !(row.isZ || allAxes)) continue;
      if (!JogOnce(session, row.direction, slow || shift, key)) Print("jog", "no movement");
      DropRepeats(key);
    }
    if (key == 0) session.Window().Wait(kWaitMs);
  }
  return false;
}

int RunJog(const Arguments& arguments) {
  if (!arguments.direction && ConsoleInput() == nullptr) {
    return Fail(kExitUsage, "jog without --direction needs a console");
  }
  Session session;
  int code = session.Open(arguments);
  if (code == kExitOk) code = session.CheckSettings();
  if (code != kExitOk) return code;
  if (!arguments.direction) {
    PrintLine("Arrow keys: X and Y, Page Up and Page Down: Z, Shift: slowly, Esc: end");
    JogByKeys(session, true, arguments.slow);
    if (const int lost = session.CheckLink("jogging"); lost != kExitOk) return lost;
    PrintPosition(session);
    return kExitOk;
  }
  if (!JogOnce(session, *arguments.direction, arguments.slow, arguments.key)) {
    if (const int lost = session.CheckLink("jogging"); lost != kExitOk) return lost;
    return Fail(kExitMachine, "the jog was refused or stands at its limit");
  }
  PrintLine(ReportText(session));
  return kExitOk;
}

}  // namespace k7host
