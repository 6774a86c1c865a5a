// A port whose idle reads end at once with no byte, as those of most serial drivers do.
#include "available.h"
#include "link/port_read.h"

namespace k7 {

bool StartPortRead(HANDLE port, char* bytes, DWORD size, OVERLAPPED& block) noexcept {
  DWORD available = 0;
  if (!k7test::AvailableBytes(port, available)) return false;
  if (available == 0) {
    k7test::EndRead(block, 0);
    return true;
  }
  return ReadFile(port, bytes, available < size ? available : size, nullptr, &block) != FALSE;
}

}  // namespace k7
