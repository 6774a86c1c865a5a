#include "settings/profile_name.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <string_view>

#include "base/bounded_copy.h"

namespace k7 {

namespace {

constexpr wchar_t kExtension[] = L".INI";
constexpr std::size_t kExtensionLength = sizeof kExtension / sizeof *kExtension - 1;

std::size_t Length(const wchar_t* text) {
  std::size_t length = 0;
  while (text[length] != L'\0') ++length;
  return length;
}

}  // namespace

bool IsProfileFileName(const wchar_t* fileName) noexcept {
  if (fileName == nullptr) return false;
  const std::size_t length = Length(fileName);
  if (length <= kExtensionLength) return false;
  const wchar_t* end = fileName + length - kExtensionLength;
  for (std::size_t i = 0; i < kExtensionLength; ++i) {
    const wchar_t c = end[i];
    const wchar_t upper = c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - L'a' + L'A') : c;
    if (upper != kExtension[i]) return false;
  }
  return true;
}

void CutProfileExtension(wchar_t* fileName) noexcept {
  if (!IsProfileFileName(fileName)) return;
  fileName[Length(fileName) - kExtensionLength] = L'\0';
}

void ProfileNameOfPath(const wchar_t* path, wchar_t* name, std::ptrdiff_t capacity) noexcept {
  std::wstring_view rest{path};
  if (rest.size() < kExtensionLength) std::abort();
  rest.remove_suffix(kExtensionLength);
  rest.remove_prefix(rest.rfind(L'\\') + 1);  // not found: npos + 1 is 0
  CopyText(name, std::min(capacity, static_cast<std::ptrdiff_t>(rest.size()) + 1), rest.data());
}

}  // namespace k7
