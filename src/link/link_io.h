// Overlapped reads and writes on a link of either kind: the one place that tells serial from TCP.
#pragma once

#include <windows.h>
#include <winsock2.h>

#include "base/trace.h"
#include "device/device_state.h"

namespace k7 {

// What starting an operation did.
enum class IoStart { Completed, Pending, Failed };

// A link handle with its type. The OVERLAPPED block, with an event of its own, and the bytes belong
// to the caller and stay untouched by it until the operation is over: a pending one is over when
// Finish says so or after Cancel. For another link type every start fails. [any]
class LinkIo {
 public:
  LinkIo(LinkHandle link, std::uint32_t linkType) noexcept : link_(link), linkType_(linkType) {}

  // An operation has failed: for the trace.
  void TraceFailed(const char* what, DWORD error) const noexcept {
    TraceFailure(link_, what, error);
  }

  // Has the end of each operation of `block` signal `event`, and reach no completion port: a link
  // has none, and under Wine the attempt costs a call to the server at every line.
  static void SetEventOf(OVERLAPPED& block, HANDLE event) noexcept;

  bool IsSerial() const noexcept { return linkType_ == kLinkSerial; }

  // Reads up to `size` bytes. `flags` are Winsock's, handed in and out (not used for serial).
  // After Failed, GetLastError tells.
  IoStart StartRead(char* bytes, DWORD size, OVERLAPPED& block, DWORD& flags) const noexcept;
  IoStart StartWrite(const char* bytes, DWORD size, OVERLAPPED& block) const noexcept;

  // Starts waiting for the arrival of a byte at a serial port. Failed: this is no port, or TCP.
  IoStart StartWaitForByte(DWORD& events, OVERLAPPED& block) const noexcept;

  // Ends a wait for the arrival of a byte; Finish or Cancel it all the same.
  void EndWaitForByte() const noexcept;

  // Fetches the result without waiting: true when the operation succeeded; `count` is what it
  // moved. Otherwise GetLastError tells; ERROR_IO_INCOMPLETE: it is still outstanding.
  bool Finish(OVERLAPPED& block, DWORD& count, DWORD& flags) const noexcept;

  // Lets a serial port go on after an error: while another program's fAbortOnError is in force,
  // every later read and write fails otherwise. Nothing for TCP.
  void ClearError() const noexcept;

  enum class Direction { Read, Write };
  // Ends an outstanding operation and waits for its end, a while. True: the kernel no longer uses
  // block and bytes. False: it may; they must stay where they are for ever.
  [[nodiscard]] bool Cancel(OVERLAPPED& block, Direction direction) const noexcept;

 private:
  LinkHandle link_;
  std::uint32_t linkType_;
};

}  // namespace k7
