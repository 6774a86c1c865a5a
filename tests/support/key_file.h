// KeyFile: a settings file by the texts of its sections and keys, without the driver's own table of
// them: a slip in that table shows.
#pragma once

#include <windows.h>

#include <bit>
#include <cstdint>
#include <string>
#include <utility>

#include "settings/paths.h"

namespace k7test {

class KeyFile {
 public:
  explicit KeyFile(std::wstring path) : path_(std::move(path)) {}
  // The file of this controller; makes its folder.
  explicit KeyFile(const k7::LinkState& link) : KeyFile(k7::SettingsFilePath(link).text) {}

  const wchar_t* Path() const { return path_.c_str(); }

  std::int32_t ReadInt(const wchar_t* section, const wchar_t* key, std::int32_t otherwise) const {
    return static_cast<std::int32_t>(GetPrivateProfileIntW(section, key, otherwise, Path()));
  }
  // A float is the decimal text of its bits.
  float ReadFloat(const wchar_t* section, const wchar_t* key, float otherwise) const {
    return std::bit_cast<float>(ReadInt(section, key, std::bit_cast<std::int32_t>(otherwise)));
  }
  std::wstring ReadText(const wchar_t* section, const wchar_t* key,
                        const wchar_t* otherwise) const {
    wchar_t text[600];
    return {text, GetPrivateProfileStringW(section, key, otherwise, text, 600, Path())};
  }

  void WriteInt(const wchar_t* section, const wchar_t* key, std::int32_t value) const {
    WriteText(section, key, std::to_wstring(value).c_str());
  }
  void WriteFloat(const wchar_t* section, const wchar_t* key, float value) const {
    WriteInt(section, key, std::bit_cast<std::int32_t>(value));
  }
  void WriteText(const wchar_t* section, const wchar_t* key, const wchar_t* text) const {
    WritePrivateProfileStringW(section, key, text, Path());
  }

 private:
  std::wstring path_;
};

}  // namespace k7test
