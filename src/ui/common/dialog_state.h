// What the dialogs share: the settings dialog and those that open over it. They are modal and run
// on the host's thread, one set of them at a time, so that one set of values without a guard is
// enough. What concerns one dialog alone is kept with its window instead. The device whose dialog
// is open, and the two flags that the settings load writes as well (hasSpindle,
// hasRoundAttachment), are in device/module_state.h.
#pragma once

#include <cstdint>

#include "device/module_state.h"

namespace k7 {

struct DialogState {
  // Set from the host's call that opens the settings dialog.
  std::uint32_t mode = 0;      // 1: the dialog precedes a job. Read by settings, set table zero
  std::uint32_t allowRun = 0;  // non-zero: the user may change settings and run. Read by settings
  std::uint32_t showGrid = 0;  // 0 hides the grid speed row. Read by settings
  // 1: a job is open or the queue is being drained. Read by settings, table setup, set table zero.
  std::uint32_t busy = 0;
  // Halves of the initial parameter of the settings dialog. Table setup hands them on to the
  // device, sign-extended.
  std::int16_t hostWordLow = 0;
  std::int16_t hostWordHigh = 0;

  // What "Apply & Exit" of the settings dialog ends with. Table setup sets it to 2 when the machine
  // itself may have changed; settings reads that after table setup and takes it back to 101.
  std::int32_t applyResult = 101;

  // The machine has these switches. Cleared when the settings dialog opens, set from the files that
  // it reads and by table setup. Read by settings and set table zero.
  std::uint8_t xLimitSwitch = 0, yLimitSwitch = 0, zLimitSwitch = 0, zProxSwitch = 0;
  // All four are there: the machine finds its home and the cutter by itself.
  bool HasAllSwitches() const noexcept {
    return xLimitSwitch != 0 && yLimitSwitch != 0 && zLimitSwitch != 0 && zProxSwitch != 0;
  }

  // Read and written by the settings dialog alone, from several of its files. The depth outlives
  // the dialog: a settings file without one leaves the value of the dialog before.
  std::uint32_t currentEngraveType = 0;  // last selection seen
  std::int32_t passCopies = 2;           // kept while the shared field shows the pass depth
  float maxPassDepth = 0.0f;             // in; kept while the shared field shows the copies

  // 1: the engrave buffer was changed and table zero not yet set anew: the settings dialog saves
  // nothing. Outlives the dialogs; only set table zero clears it.
  std::uint8_t engraveBufferModified = 0;
};

inline DialogState dialogState;

}  // namespace k7
