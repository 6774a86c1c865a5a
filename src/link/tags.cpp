#include "link/tags.h"

namespace k7 {

namespace {

constexpr std::int32_t After(std::int32_t index) noexcept {
  return index + 1 >= kAckRingSize ? 0 : index + 1;
}

}  // namespace

void PushTag(JobState& job, CommandTag tag) noexcept {
  if (const auto ring = job.tagRing.Lock()) {
    ring->ackRing[ring->ackRingIndex] = tag;
    ring->ackRingIndex = After(ring->ackRingIndex);
  }
}

CommandTag TakeTag(JobState& job, std::int32_t TagRing::*index) noexcept {
  const auto ring = job.tagRing.Lock();
  if (!ring) return CommandTag::None;
  const CommandTag tag = ring->ackRing[(*ring).*index];
  (*ring).*index = After((*ring).*index);
  return tag;
}

}  // namespace k7
