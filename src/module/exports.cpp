// The four exported functions.
#include "k7/driver.h"

int32_t EnumerateControllers() noexcept {
  return 0;
}
void GetControllerInfo(int32_t, wchar_t*, wchar_t*, int32_t) noexcept {}
k7::IEngraver* ConnectToController(const wchar_t*) noexcept {
  return nullptr;
}
void ReleaseController(k7::IEngraver*) noexcept {}
