// The status line of a pass, which the host shows to its user.
#pragma once

#include <cstdint>

#include "k7/driver.h"

namespace k7 {

// What the line says.
struct PassStatus {
  std::uint32_t pass = 0;   // 1-based
  std::uint32_t count = 0;  // passes of the job
  float depthInches = 0.0f;
  bool airZ = false;                      // pneumatic head: "Air Z" stands for the depth
  std::uint32_t runKind = kRunEngraving;  // a kRun number; an unknown one adds nothing
};

// Writes the line, for instance "Pass 2 of 4 - 0.038 - GRID", into `buffer` of `size` characters,
// cut and terminated. Writes nothing when `buffer` is null or `size` is below 1. [any]
void WritePassStatus(const PassStatus& status, wchar_t* buffer, std::int32_t size) noexcept;

}  // namespace k7
