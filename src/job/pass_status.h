// The line with which the host tells its user which pass is under way.
#pragma once

#include <cstdint>

#include "k7/driver.h"

namespace k7 {

// What the line says.
struct PassStatus {
  std::uint32_t pass = 0;   // 1-based
  std::uint32_t count = 0;  // passes of the job
  float depthInches = 0.0f;
  bool airZ = false;                      // a pneumatic head has no depth to show
  std::uint32_t runKind = kRunEngraving;  // a kRun number; unknown ones add nothing
};

// Writes "Pass 2 of 4 - 0.038 - GRID" and the like into `buffer` of `size` characters, cut and
// terminated; nothing into a null buffer or one of a size below 1. [any]
void WritePassStatus(const PassStatus& status, wchar_t* buffer, std::int32_t size) noexcept;

}  // namespace k7
