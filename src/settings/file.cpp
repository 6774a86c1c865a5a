#include "settings/file.h"

#include <windows.h>

#include "base/bounded_copy.h"
#include "settings/encodings.h"

namespace k7 {

SettingsFile::SettingsFile(const wchar_t* path) noexcept {
  CopyText(path_.text, path);
}

std::int32_t SettingsFile::ReadInt(const wchar_t* section, const wchar_t* key,
                                   std::int32_t otherwise) const noexcept {
  const auto value =
      static_cast<std::int32_t>(GetPrivateProfileIntW(section, key, otherwise, path_.text));
  if (value != otherwise || otherwise == 0) return value;
  // The default may stand for a key that is there but empty: platforms differ, the rule does not.
  wchar_t first[2] = L"";
  const DWORD length = GetPrivateProfileStringW(section, key, L"?", first, 2, path_.text);
  return length == 0 ? 0 : value;
}

float SettingsFile::ReadFloat(const wchar_t* section, const wchar_t* key,
                              float otherwise) const noexcept {
  return FloatOfBits(ReadInt(section, key, BitsOfFloat(otherwise)));
}

std::uint32_t SettingsFile::ReadText(const wchar_t* section, const wchar_t* key,
                                     const wchar_t* otherwise, wchar_t* buffer,
                                     std::uint32_t size) const noexcept {
  if (buffer == nullptr || size < 1) return 0;
  buffer[0] = L'\0';
  return GetPrivateProfileStringW(section, key, otherwise, buffer, size, path_.text);
}

void SettingsFile::WriteInt(const wchar_t* section, const wchar_t* key,
                            std::int32_t value) const noexcept {
  WriteText(section, key, TextOfInt(value).c_str());
}

void SettingsFile::WriteFloat(const wchar_t* section, const wchar_t* key,
                              float value) const noexcept {
  WriteInt(section, key, BitsOfFloat(value));
}

void SettingsFile::WriteText(const wchar_t* section, const wchar_t* key,
                             const wchar_t* text) const noexcept {
  // Null would remove the key.
  WritePrivateProfileStringW(section, key, text == nullptr ? L"" : text, path_.text);
}

}  // namespace k7
