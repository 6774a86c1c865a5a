// Command tags: how senders tell the reader what each tracked line was.
#pragma once

#include "device/device_state.h"

namespace k7 {

// Writes the tag at the ring's write index, under ringMutex, and advances the index, which wraps at
// 1024. Done before the line goes on the wire: an answer can be faster than the sender's next
// statement. Nothing checks for overrun. [any]
void PushTag(DeviceState& record, CommandTag tag) noexcept;

// Takes the last pushed tag back: its line was not sent after all. [any]
void TakeBackTag(DeviceState& record) noexcept;

}  // namespace k7
