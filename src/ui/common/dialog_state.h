// What the dialogs share while one of them is open. They are modal and run on the host's thread,
// one set of them at a time, so that the values are the process's own: no guard. The device whose
// dialog is open, and the two flags that the settings load writes as well (hasSpindle,
// hasRoundAttachment), are in device/module_state.h.
#pragma once

#include <cstdint>

#include "device/module_state.h"

namespace k7 {

struct DialogState {
  std::uint32_t mode = 0;      // 1: the dialog precedes a job
  std::uint32_t allowRun = 0;  // non-zero: the user may change settings and run
  std::uint32_t showGrid = 0;  // 0 hides the grid speed row
  std::uint32_t busy = 0;      // 1: a job is open or the queue is being drained

  // Halves of the initial parameter of the settings dialog. The table setup dialog hands them on to
  // the device, sign-extended.
  std::int16_t hostWordLow = 0;
  std::int16_t hostWordHigh = 0;

  std::int32_t applyResult = 101;  // what "Apply & Exit" ends with

  std::uint8_t initializing = 0;    // 1 while a dialog is being filled at its start
  std::uint8_t loadingProfile = 0;  // 1 while a material profile goes into the fields

  // The machine has these switches. Set from the files read, cleared when the dialog opens.
  std::uint8_t xLimitSwitch = 0, yLimitSwitch = 0, zLimitSwitch = 0, zProxSwitch = 0;
  // All four are there: the machine finds its home and the cutter by itself.
  bool HasAllSwitches() const noexcept {
    return xLimitSwitch != 0 && yLimitSwitch != 0 && zLimitSwitch != 0 && zProxSwitch != 0;
  }

  std::uint32_t currentEngraveType = 0;  // last selection seen
  std::int32_t passCopies = 2;           // held while the shared field shows the pass depth
  float maxPassDepth = 0.0f;             // in; held while the shared field shows the copies

  // 1: the engrave buffer was changed and table zero not yet set anew. Survives the dialog; cleared
  // by the set table zero dialog alone.
  std::uint8_t engraveBufferModified = 0;
};

inline DialogState dialogState;

}  // namespace k7
