#include "settings/settings_file.h"

#include "device/bounded_copy.h"

namespace k7 {

SettingsFile::SettingsFile(const wchar_t* path) noexcept {
  CopyText(path_.text, path);
}
std::int32_t SettingsFile::ReadInt(const wchar_t*, const wchar_t*,
                                   std::int32_t otherwise) const noexcept {
  return otherwise;
}
float SettingsFile::ReadFloat(const wchar_t*, const wchar_t*, float otherwise) const noexcept {
  return otherwise;
}
std::uint32_t SettingsFile::ReadText(const wchar_t*, const wchar_t*, const wchar_t*, wchar_t*,
                                     std::uint32_t) const noexcept {
  return 0;
}
void SettingsFile::WriteInt(const wchar_t*, const wchar_t*, std::int32_t) const noexcept {}
void SettingsFile::WriteFloat(const wchar_t*, const wchar_t*, float) const noexcept {}
void SettingsFile::WriteText(const wchar_t*, const wchar_t*, const wchar_t*) const noexcept {}

}  // namespace k7
