// Overlapped reads and writes on a link of either kind: the one place that tells serial from TCP.
#pragma once

#include <windows.h>
#include <winsock2.h>

#include "device/device_state.h"

namespace k7 {

// What starting an operation did.
enum class IoStart { Completed, Pending, Failed };

// A link handle with its type. The OVERLAPPED block, with an event of its own, and the bytes belong
// to the caller and stay untouched by it until the operation is over: a pending one is over when
// Finish says so or after CancelAndWait. For another link type every start fails. [any]
class LinkIo {
 public:
  LinkIo(LinkHandle link, std::uint32_t linkType) noexcept : link_(link), linkType_(linkType) {}

  // Reads one byte. `flags` are Winsock's, handed in and out (not used for serial).
  IoStart StartRead(char* byte, OVERLAPPED& block, DWORD& flags) const noexcept;
  IoStart StartWrite(const char* bytes, DWORD size, OVERLAPPED& block) const noexcept;

  // Fetches the result without waiting: true when the operation succeeded; `count` is what it
  // moved. Otherwise GetLastError tells; ERROR_IO_INCOMPLETE: it is still outstanding.
  bool Finish(OVERLAPPED& block, DWORD& count, DWORD& flags) const noexcept;

  // Ends an outstanding operation: afterwards the kernel no longer uses block and bytes.
  void CancelAndWait(OVERLAPPED& block) const noexcept;

 private:
  LinkHandle link_;
  std::uint32_t linkType_;
};

}  // namespace k7
