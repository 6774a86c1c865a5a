#include "link/reply_actions.h"

#include <windows.h>

#include "device/module_state.h"
#include "device/polling.h"
#include "link/link.h"
#include "link/notify.h"
#include "link/reply.h"
#include "link/tags.h"

namespace k7 {

namespace {

void AddToLinesInFlight(DeviceState& record, std::int32_t change) noexcept {
  if (const RecordLock<flightMutex> lock{record}) record.linesInFlight += change;
}

void AddToBlocksRunning(DeviceState& record, std::int32_t change) noexcept {
  if (const RecordLock<runMutex> lock{record}) record.blocksRunning += change;
}

void SetJobOpen(DeviceState& record, std::uint8_t open) noexcept {
  if (const RecordLock<jobMutex> lock{record}) record.jobOpen = open;
}

void ClearWaitFlag(DeviceState& record) noexcept {
  if (const RecordLock<waitMutex> lock{record}) record.waitFlag = 0;
}

// A dwell of the tool where it is. KEEP: by watching the clock; a sleep would add up to a time
// slice to every hole of a drilled job.
void Dwell(const DeviceState& record) noexcept {
  const std::uint32_t start = TickMs();
  const auto delayMs = static_cast<std::uint32_t>(record.engraveDelayMs.Get());
  std::uint32_t spentMs = 0;
  while (spentMs < delayMs) {
    SwitchToThread();
    spentMs = TickMs() - start;
  }
  totalDwellMs = totalDwellMs + spentMs;
}

bool IsHostTold(CommandTag tag) noexcept {
  return tag == CommandTag::Move || tag == CommandTag::LoneDwell;
}

void OnQueued(DeviceState& record) noexcept {
  if (IsSilent(record)) return;
  if (IsHostTold(TakeTag(record, &DeviceState::queuedIndex))) NotifyHost(record, record.msgQueued);
}

void OnBegun(DeviceState& record) noexcept {
  // KEEP: down before up. For a moment the last move is in neither count, and a wait that looks
  // just then ends while it has begun.
  AddToLinesInFlight(record, -1);
  AddToBlocksRunning(record, 1);
  if (IsSilent(record)) return;
  if (IsHostTold(TakeTag(record, &DeviceState::startedIndex))) {
    NotifyHost(record, record.msgStarted);
  }
}

// The plunge has ended: the air head is switched on and given its time; another tool only dwells.
void ToolOn(DeviceState& record) noexcept {
  if (record.cutterMode == kCutterAirZ) {
    if (record.dontLowerAirZ == 0) {
      SendLine(record, "M42\n");
      if (record.engraveDelayMs > 0) Sleep(static_cast<DWORD>(record.engraveDelayMs.Get()));
    }
    ClearWaitFlag(record);
  } else if (record.engraveDelayMs >= 1) {
    Dwell(record);
    ClearWaitFlag(record);
  }
}

// The lift has ended: the air head is switched off.
void ToolOff(DeviceState& record) noexcept {
  if (record.cutterMode != kCutterAirZ) return;
  if (record.dontLowerAirZ == 0) SendLine(record, "M43\n");
  ClearWaitFlag(record);
}

void OnEnded(DeviceState& record) noexcept {
  AddToBlocksRunning(record, -1);
  if (IsSilent(record)) return;
  const CommandTag tag = TakeTag(record, &DeviceState::finishedIndex);
  // KEEP: with nobody to tell, the tools are not switched either.
  if (!HasListener(record)) return;
  switch (tag) {
    case CommandTag::Move:
      NotifyHost(record, record.msgFinished);
      break;
    case CommandTag::Plunge:
      ToolOn(record);
      break;
    case CommandTag::Lift:
      ToolOff(record);
      break;
    case CommandTag::LoneDwell:
      if (record.engraveDelayMs > 0) {
        Dwell(record);
        ClearWaitFlag(record);
      }
      NotifyHost(record, record.msgFinished);
      break;
    case CommandTag::None:
    case CommandTag::JogStep:
      break;
  }
}

void OnBlockMessagesOn(DeviceState& record) noexcept {
  SetJobOpen(record, 1);
  ForgetMoves(record);
  record.resetMarkX = 9;
  record.resetMarkY = 9;
  record.resetCountX = 0;
  record.resetCountY = 0;
  record.zMoveCount = 0;
}

void OnConnected(DeviceState& record) noexcept {
  if (const RecordLock<aliveMutex> lock{record}) {
    record.lastCheckTick = TickMs();
    record.lastAnswerTick = record.lastCheckTick;
  }
  record.connected = 1;
  if (const WindowHandle window = record.connectNotifyWindow) {
    SendMessageW(static_cast<HWND>(window), record.connectNotifyMessage, 0, 0);
  }
}

// A home that is not known yet is where the axis found its switch.
void OnLimit(Polled<std::int32_t>& home, Polled<std::uint8_t>& closed,
             std::string_view number) noexcept {
  if (home < 0) home = ParseInteger(number);
  closed = 1;
}

void OnProbe(DeviceState& record, std::string_view number) noexcept {
  const auto travel = static_cast<std::uint32_t>(ParseInteger(number));
  record.cutterHome =
      static_cast<std::int32_t>(travel + static_cast<std::uint32_t>(record.lastZ.Get()));
  record.probePending = 0;
}

void OnSwitches(DeviceState& record, std::string_view report) noexcept {
  const auto switches = ReadSwitches(report);
  if (!switches) return;
  record.switchX = switches->x;
  record.switchY = switches->y;
  record.switchZ = switches->z;
  record.switchProbe = switches->probe;
  record.switchesRead = 1;
}

}  // namespace

void HandleLine(DeviceState& record, std::string_view line) noexcept {
  const Reply reply = FindReply(line);
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
      return SetJobOpen(record, 0);
    case ReplyKind::Connected:
      return OnConnected(record);
    case ReplyKind::NotHomed:
      record.tableHomed = 0;
      return;
    case ReplyKind::Homed:
      record.tableHomed = 1;
      return;
    case ReplyKind::LimitX:
      return OnLimit(record.tableHomeX, record.switchX, reply.after);
    case ReplyKind::LimitY:
      return OnLimit(record.tableHomeY, record.switchY, reply.after);
    case ReplyKind::LimitZ:
      return OnLimit(record.cutterHome, record.switchZ, reply.after);
    case ReplyKind::Probe:
      return OnProbe(record, reply.after);
    case ReplyKind::Identity:
      record.controllerId.Set(ReadIdentity(line).text);
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

}  // namespace k7
