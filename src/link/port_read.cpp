#include "link/port_read.h"

namespace k7 {

bool StartPortRead(HANDLE port, char* bytes, DWORD size, OVERLAPPED& block) noexcept {
  return ReadFile(port, bytes, size, nullptr, &block) != FALSE;
}

}  // namespace k7
