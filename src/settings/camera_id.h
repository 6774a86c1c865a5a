// The camera identity that the host keeps with a controller.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Slot 82: length of the camera identity; copied only when `size` exceeds it. [host]
std::int64_t GetCameraId(const DeviceState& record, wchar_t* buffer, std::int32_t size) noexcept;
// Slot 83: replaces it and keeps it in the file; an empty text clears the memory only. [host]
void SetCameraId(DeviceState& record, const wchar_t* text) noexcept;

}  // namespace k7
