// The spindle. Each command that starts it also stops it, because the driver of a later connection
// takes it for stopped and would not stop it.
#include "app/commands.h"
#include "app/console.h"
#include "app/stop_request.h"
#include "app/watchdog.h"

namespace k7host {
namespace {

constexpr DWORD kWaitMs = 50;

void PrintSpeed(Session& session) {
  Print("spindle", std::to_string(session.Device().GetSpindleValue()) + " rpm");
}

// Waits for the time, a key or a stop request, whichever is first.
void WaitForUser(Session& session, double seconds) {
  const std::uint64_t start = GetTickCount64();
  const auto limitMs = static_cast<std::uint64_t>(seconds * 1000.0);
  if (ConsoleInput() != nullptr) FlushConsoleInputBuffer(ConsoleInput());
  while (!StopRequested()) {
    if (seconds > 0.0 && GetTickCount64() - start >= limitMs) return;
    if (TakeKey(nullptr) != 0 || session.IsLinkLost()) return;
    session.Window().Wait(kWaitMs);
  }
}

int Ramp(Session& session, std::int32_t direction, std::uint32_t key) {
  HostWindow& window = session.Window();
  window.Clear();
  if (!session.Device().StartSpindleRamp(direction, window.Handle(), kMsgRampEnd, key)) {
    return Fail(kExitMachine, "the ramp was refused: the spindle is at that end already");
  }
  const WaitingFor waiting(Waiting::Spindle);
  while (!window.Reports().rampRpm) window.Wait(kWaitMs);
  Print("spindle", std::to_string(*window.Reports().rampRpm) + " rpm");
  return kExitOk;
}

}  // namespace

int RunSpindle(const Arguments& arguments) {
  const SpindleAction action = arguments.spindleAction;
  const bool timed = action == SpindleAction::On || action == SpindleAction::Full;
  if (timed && arguments.seconds == 0.0 && ConsoleInput() == nullptr) {
    return Fail(kExitUsage, "without a console the spindle needs --seconds");
  }
  Session session;
  int code = session.Open(arguments);
  if (code != kExitOk) return code;
  k7::IEngraver& device = session.Device();
  if (device.HasSpindle() == 0 || device.IsAirZ() != 0) {
    return Fail(kExitMachine, "the machine has no spindle");
  }
  if (action == SpindleAction::Off) {
    // SetSpindle sends nothing when the speed stays the same, and for this connection it is 0.
    device.SendLine("M43\n");
    PrintSpeed(session);
    return kExitOk;
  }
  device.SetSpindle(action == SpindleAction::Full ? k7::kSpindleFull : k7::kSpindleEngrave);
  PrintSpeed(session);
  if (timed) {
    WaitForUser(session, arguments.seconds);
  } else {
    code = Ramp(session, action == SpindleAction::RampUp ? 0 : 1, arguments.key);
  }
  device.SetSpindle(k7::kSpindleOff);
  if (session.IsLinkLost()) {
    return Fail(kExitUnknown, "link lost: the spindle may still be running, switch it off by hand");
  }
  PrintSpeed(session);
  return code;
}

}  // namespace k7host
