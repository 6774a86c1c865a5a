#include "motion/probing.h"

#include "base/arithmetic.h"
#include "base/bounded_copy.h"
#include "base/number_text.h"
#include "device/polling.h"
#include "device/progress.h"
#include "link/commands.h"
#include "link/link.h"
#include "motion/axes.h"
#include "motion/move.h"
#include "motion/position.h"
#include "settings/file.h"
#include "settings/schema.h"

namespace k7 {

void ProbeSurface(DeviceState& record) noexcept {
  if (record.link.connected != 1) return;
  AwaitFewerInFlight(record.link, record.job, 1);
  record.tools.probePending = 1;
  const bool semiAutomatic = record.tools.cutterMode == kCutterSemiAutomatic;
  // KEEP: the number is in millimetres per second although a feed is per minute, which makes the
  // probe go down slowly.
  const float speed = semiAutomatic ? 12.7f : record.tools.cutterDownSpeed * kMmPerInch;
  // KEEP: the feed of the down speed is noted as sent, although the probe line says another.
  const float feed = semiAutomatic ? 762.0f : SpeedToFeed(record.tools.cutterDownSpeed);
  CopyText(record.position.lastFeedText, FormatFixed(feed, 3).c_str());
  SendLine(record.link, ProbeLine(speed).c_str());
  // Without a touch there is no surface to declare.
  const auto touched = [&] { return record.tools.probePending != 1; };
  if (!AwaitReader(record.link, record.job, touched, awaited::kTouch)) return;
  DeclarePosition(record.link, record.position, {.z = record.position.cutterHome});
}

void SubtractProbeOffset(DeviceState& record) noexcept {
  // Behind a probe that came to nothing the offset would be taken off the same surface again.
  if (record.link.lost != 0) return;
  record.position.cutterHome = WrapSubtract(
      record.position.cutterHome,
      InchesToSteps(record.tools.probeOffset, StepsPerInch(record.mechanics, Axis::Z)));
}

void KeepCutterHome(const DeviceState& record) noexcept {
  SettingsFile{record.link}.WriteFloat(
      settings::kCutterHome,
      StepsToInches(record.position.cutterHome, StepsPerInch(record.mechanics, Axis::Z)));
}

void ProbeAndLift(DeviceState& record, std::int32_t liftThousandths) noexcept {
  if (liftThousandths < 1 || !IsIdle(record)) return;
  ProbeSurface(record);
  SubtractProbeOffset(record);
  const std::int32_t z = WrapSubtract(record.position.cutterHome,
                                      RoundToSteps(static_cast<float>(liftThousandths) / 1000.0f *
                                                   StepsPerInch(record.mechanics, Axis::Z)));
  SetFeedRate(record, record.tools.cutterUpSpeed);
  // KEEP: the cutter counts as down although it went up, so that the next travel lifts it again.
  if (SendMove(record, {.z = z}) == kStatusSent) record.tools.cutterState = kCutterDown;
  // With no job open the controller does not report the lift, so the counts would keep it.
  ForgetMoves(record.job);
}

void SetTableSurface(DeviceState& record, float bufferInches, std::int32_t method) noexcept {
  if (!IsIdle(record)) return;
  const float stepsPerInch = StepsPerInch(record.mechanics, Axis::Z);
  switch (method) {
    case 0:
      // KEEP: the product is rounded in thousandths of a step and then divided as a whole number.
      record.position.tableSurface =
          RoundToSteps(static_cast<float>(record.mechanics.tableDepth) * stepsPerInch) / 1000;
      break;
    case 1:
      record.position.tableSurface = record.position.last.z;
      break;
    case 2:
      ProbeSurface(record);
      if (record.link.lost != 0) return;  // there is no surface to keep
      SubtractProbeOffset(record);
      record.position.tableSurface = record.position.last.z;
      break;
    default:
      // KEEP: a list without a selection leaves the surface, which still loses the buffer below.
      break;
  }
  record.position.tableSurface =
      WrapSubtract(record.position.tableSurface, InchesToSteps(bufferInches, stepsPerInch));
  SettingsFile{record.link}.WriteInt(settings::kTableSurface, record.position.tableSurface);
  SetFeedRate(record, record.tools.cutterUpSpeed);
  if (SendMove(record, {.z = 0}) == kStatusSent) record.tools.cutterState = kCutterUp;
  ForgetMoves(record.job);
  ReportSurface(record.notify, record.position);
}

}  // namespace k7
