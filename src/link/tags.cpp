#include "link/tags.h"

#include "device/record_lock.h"

namespace k7 {

namespace {

constexpr std::int32_t After(std::int32_t index) noexcept {
  return index + 1 >= kAckRingSize ? 0 : index + 1;
}

}  // namespace

void PushTag(DeviceState& record, CommandTag tag) noexcept {
  if (const RecordLock<ringMutex> lock{record}) {
    record.ackRing[record.ackRingIndex] = tag;
    record.ackRingIndex = After(record.ackRingIndex);
  }
}

CommandTag TakeTag(DeviceState& record, std::int32_t DeviceState::*index) noexcept {
  const RecordLock<ringMutex> lock{record};
  if (!lock) return CommandTag::None;
  const CommandTag tag = record.ackRing[record.*index];
  record.*index = After(record.*index);
  return tag;
}

}  // namespace k7
