// Where the settings live: one file a controller, in one folder of the machine.
#pragma once

#include <cstdint>

#include "device/device_state.h"

namespace k7 {

inline constexpr int kPathCapacity = 512;  // characters, with the terminator

// A path of the driver's own making; cut when it would be longer.
struct SettingsPath {
  wchar_t text[kPathCapacity];
};

// Appends a level ("\name") to the path. [host], [jog]
void AppendLevel(SettingsPath& path, const wchar_t* name) noexcept;
// The same, and creates that folder; result of CreateDirectoryW: 0 also when it is there already.
std::uint32_t AppendFolder(SettingsPath& path, const wchar_t* name) noexcept;

// The folder of all controllers: the machine's common application data, "\Penfold Hatch",
// "\Veltrana", "\Controllers"; created level by level. Nothing in it depends on the user. [host],
// [jog]
SettingsPath ControllersFolder() noexcept;

// The settings file of this controller, controllerId + ".ini"; creates the folders on the way.
// [host], [jog]
SettingsPath SettingsFilePath(const LinkState& link) noexcept;

// Slot 81: the same into a caller's buffer, cut to `size` characters; always 0. A null buffer or a
// size below 1 gets nothing. [host]
std::uint32_t GetSettingsFilePath(const LinkState& link, wchar_t* buffer,
                                  std::int32_t size) noexcept;

}  // namespace k7
