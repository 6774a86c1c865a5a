#include "link/reply_actions.h"

#include <windows.h>

#include "base/parse_number.h"
#include "device/module_state.h"
#include "device/polling.h"
#include "device/progress.h"
#include "link/commands.h"
#include "link/link.h"
#include "link/notify.h"
#include "link/reply.h"
#include "link/tags.h"

namespace k7 {

namespace {

void Add(Guarded<std::int32_t>& count, std::int32_t change) noexcept {
  if (const auto value = count.Lock()) *value += change;
}

// A dwell of the tool where it is. KEEP: by watching the clock; a sleep would add up to a time
// slice to every hole of a drilled job.
void Dwell(const Tools& tools) noexcept {
  const TracedWait traced{awaited::kEngraveDelay};
  const std::uint64_t startUs = ClockUs();
  const auto delayUs = static_cast<std::uint64_t>(tools.engraveDelayMs.Get()) * 1000;
  std::uint64_t spentUs = 0;
  while (spentUs < delayUs) {
    SwitchToThread();
    spentUs = ClockUs() - startUs;
  }
  totalDwellMs = totalDwellMs + static_cast<std::uint32_t>(spentUs / 1000);
}

// A sender that waits for the tool goes on.
void EndToolWait(DeviceState& record) noexcept {
  record.job.waitFlag.Set(0);
  TellNews(record.link);
}

bool IsHostTold(CommandTag tag) noexcept {
  return tag == CommandTag::Move || tag == CommandTag::LoneDwell;
}

void OnQueued(DeviceState& record) noexcept {
  record.job.lastReportTick = TickMs();
  if (IsSilent(record)) return;
  if (IsHostTold(TakeTag(record.job, &TagRing::queuedIndex))) {
    NotifyHost(record.notify, record.notify.msgQueued);
  }
}

void OnBegun(DeviceState& record) noexcept {
  // KEEP: down before up. For a moment the last move is in neither count, and a wait that looks
  // just then ends while it has begun.
  Add(record.job.linesInFlight, -1);
  Add(record.job.blocksRunning, 1);
  record.job.lastReportTick = TickMs();
  TellNews(record.link);  // there is room for a line
  if (IsSilent(record)) return;
  if (IsHostTold(TakeTag(record.job, &TagRing::startedIndex))) {
    NotifyHost(record.notify, record.notify.msgStarted);
  }
}

// The plunge has ended: the air head is switched on and given its time; another tool only dwells.
void ToolOn(DeviceState& record) noexcept {
  if (record.tools.cutterMode == kCutterAirZ) {
    if (record.tools.dontLowerAirZ == 0) {
      SendLine(record.link, commands::kToolOn);
      if (record.tools.engraveDelayMs > 0) {
        const TracedWait traced{awaited::kEngraveDelay};
        Sleep(static_cast<DWORD>(record.tools.engraveDelayMs.Get()));
      }
    }
    EndToolWait(record);
  } else if (record.tools.engraveDelayMs >= 1) {
    Dwell(record.tools);
    EndToolWait(record);
  }
}

// The lift has ended: the air head is switched off.
void ToolOff(DeviceState& record) noexcept {
  if (record.tools.cutterMode != kCutterAirZ) return;
  if (record.tools.dontLowerAirZ == 0) SendLine(record.link, commands::kToolOff);
  EndToolWait(record);
}

void OnEnded(DeviceState& record) noexcept {
  Add(record.job.blocksRunning, -1);
  record.job.lastReportTick = TickMs();
  // Nobody waits for an end but for the last one. A sender that waits for room would be woken in
  // vain.
  if (!MovesRemain(record.job)) TellNews(record.link);
  if (IsSilent(record)) return;
  const CommandTag tag = TakeTag(record.job, &TagRing::finishedIndex);
  // KEEP: with nobody to tell, the tools are not switched either.
  if (!HasListener(record.notify)) return;
  switch (tag) {
    case CommandTag::Move:
      NotifyHost(record.notify, record.notify.msgFinished);
      break;
    case CommandTag::Plunge:
      ToolOn(record);
      break;
    case CommandTag::Lift:
      ToolOff(record);
      break;
    case CommandTag::LoneDwell:
      if (record.tools.engraveDelayMs > 0) {
        Dwell(record.tools);
        EndToolWait(record);
      }
      NotifyHost(record.notify, record.notify.msgFinished);
      break;
    case CommandTag::None:
    case CommandTag::JogStep:
      break;
  }
}

void OnBlockMessagesOn(DeviceState& record) noexcept {
  record.job.jobOpen.Set(1);
  ForgetMoves(record.job);
  record.job.resetMarkX = 9;
  record.job.resetMarkY = 9;
  record.job.resetCountX = 0;
  record.job.resetCountY = 0;
  record.job.zMoveCount = 0;
}

void OnConnected(DeviceState& record) noexcept {
  const std::uint32_t now = TickMs();
  record.link.alive.Set({.lastCheckTick = now, .lastAnswerTick = now});
  record.link.connected = 1;
  if (const WindowHandle window = record.notify.connectNotifyWindow) {
    const TracedMessage traced{"window", record.notify.connectNotifyMessage};
    SendMessageW(static_cast<HWND>(window), record.notify.connectNotifyMessage, 0, 0);
  }
}

// A home that is not known yet is where the axis found its switch.
void OnLimit(Polled<std::int32_t>& home, Polled<std::uint8_t>& closed,
             std::string_view number) noexcept {
  if (home < 0) home = ParseWhole(number);
  closed = 1;
}

void OnProbe(DeviceState& record, std::string_view number) noexcept {
  const auto travel = static_cast<std::uint32_t>(ParseWhole(number));
  record.position.cutterHome =
      static_cast<std::int32_t>(travel + static_cast<std::uint32_t>(record.position.last.z.Get()));
  record.tools.probePending = 0;
}

void OnSwitches(DeviceState& record, std::string_view report) noexcept {
  const auto switches = ReadSwitches(report);
  if (!switches) return;
  record.switches.closed.x = switches->x;
  record.switches.closed.y = switches->y;
  record.switches.closed.z = switches->z;
  record.switches.switchProbe = switches->probe;
  record.switches.switchesRead = 1;
}

void CarryOut(DeviceState& record, std::string_view line, const Reply& reply) noexcept {
  switch (reply.kind) {
    case ReplyKind::Queued:
      return OnQueued(record);
    case ReplyKind::Begun:
      return OnBegun(record);
    case ReplyKind::Ended:
      return OnEnded(record);
    case ReplyKind::BlockMessagesOn:
      return OnBlockMessagesOn(record);
    case ReplyKind::BlockMessagesOff:
      return record.job.jobOpen.Set(0);
    case ReplyKind::Connected:
      return OnConnected(record);
    case ReplyKind::NotHomed:
      record.position.tableHomed = 0;
      return;
    case ReplyKind::Homed:
      record.position.tableHomed = 1;
      return;
    case ReplyKind::LimitX:
      return OnLimit(record.position.tableHome.x, record.switches.closed.x, reply.after);
    case ReplyKind::LimitY:
      return OnLimit(record.position.tableHome.y, record.switches.closed.y, reply.after);
    case ReplyKind::LimitZ:
      return OnLimit(record.position.cutterHome, record.switches.closed.z, reply.after);
    case ReplyKind::Probe:
      return OnProbe(record, reply.after);
    case ReplyKind::Identity:
      record.link.controllerId.Set(ReadIdentity(line).text);
      return;
    case ReplyKind::Switches:
      return OnSwitches(record, reply.from);
    case ReplyKind::ProbeMissed:
    case ReplyKind::StepPinX:
    case ReplyKind::StepPinY:
    case ReplyKind::StepEnableX:
    case ReplyKind::StepEnableY:
    case ReplyKind::Position:
    case ReplyKind::Unknown:
      return;
  }
}

}  // namespace

void HandleLine(DeviceState& record, std::string_view line) noexcept {
  const Reply reply = FindReply(line);
  CarryOut(record, line, reply);
  switch (reply.kind) {
    case ReplyKind::Unknown:
    case ReplyKind::Queued:
    case ReplyKind::Begun:  // told before the host was notified
    case ReplyKind::Ended:
      return;
    default:
      TellNews(record.link);
  }
}

}  // namespace k7
