#include "motion/spindle_ramp.h"

#include "device/polling.h"
#include "device/progress.h"
#include "device/worker.h"
#include "link/commands.h"
#include "link/link.h"
#include "link/notify.h"
#include "motion/spindle_level.h"
#include "settings/file.h"
#include "settings/schema.h"

namespace k7 {

namespace {

constexpr std::uint32_t kRoundMs = 10;  // well below the time that a ramp spends on one level

RampPlan PlanRamp(const SpindleState& spindle, const SettingsFile& file) noexcept {
  const std::int32_t seconds = file.ReadInt(settings::kRampTime);
  return {.startRpm = spindle.spindleValue,
          .maxRpm = spindle.spindleMaxRpm,
          .fullRangeMs = static_cast<float>(seconds) * 1000.0f,
          .down = spindle.rampDirection == kRampDown};
}

void RampSpindle(DeviceState& record) noexcept {
  const SettingsFile file{record.link};
  const RampPlan plan = PlanRamp(record.spindle, file);
  const std::uint32_t start = TickMs();
  std::int32_t lastLevel = -1;
  bool changed = false;
  for (;;) {
    const std::int32_t speed = RampSpeed(plan, TickMs() - start);
    const std::int32_t level = RampLevel(speed, plan.maxRpm);
    if (speed != record.spindle.spindleValue) {
      changed = true;
      record.spindle.spindleValue = speed;
      record.spindle.spindleRpm = speed;
      if (level != lastLevel) SendLine(record.link, SpindleLevelLine(level).c_str());
      lastLevel = level;
    }
    if (RampEndsAt(plan, level) || !WorkerKeyHeld(record.spindle.rampKey)) break;
    Pause(kRoundMs);
  }
  const std::int32_t reached = record.spindle.spindleValue;
  if (changed) file.WriteInt(settings::kSpindleRpm, reached);
  // The host may start the next ramp while it handles the message, so everything that belongs to
  // this ramp is read before the ramp counts as ended.
  const WindowHandle window = record.spindle.rampWindow;
  const std::uint32_t message = record.spindle.rampMessage;
  record.spindle.rampDirection = kRampIdle;
  SendToHost(window, message, reached, 0);
}

bool CanRamp(const SpindleState& spindle, std::int32_t direction) noexcept {
  if (spindle.spindlePresent != 1 || spindle.spindleOn != 1) return false;
  if (direction == static_cast<std::int32_t>(kRampUp)) {
    return spindle.spindleValue < spindle.spindleMaxRpm;
  }
  return direction == static_cast<std::int32_t>(kRampDown) && spindle.spindleValue >= 1;
}

}  // namespace

bool StartSpindleRamp(DeviceState& record, std::int32_t direction, WindowHandle window,
                      std::uint32_t message, std::uint32_t key) noexcept {
  if (record.stopWorkers != 0 || record.spindle.rampDirection != kRampIdle) return false;
  if (!CanRamp(record.spindle, direction) || JobOpen(record.job) != 0) return false;
  record.spindle.rampWindow = window;
  record.spindle.rampMessage = message;
  record.spindle.rampKey = key;
  record.spindle.rampDirection = static_cast<std::uint32_t>(direction);
  if (StartWorker(record, record.spindle.rampThread, &RampSpindle, "ramp")) return true;
  record.spindle.rampDirection = kRampIdle;
  return false;
}

}  // namespace k7
