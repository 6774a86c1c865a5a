#include "motion/proximity.h"

#include <windows.h>

#include "motion/move.h"

namespace k7 {

void LiftFromProximity(DeviceState& record) noexcept {
  SetFeedRate(record, record.cutterUpSpeed);
  const std::int32_t top = 0;
  EmitMove(record, nullptr, nullptr, &top, 1);
  MessageBoxW(static_cast<HWND>(record.ownerWindow.Get()),
              L"Prox was triggered. Close JFZ then reopen", L"Error", MB_OK);
}

}  // namespace k7
