// Where the settings live: one file a controller, in one folder of the machine.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

inline constexpr int kPathCapacity = 512;

// A path of the driver's own making.
struct SettingsPath {
  wchar_t text[kPathCapacity];
};

// The settings file of this controller; creates the folders on the way. [host]
SettingsPath SettingsFilePath(const DeviceState& record) noexcept;

// Slot 81: the same into a caller's buffer, cut to `size`; 0. [host]
std::uint32_t GetSettingsFilePath(const DeviceState& record, wchar_t* buffer,
                                  std::int32_t size) noexcept;

}  // namespace k7
