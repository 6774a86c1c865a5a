// Command tags: how senders tell the reader what each tracked line was.
#pragma once

#include "device/device_state.h"

namespace k7 {

// By tag, as a trace names them.
inline constexpr const char* kTagNames[] = {"-", "move", "plunge", "jog", "lift", "dwell"};

// Writes the tag at the ring's write index and advances the index, which wraps at 1024. Done before
// the line goes on the wire: an answer can be faster than the sender's next statement. Nothing
// checks for overrun. Without a link: nothing. [any]
void PushTag(JobState& job, CommandTag tag) noexcept;

// The tag at one of the three read indexes, which then advances and wraps like the write index:
// `TakeTag(job, &TagRing::queuedIndex)`. None without a link; the index then stays. [reader]
CommandTag TakeTag(JobState& job, std::int32_t TagRing::*index) noexcept;

}  // namespace k7
