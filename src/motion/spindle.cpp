#include "motion/spindle.h"

#include "device/polling.h"
#include "link/commands.h"
#include "link/link.h"
#include "motion/spindle_level.h"

namespace k7 {

void SetSpindle(DeviceState& record, std::uint32_t command) noexcept {
  if (record.spindle.spindlePresent != 1 || record.tools.cutterMode == kCutterAirZ) return;
  std::int32_t rpm = 0;
  switch (command) {
    case kSpindleOff:
      break;
    case kSpindleEngrave:
      rpm = record.spindle.spindleRpm;
      break;
    case kSpindleFull:
      rpm = record.spindle.spindleMaxRpm;
      break;
    case kSpindleInhibit:
      if (record.spindle.spindleOn == 0) record.spindle.spindleInhibit = 1;
      return;
    case kSpindleRelease:
      record.spindle.spindleInhibit = 0;
      return;
    default:
      return;
  }
  // An inhibited spindle can still be switched off.
  if (record.spindle.spindleInhibit == 1 && command != kSpindleOff) return;
  if (record.link.connected != 1 || rpm == record.spindle.spindleValue) return;
  if (rpm != 0) {
    SendLine(record.link, commands::kToolOn);
    SendLine(record.link,
             SpindleLevelLine(SpindleLevel(rpm, record.spindle.spindleMaxRpm)).c_str());
    record.spindle.spindleOn = 1;
  } else {
    SendLine(record.link, commands::kToolOff);
    record.spindle.spindleOn = 0;
  }
  record.spindle.spindleValue = rpm;
  Pause(record.link, 750);  // the time to spin up or down
}

}  // namespace k7
