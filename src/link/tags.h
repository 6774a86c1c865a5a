// Command tags: how senders tell the reader what each tracked line was.
#pragma once

#include "device/device_state.h"

namespace k7 {

// Writes the tag at the ring's write index, under ringMutex, and advances the index, which wraps at
// 1024. Done before the line goes on the wire: an answer can be faster than the sender's next
// statement. Nothing checks for overrun. Without the mutex: nothing. [any]
void PushTag(DeviceState& record, CommandTag tag) noexcept;

// The tag at one of the three read indexes, which then advances and wraps like the write index:
// `TakeTag(record, &DeviceState::queuedIndex)`. None when the mutex cannot be taken; the index then
// stays. [reader]
CommandTag TakeTag(DeviceState& record, std::int32_t DeviceState::*index) noexcept;

}  // namespace k7
