// The controller settings dialog.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Slot 40. Result 1 run job, 101 applied, 2 cancelled or connection lost. [host]
std::int64_t ShowSettingsDialog(DeviceState& record, WindowHandle parent, std::uint32_t mode,
                                std::uint32_t allowRun, std::uint64_t initParam,
                                std::uint32_t showGrid) noexcept;

}  // namespace k7
