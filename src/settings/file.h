// One settings file (or material profile): single keys, by their rows of the schema, through the
// profile functions.
#pragma once

#include <cstdint>

#include "device/device_state.h"
#include "settings/paths.h"
#include "settings/row.h"

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
  // The file is about to be loaded as a whole: for the trace.
  void TraceLoad() const noexcept;

  // A missing key reads as what `reader` takes for it, one that is present but empty as 0.
  std::int32_t ReadInt(const settings::IntRow& row,
                       settings::Reader reader = settings::Reader::Any) const noexcept;
  float ReadFloat(const settings::FloatRow& row,
                  settings::Reader reader = settings::Reader::Any) const noexcept;
  bool ReadFlag(const settings::FlagRow& row,
                settings::Reader reader = settings::Reader::Any) const noexcept;
  // The whole number as it stands in the file, of a float its bits.
  std::int32_t ReadNumber(const settings::Row& row,
                          settings::Reader reader = settings::Reader::Any) const noexcept;
  // The same, and `standIn` for a missing key: for a reader whose override in the row names a value
  // that it has read or computed.
  std::int32_t ReadChained(const settings::Row& row, std::int32_t standIn) const noexcept;
  // Text into a buffer of `size` characters, cut; returns its length.
  std::uint32_t ReadText(const settings::TextRow& row, wchar_t* buffer,
                         std::uint32_t size) const noexcept;

  void WriteInt(const settings::IntRow& row, std::int32_t value) const noexcept;
  void WriteFloat(const settings::FloatRow& row, float value) const noexcept;
  void WriteFlag(const settings::FlagRow& row, bool set) const noexcept;
  // Text as it is, of any row: dialogs write some numbers as they were typed. Null empties the key.
  void WriteText(const settings::Row& row, const wchar_t* text) const noexcept;

 private:
  SettingsPath path_;
};

}  // namespace k7
