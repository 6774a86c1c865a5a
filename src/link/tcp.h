// Opening a controller's TCP link, and closing a link of either kind.
#pragma once

#include <winsock2.h>

#include "device/device_state.h"
#include "link/link.h"

namespace k7 {

// Connects an overlapped socket to that service of `address` (a name or a number), trying its
// addresses in the order in which they are resolved. INVALID_SOCKET when none accepts; Winsock is
// then released again, else CloseLink releases it. Blocks for as long as the system tries. [host]
SOCKET OpenTcp(const wchar_t* address, const wchar_t* service = kControllerService) noexcept;

// Closes a link after its detach: the serial handle, or the socket and with it Winsock. Null and
// other link types: nothing. [host]
void CloseLink(std::uint32_t linkType, LinkHandle link) noexcept;

inline SOCKET AsSocket(LinkHandle link) noexcept {
  return reinterpret_cast<SOCKET>(link);
}
inline LinkHandle AsLink(SOCKET socket) noexcept {
  return reinterpret_cast<LinkHandle>(socket);
}

}  // namespace k7
