// The four stroke operations of a drawing. Results are kStatus numbers.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

std::uint32_t MoveTo(DeviceState& record, std::uint32_t hostX, std::uint32_t hostY) noexcept;
std::uint32_t EngraveTo(DeviceState& record, std::uint32_t hostX, std::uint32_t hostY) noexcept;
std::uint32_t LowerCutter(DeviceState& record) noexcept;
std::uint32_t LowerCutterContinue(DeviceState& record) noexcept;

}  // namespace k7
