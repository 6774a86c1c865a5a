// What a port has for the next read.
#pragma once

#include <windows.h>

namespace k7test {

// False: the port has failed, and GetLastError tells how.
inline bool AvailableBytes(HANDLE port, DWORD& count) {
  if (GetFileType(port) == FILE_TYPE_PIPE) {  // it stands in for a port in the module's tests
    return PeekNamedPipe(port, nullptr, 0, nullptr, &count, nullptr) != FALSE;
  }
  COMSTAT status{};
  DWORD errors = 0;
  if (!ClearCommError(port, &errors, &status)) return false;
  count = status.cbInQue;
  return true;
}

// Ends a read that the caller's block stands for, as the kernel does.
inline void EndRead(OVERLAPPED& block, DWORD count) {
  block.InternalHigh = count;
  InterlockedExchange64(reinterpret_cast<volatile LONG64*>(&block.Internal), 0);
  SetEvent(block.hEvent);
}

}  // namespace k7test
