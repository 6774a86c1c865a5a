// The module that holds the dialog templates: this DLL, or the test program it is linked into.
#pragma once

#include <windows.h>

extern "C" IMAGE_DOS_HEADER __ImageBase;  // made by the linker

namespace k7 {

// [any]
inline HINSTANCE ModuleInstance() noexcept {
  return reinterpret_cast<HINSTANCE>(&__ImageBase);
}

}  // namespace k7
