#include "motion/tool_wait.h"

#include "device/polling.h"
#include "motion/move.h"
#include "motion/units.h"

namespace k7 {

namespace {

// The reader carries out tool actions, and ends a wait, only for a host that listens, outside quiet
// moves and jogs, and while block messages are on. Without them a wait would never end.
bool ReaderWillAct(const DeviceState& record) noexcept {
  const bool hostListens = record.notifyCallback != nullptr || record.ownerWindow != nullptr;
  return hostListens && record.quietMoves == 0 && record.jogActive == 0 && record.readerRun == 1 &&
         JobOpen(record) != 0;
}

void SetWaitFlag(DeviceState& record, std::uint8_t value) noexcept {
  if (const RecordLock<waitMutex> lock{record}) record.waitFlag = value;
}

// Spins, without bound, until the reader clears the flag; a reader that has been stopped by a
// broken link never will.
void WaitForReader(const DeviceState& record) noexcept {
  PollUntil(0, [&] {
    const auto flag =
        ReadLocked<waitMutex>(record, std::uint8_t{0}, [&] { return record.waitFlag; });
    return flag != 1 || record.readerRun != 1;
  });
}

}  // namespace

std::uint32_t MoveCutter(DeviceState& record, std::int32_t z, CommandTag tag,
                         std::uint32_t cutterStateAfter, bool wait) noexcept {
  const bool waits = wait && ReaderWillAct(record);
  // Raised before the line goes out: its end can be answered before EmitMove returns.
  if (waits) SetWaitFlag(record, 1);
  const std::uint32_t status = EmitMove(record, nullptr, nullptr, &z, 1, tag);
  if (status != kStatusSent) {
    if (waits) SetWaitFlag(record, 0);
    return status;
  }
  record.zMoveCount = WrapAdd(record.zMoveCount, 1);
  record.cutterState = cutterStateAfter;
  if (waits) WaitForReader(record);
  return status;
}

}  // namespace k7
