// How many passes an engraving takes and how deep each goes.
#pragma once

#include <cstdint>

namespace k7 {

inline constexpr std::int32_t kPassModeCopies = 1;

// Multi-pass settings as they stand in the file; lengths in inches.
struct PassSettings {
  bool multiPass = false;
  std::int32_t mode = 0;         // kPassModeCopies; any other number: depth steps
  std::uint32_t copies = 0;      // number of passes of copies mode; 0 counts as 1
  float maxPassDepth = 0.0f;     // of depth steps; 0 turns multi-pass off
  float finishPassDepth = 0.0f;  // left for a last finishing pass; 0: none
  float engraveDepth = 0.0f;     // full depth
};

// More passes than this are taken for a mistake in the file: no table is made of them.
inline constexpr std::uint32_t kMostPasses = 1000000;

// What the table will hold. With `step` 0 every entry is the full depth; otherwise each entry lies
// `step` below the one before it, and the last is exactly the full depth.
struct PassPlan {
  std::uint32_t count = 1;  // at least 1; above kMostPasses there is no table
  float step = 0.0f;        // in
};

// Plans the passes. Depth steps: as few equal steps as keep each at or below the largest depth, and
// one more pass for the finishing depth. [any]
PassPlan PlanPasses(const PassSettings& settings) noexcept;

// Writes the plan.count entries of `depths`, in inches. [any]
void FillPasses(const PassPlan& plan, float engraveDepth, float* depths) noexcept;

}  // namespace k7
