// The camera identity that the host keeps with a controller.
#pragma once

#include <cstdint>

#include "device/device_state.h"
#include "settings/schema.h"

namespace k7 {

// Longest camera identity that a load reads back, with the terminator.
inline constexpr int kCameraIdCapacity = static_cast<int>(settings::kCameraId.range.most) + 1;

// Slot 82: length of the camera identity, 0 when there is none; copied into `buffer` of `size`
// characters only when there is a buffer and `size` exceeds the length. [host]
std::int64_t GetCameraId(const HostValues& host, wchar_t* buffer, std::int32_t size) noexcept;

// Slot 83: replaces it and keeps it in the file. KEEP: an empty text clears the copy in memory
// only, so that the identity in the file returns at the next load. Null: nothing. [host]
void SetCameraId(DeviceState& record, const wchar_t* text) noexcept;

// Replaces the copy in memory alone; an empty text, or memory that cannot be had, leaves none.
// [host]
void KeepCameraId(HostValues& host, const wchar_t* text) noexcept;

}  // namespace k7
