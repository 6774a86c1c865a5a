#include "settings/profile_name.h"

namespace k7 {

bool IsProfileFileName(const wchar_t*) noexcept {
  return {};
}
void CutProfileExtension(wchar_t*) noexcept {}

}  // namespace k7
