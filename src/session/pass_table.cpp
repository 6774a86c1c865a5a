#include "session/pass_table.h"

#include <algorithm>

#include "base/arithmetic.h"
#include "settings/encodings.h"

namespace k7 {

namespace {

PassPlan PlanDepthSteps(const PassSettings& settings) {
  const float largest = settings.maxPassDepth;
  if (BitsOfFloat(largest) == 0) return {};
  const float finish = settings.finishPassDepth;
  const float rough = settings.engraveDepth - finish;
  // 64 bits, because the count may be the largest that 32 bits hold and up to two are added to it.
  std::int64_t steps = TruncateToInt32(rough / largest);
  // With no whole step the quotient is infinite, so that one step comes out.
  if (rough / static_cast<float>(steps) > largest) ++steps;
  const std::int64_t count = steps + (finish != 0.0f ? 1 : 0);
  // Where the finishing depth exceeds the full depth the number of steps is negative: one pass.
  if (count < 2) return {};
  return {static_cast<std::uint32_t>(count), rough / static_cast<float>(steps)};
}

}  // namespace

PassPlan PlanPasses(const PassSettings& settings) noexcept {
  if (!settings.multiPass) return {};
  if (settings.mode == kPassModeCopies) return {std::max(settings.copies, 1u), 0.0f};
  return PlanDepthSteps(settings);
}

void FillPasses(const PassPlan& plan, float engraveDepth, float* depths) noexcept {
  float depth = 0.0f;
  for (std::uint32_t i = 0; i < plan.count; ++i) {
    depth += plan.step;
    const bool stepped = plan.step != 0.0f && i + 1 < plan.count;
    depths[i] = stepped ? depth : engraveDepth;
  }
}

}  // namespace k7
