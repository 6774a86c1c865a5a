#include "settings/file.h"

#include <windows.h>

#include "base/bounded_copy.h"
#include "base/trace.h"
#include "settings/encodings.h"

namespace k7 {

using namespace settings;  // rows and readers, in every signature here

SettingsFile::SettingsFile(const wchar_t* path) noexcept {
  CopyText(path_.text, path);
}

void SettingsFile::TraceLoad() const noexcept {
  if (!Tracing()) return;
  const DWORD error = GetLastError();
  const bool found = GetFileAttributesW(path_.text) != INVALID_FILE_ATTRIBUTES;
  TraceName(nullptr, "load", found ? "found" : "missing", path_.text);
  SetLastError(error);
}

std::int32_t SettingsFile::ReadInt(const IntRow& row, Reader reader) const noexcept {
  return ReadNumber(row, reader);
}

float SettingsFile::ReadFloat(const FloatRow& row, Reader reader) const noexcept {
  return FloatOfBits(ReadNumber(row, reader));
}

bool SettingsFile::ReadFlag(const FlagRow& row, Reader reader) const noexcept {
  return ReadNumber(row, reader) != 0;
}

std::int32_t SettingsFile::ReadNumber(const Row& row, Reader reader) const noexcept {
  return ReadChained(row, DefaultOf(row, reader));
}

std::int32_t SettingsFile::ReadChained(const Row& row, std::int32_t standIn) const noexcept {
  const auto value =
      static_cast<std::int32_t>(GetPrivateProfileIntW(row.section, row.key, standIn, path_.text));
  if (value != standIn || standIn == 0) return value;
  // The default may have been given for a key that is there but empty: platforms differ in that,
  // and an empty key reads as 0 on all of them.
  wchar_t first[2] = L"";
  const DWORD length = GetPrivateProfileStringW(row.section, row.key, L"?", first, 2, path_.text);
  return length == 0 ? 0 : value;
}

std::uint32_t SettingsFile::ReadText(const TextRow& row, wchar_t* buffer,
                                     std::uint32_t size) const noexcept {
  if (buffer == nullptr || size < 1) return 0;
  buffer[0] = L'\0';
  return GetPrivateProfileStringW(row.section, row.key, row.text, buffer, size, path_.text);
}

void SettingsFile::WriteInt(const IntRow& row, std::int32_t value) const noexcept {
  WriteText(row, TextOfInt(value).c_str());
}

void SettingsFile::WriteFloat(const FloatRow& row, float value) const noexcept {
  WriteText(row, TextOfInt(BitsOfFloat(value)).c_str());
}

void SettingsFile::WriteFlag(const FlagRow& row, bool set) const noexcept {
  WriteText(row, set ? L"1" : L"0");
}

void SettingsFile::WriteText(const Row& row, const wchar_t* text) const noexcept {
  // The profile function would remove the key where the text is null.
  WritePrivateProfileStringW(row.section, row.key, text == nullptr ? L"" : text, path_.text);
}

}  // namespace k7
