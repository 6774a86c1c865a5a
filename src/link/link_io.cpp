#include "link/link_io.h"

#include "link/port_read.h"
#include "link/tcp.h"

namespace k7 {

namespace {

// A driver that honours cancellation does so in microseconds; one that does not is not waited for.
constexpr DWORD kCancelMs = 500;

IoStart StartOf(bool completed, DWORD error) noexcept {
  if (completed) return IoStart::Completed;
  return error == ERROR_IO_PENDING ? IoStart::Pending : IoStart::Failed;
}

}  // namespace

void LinkIo::SetEventOf(OVERLAPPED& block, HANDLE event) noexcept {
  // The low bit of the handle says so; whoever waits for the handle need not take it out.
  constexpr ULONG_PTR kNoCompletionPort = 1;
  block.hEvent =
      event == nullptr
          ? nullptr
          : reinterpret_cast<HANDLE>(reinterpret_cast<ULONG_PTR>(event) | kNoCompletionPort);
}

IoStart LinkIo::StartRead(char* bytes, DWORD size, OVERLAPPED& block, DWORD& flags) const noexcept {
  if (linkType_ == kLinkSerial) {
    const bool completed = StartPortRead(link_, bytes, size, block);
    return StartOf(completed, GetLastError());
  }
  if (linkType_ == kLinkTcp) {
    WSABUF buffer{size, bytes};
    DWORD ignored = 0;
    const int result = WSARecv(AsSocket(link_), &buffer, 1, &ignored, &flags, &block, nullptr);
    return StartOf(result != SOCKET_ERROR, static_cast<DWORD>(WSAGetLastError()));
  }
  return IoStart::Failed;
}

IoStart LinkIo::StartWrite(const char* bytes, DWORD size, OVERLAPPED& block) const noexcept {
  if (linkType_ == kLinkSerial) {
    const BOOL completed = WriteFile(link_, bytes, size, nullptr, &block);
    return StartOf(completed != FALSE, GetLastError());
  }
  if (linkType_ == kLinkTcp) {
    WSABUF buffer{size, const_cast<char*>(bytes)};
    DWORD ignored = 0;
    const int result = WSASend(AsSocket(link_), &buffer, 1, &ignored, 0, &block, nullptr);
    return StartOf(result != SOCKET_ERROR, static_cast<DWORD>(WSAGetLastError()));
  }
  return IoStart::Failed;
}

IoStart LinkIo::StartWaitForByte(DWORD& events, OVERLAPPED& block) const noexcept {
  if (linkType_ != kLinkSerial) return IoStart::Failed;
  const BOOL completed = WaitCommEvent(link_, &events, &block);
  return StartOf(completed != FALSE, GetLastError());
}

void LinkIo::EndWaitForByte() const noexcept {
  if (linkType_ == kLinkSerial) SetCommMask(link_, EV_RXCHAR);
}

bool LinkIo::Finish(OVERLAPPED& block, DWORD& count, DWORD& flags) const noexcept {
  if (linkType_ == kLinkTcp) {
    return WSAGetOverlappedResult(AsSocket(link_), &block, &count, FALSE, &flags) != FALSE;
  }
  return GetOverlappedResult(link_, &block, &count, FALSE) != FALSE;
}

void LinkIo::ClearError() const noexcept {
  DWORD errors = 0;
  if (linkType_ == kLinkSerial) ClearCommError(link_, &errors, nullptr);
}

bool LinkIo::Cancel(OVERLAPPED& block, Direction direction) const noexcept {
  // Some drivers heed this and not the cancellation.
  if (linkType_ == kLinkSerial) {
    PurgeComm(link_, direction == Direction::Read ? PURGE_RXABORT : PURGE_TXABORT);
  }
  CancelIoEx(link_, &block);
  if (WaitForSingleObject(block.hEvent, kCancelMs) != WAIT_OBJECT_0) return false;
  DWORD count = 0;
  DWORD flags = 0;
  return Finish(block, count, flags) || GetLastError() != ERROR_IO_INCOMPLETE;
}

}  // namespace k7
