#include "motion/steps_per_mm.h"

#include "link/link.h"
#include "motion/line_text.h"

namespace k7 {

void SetAxisStepsPerMm(DeviceState& record, const char* axis, float stepsPerMm) noexcept {
  if (record.connected != 1 || axis == nullptr) return;
  switch (axis[0]) {
    case 'X':
      record.stepsPerMmX = stepsPerMm;
      break;
    case 'Y':
      record.stepsPerMmY = stepsPerMm;
      break;
    case 'Z':
      record.stepsPerMmZ = stepsPerMm;
      break;
    default:
      break;  // KEEP: no field of ours, but the controller is told all the same
  }
  SendLine(record, StepsPerMmLine(axis, stepsPerMm).c_str());
}

}  // namespace k7
