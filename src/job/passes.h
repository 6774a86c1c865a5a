// Multi-pass runs.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Slot 86: always 0. [host]
std::uint32_t StartPass(DeviceState& record, std::uint32_t pass, std::uint32_t hostX,
                        std::uint32_t hostY, wchar_t* status, std::int32_t size) noexcept;

}  // namespace k7
