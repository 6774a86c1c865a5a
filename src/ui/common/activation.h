// Today's controls in the driver's dialogs, whatever the host's own manifest asks for.
#pragma once

#include <windows.h>

#include "ui/common/module_instance.h"

namespace k7 {

// While it lives, the windows that this thread creates have the controls that the module's manifest
// (resource 2 of dialogs.rc) asks for. Where Windows cannot give them, they stay the host's. Not
// to be handed to another thread. [host]
class ModuleControls {
 public:
  ModuleControls() noexcept {
    ACTCTXW wanted{};
    wanted.cbSize = sizeof wanted;
    wanted.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
    wanted.hModule = ModuleInstance();
    wanted.lpResourceName = MAKEINTRESOURCEW(2);
    context_ = CreateActCtxW(&wanted);
    active_ = context_ != INVALID_HANDLE_VALUE && ActivateActCtx(context_, &cookie_) != FALSE;
  }
  ~ModuleControls() {
    if (active_) DeactivateActCtx(0, cookie_);
    if (context_ != INVALID_HANDLE_VALUE) ReleaseActCtx(context_);
  }
  ModuleControls(const ModuleControls&) = delete;
  ModuleControls& operator=(const ModuleControls&) = delete;

 private:
  HANDLE context_ = INVALID_HANDLE_VALUE;
  ULONG_PTR cookie_ = 0;
  bool active_ = false;
};

}  // namespace k7
