#include "motion/spindle.h"

#include "device/polling.h"
#include "link/link.h"
#include "motion/spindle_level.h"

namespace k7 {

void SetSpindle(DeviceState& record, std::uint32_t command) noexcept {
  if (record.spindlePresent != 1 || record.cutterMode == kCutterAirZ) return;
  std::int32_t rpm = 0;
  switch (command) {
    case kSpindleOff:
      break;
    case kSpindleEngrave:
      rpm = record.spindleRpm;
      break;
    case kSpindleFull:
      rpm = record.spindleMaxRpm;
      break;
    case kSpindleInhibit:
      if (record.spindleOn == 0) record.spindleInhibit = 1;
      return;
    case kSpindleRelease:
      record.spindleInhibit = 0;
      return;
    default:
      return;
  }
  // An inhibited spindle can still be switched off.
  if (record.spindleInhibit == 1 && command != kSpindleOff) return;
  if (record.connected != 1 || rpm == record.spindleValue) return;
  if (rpm != 0) {
    SendLine(record, "M42\n");
    SendLine(record, SpindleLevelLine(SpindleLevel(rpm, record.spindleMaxRpm)).c_str());
    record.spindleOn = 1;
  } else {
    SendLine(record, "M43\n");
    record.spindleOn = 0;
  }
  record.spindleValue = rpm;
  Pause(750);  // the time to spin up or down
}

}  // namespace k7
