// One settings file (or material profile): single keys through the profile functions.
#pragma once

#include <cstdint>

#include "device/device_state.h"
#include "settings/paths.h"

namespace k7 {

// Reads and writes single keys; the file is never opened directly, locked or rewritten whole.
// Failures are silent: reads give the default, writes are lost. [host], [jog]
class SettingsFile {
 public:
  // The file of this controller.
  explicit SettingsFile(const LinkState& link) noexcept : path_(SettingsFilePath(link)) {}
  // Any file, by path.
  explicit SettingsFile(const wchar_t* path) noexcept;

  const wchar_t* Path() const noexcept { return path_.text; }

  // Whole number; `otherwise` when the key is missing, 0 when it is present but empty.
  std::int32_t ReadInt(const wchar_t* section, const wchar_t* key,
                       std::int32_t otherwise) const noexcept;
  // Single-precision number kept as the decimal text of its bit pattern.
  float ReadFloat(const wchar_t* section, const wchar_t* key, float otherwise) const noexcept;
  // Text into a buffer of `size` characters, cut; returns its length.
  std::uint32_t ReadText(const wchar_t* section, const wchar_t* key, const wchar_t* otherwise,
                         wchar_t* buffer, std::uint32_t size) const noexcept;

  void WriteInt(const wchar_t* section, const wchar_t* key, std::int32_t value) const noexcept;
  void WriteFloat(const wchar_t* section, const wchar_t* key, float value) const noexcept;
  void WriteText(const wchar_t* section, const wchar_t* key, const wchar_t* text) const noexcept;

 private:
  SettingsPath path_;
};

}  // namespace k7
