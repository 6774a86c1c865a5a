#include "link/link_io.h"

#include "link/tcp.h"

namespace k7 {

namespace {

IoStart StartOf(bool completed, DWORD error) noexcept {
  if (completed) return IoStart::Completed;
  return error == ERROR_IO_PENDING ? IoStart::Pending : IoStart::Failed;
}

}  // namespace

IoStart LinkIo::StartRead(char* byte, OVERLAPPED& block, DWORD& flags) const noexcept {
  if (linkType_ == kLinkSerial) {
    const BOOL completed = ReadFile(link_, byte, 1, nullptr, &block);
    return StartOf(completed != FALSE, GetLastError());
  }
  if (linkType_ == kLinkTcp) {
    WSABUF buffer{1, byte};
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

bool LinkIo::Finish(OVERLAPPED& block, DWORD& count, DWORD& flags) const noexcept {
  if (linkType_ == kLinkTcp) {
    return WSAGetOverlappedResult(AsSocket(link_), &block, &count, FALSE, &flags) != FALSE;
  }
  return GetOverlappedResult(link_, &block, &count, FALSE) != FALSE;
}

void LinkIo::CancelAndWait(OVERLAPPED& block) const noexcept {
  CancelIoEx(link_, &block);
  DWORD count = 0;
  DWORD flags = 0;
  if (linkType_ == kLinkTcp) {
    WSAGetOverlappedResult(AsSocket(link_), &block, &count, TRUE, &flags);
  } else {
    GetOverlappedResult(link_, &block, &count, TRUE);
  }
}

}  // namespace k7
