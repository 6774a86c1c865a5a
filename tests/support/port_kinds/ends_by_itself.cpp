// A port whose idle reads stay outstanding for a moment and then end with no byte, as those of some
// serial drivers do. Its reads are carried out by a thread of the pool.
#include <new>

#include "available.h"
#include "link/port_read.h"

namespace k7 {
namespace {

constexpr DWORD kIdleMs = 30;

struct Read {
  HANDLE port;
  char* bytes;
  DWORD size;
  OVERLAPPED& block;
};

// Reads what is there; false: nothing is.
bool ReadNow(const Read& read, DWORD& count) {
  DWORD available = 0;
  if (!k7test::AvailableBytes(read.port, available)) return true;  // with no byte, for good
  if (available == 0) return false;
  OVERLAPPED own{};
  own.hEvent = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  if (ReadFile(read.port, read.bytes, available < read.size ? available : read.size, nullptr,
               &own) ||
      GetLastError() == ERROR_IO_PENDING) {
    GetOverlappedResult(read.port, &own, &count, TRUE);
  }
  CloseHandle(own.hEvent);
  return true;
}

void CALLBACK CarryOut(PTP_CALLBACK_INSTANCE, void* context) {
  Read* const read = static_cast<Read*>(context);
  DWORD count = 0;
  const ULONGLONG start = GetTickCount64();
  while (!ReadNow(*read, count) && GetTickCount64() - start < kIdleMs) Sleep(1);
  OVERLAPPED& block = read->block;
  delete read;
  k7test::EndRead(block, count);
}

// The module stays loaded until its last read has ended.
HMODULE OwnModule() {
  HMODULE module = nullptr;
  GetModuleHandleExW(
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
      reinterpret_cast<LPCWSTR>(&StartPortRead), &module);
  return module;
}

}  // namespace

bool StartPortRead(HANDLE port, char* bytes, DWORD size, OVERLAPPED& block) noexcept {
  DWORD available = 0;
  if (!k7test::AvailableBytes(port, available)) return false;
  Read* const read = new (std::nothrow) Read{port, bytes, size, block};
  if (read == nullptr) return false;
  ResetEvent(block.hEvent);
  block.Internal = static_cast<ULONG_PTR>(STATUS_PENDING);
  block.InternalHigh = 0;
  TP_CALLBACK_ENVIRON environment;
  InitializeThreadpoolEnvironment(&environment);
  SetThreadpoolCallbackLibrary(&environment, OwnModule());
  if (!TrySubmitThreadpoolCallback(&CarryOut, read, &environment)) {
    delete read;
    block.Internal = 0;
    return false;
  }
  SetLastError(ERROR_IO_PENDING);
  return false;
}

}  // namespace k7
