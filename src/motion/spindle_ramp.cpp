#include "motion/spindle_ramp.h"

#include "device/polling.h"
#include "device/worker.h"
#include "link/link.h"
#include "motion/host_messages.h"
#include "motion/spindle_level.h"
#include "settings/settings_file.h"
#include "settings/settings_keys.h"

namespace k7 {

namespace {

constexpr std::uint32_t kRoundMs = 10;  // far below the time of one level in any sensible ramp

RampPlan PlanRamp(const DeviceState& record, const SettingsFile& file) noexcept {
  const std::int32_t seconds = file.ReadInt(keys::kSpindle, keys::kRampTime, 30);
  return {.startRpm = record.spindleValue,
          .maxRpm = record.spindleMaxRpm,
          .fullRangeMs = static_cast<float>(seconds) * 1000.0f,
          .down = record.rampDirection == kRampDown};
}

void RampSpindle(DeviceState& record) noexcept {
  const SettingsFile file{record};
  const RampPlan plan = PlanRamp(record, file);
  const std::uint32_t start = TickMs();
  std::int32_t lastLevel = -1;
  bool changed = false;
  for (;;) {
    const std::int32_t speed = RampSpeed(plan, TickMs() - start);
    const std::int32_t level = RampLevel(speed, plan.maxRpm);
    if (speed != record.spindleValue) {
      changed = true;
      record.spindleValue = speed;
      record.spindleRpm = speed;
      if (level != lastLevel) SendLine(record, SpindleLevelLine(level).c_str());
      lastLevel = level;
    }
    if (RampEndsAt(plan, level) || !WorkerKeyHeld(record.rampKey)) break;
    Pause(kRoundMs);
  }
  const std::int32_t reached = record.spindleValue;
  if (changed) file.WriteInt(keys::kSpindle, keys::kSpindleRpm, reached);
  // The host may answer the message with the next ramp: nothing of this one may be needed any more.
  const WindowHandle window = record.rampWindow;
  const std::uint32_t message = record.rampMessage;
  record.rampDirection = kRampIdle;
  SendToHost(window, message, reached, 0);
}

bool CanRamp(const DeviceState& record, std::int32_t direction) noexcept {
  if (record.spindlePresent != 1 || record.spindleOn != 1 || JobOpen(record) != 0) return false;
  if (direction == static_cast<std::int32_t>(kRampUp)) {
    return record.spindleValue < record.spindleMaxRpm;
  }
  return direction == static_cast<std::int32_t>(kRampDown) && record.spindleValue >= 1;
}

}  // namespace

bool StartSpindleRamp(DeviceState& record, std::int32_t direction, WindowHandle window,
                      std::uint32_t message, std::uint32_t key) noexcept {
  if (record.stopWorkers != 0 || record.rampDirection != kRampIdle) return false;
  if (!CanRamp(record, direction)) return false;
  record.rampWindow = window;
  record.rampMessage = message;
  record.rampKey = key;
  record.rampDirection = static_cast<std::uint32_t>(direction);
  if (StartWorker(record, record.rampThread, &RampSpindle)) return true;
  record.rampDirection = kRampIdle;
  return false;
}

}  // namespace k7
