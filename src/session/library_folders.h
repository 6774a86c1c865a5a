// The two folders that each controller has beside its settings file.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

// Slot 92: copies the path of the folder of material profiles and creates the folder. Result: that
// of the last CreateDirectoryW, 1 when the folder was not there before. Asks for the identity
// first, which reloads the settings. [host]
std::uint32_t GetMaterialLibraryFolder(DeviceState& record, wchar_t* buffer,
                                       std::int32_t size) noexcept;
// Slot 93: the same for the folder of temporary homes. [host]
std::uint32_t GetTempHomeLibraryFolder(DeviceState& record, wchar_t* buffer,
                                       std::int32_t size) noexcept;

}  // namespace k7
