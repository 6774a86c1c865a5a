#include "ui/profile_path.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

#include "device/bounded_copy.h"

namespace k7 {

void ProfileNameOfPath(const wchar_t* path, wchar_t* name, std::ptrdiff_t capacity) noexcept {
  constexpr std::size_t kExtensionLength = 4;
  std::wstring_view rest{path};
  if (rest.size() < kExtensionLength) std::abort();
  rest.remove_suffix(kExtensionLength);
  rest.remove_prefix(rest.rfind(L'\\') + 1);  // not found: npos + 1 is 0
  CopyText(name, std::min(capacity, static_cast<std::ptrdiff_t>(rest.size()) + 1), rest.data());
}

}  // namespace k7
