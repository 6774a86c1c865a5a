#include "motion/spindle.h"

#include "device/polling.h"
#include "link/commands.h"
#include "link/link.h"
#include "motion/cutter_mode.h"
#include "motion/spindle_level.h"

namespace k7 {

void SetSpindle(DeviceState& record, std::uint32_t command) noexcept {
  if (record.spindle.spindlePresent != 1 || HasPneumaticHead(record.tools)) return;
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
  // An inhibited spindle is not switched on, but can still be switched off.
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
  Pause(record.link, 750);  // the spindle needs this long to spin up or down
}

std::uint32_t CommandedRpm(const SpindleState& spindle) noexcept {
  return spindle.spindlePresent == 1 ? static_cast<std::uint32_t>(spindle.spindleValue) : 0;
}

}  // namespace k7
