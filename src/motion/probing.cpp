#include "motion/probing.h"

#include "device/bounded_copy.h"
#include "device/polling.h"
#include "link/link.h"
#include "motion/line_text.h"
#include "motion/location.h"
#include "motion/move.h"
#include "motion/number_text.h"
#include "motion/position.h"
#include "motion/units.h"
#include "settings/settings_file.h"
#include "settings/settings_keys.h"

namespace k7 {

void ProbeSurface(DeviceState& record) noexcept {
  if (record.connected != 1) return;
  WaitForFewerInFlight(record, 1);
  record.probePending = 1;
  const bool semiAutomatic = record.cutterMode == kCutterSemiAutomatic;
  // KEEP: millimetres per second in a line whose feed is per minute: a probe goes down slowly.
  const float speed = semiAutomatic ? 12.7f : record.cutterDownSpeed * 25.4f;
  // KEEP: the feed of the down speed counts as sent, although the line says another.
  const float feed = semiAutomatic ? 762.0f : SpeedToFeed(record.cutterDownSpeed);
  LineText line;
  CopyText(line.text, "G30 F");
  AppendText(line.text, FormatFixed(speed, 3).c_str());
  AppendText(line.text, "\n");
  CopyText(record.lastFeedText, FormatFixed(feed, 3).c_str());
  SendLine(record, line.c_str());
  PollUntil(10, [&] { return record.probePending != 1; });
  const std::int32_t home = record.cutterHome;
  SetPosition(record, nullptr, nullptr, &home);
}

void SubtractProbeOffset(DeviceState& record) noexcept {
  record.cutterHome =
      WrapSubtract(record.cutterHome, InchesToSteps(record.probeOffset, StepsPerInchZ(record)));
}

void WriteCutterHome(const DeviceState& record) noexcept {
  SettingsFile{record}.WriteFloat(keys::kAxisZ, keys::kCutterHome,
                                  StepsToInches(record.cutterHome, StepsPerInchZ(record)));
}

void ProbeAndLift(DeviceState& record, std::int32_t liftThousandths) noexcept {
  if (liftThousandths < 1 || !IsIdle(record)) return;
  ProbeSurface(record);
  SubtractProbeOffset(record);
  const std::int32_t z = WrapSubtract(
      record.cutterHome,
      RoundToSteps(static_cast<float>(liftThousandths) / 1000.0f * StepsPerInchZ(record)));
  SetFeedRate(record, record.cutterUpSpeed);
  // KEEP: counted as down although it went up, so that the next travel lifts it once more.
  if (EmitMove(record, nullptr, nullptr, &z, 1) == kStatusSent) record.cutterState = kCutterDown;
  // With no job open no reply takes the lift off the counts again.
  ForgetMoves(record);
}

void SetTableSurface(DeviceState& record, float bufferInches, std::int32_t method) noexcept {
  if (!IsIdle(record)) return;
  const float stepsPerInch = StepsPerInchZ(record);
  switch (method) {
    case 0:
      // KEEP: rounded in thousandths of a step, then divided as a whole number.
      record.tableSurface =
          RoundToSteps(static_cast<float>(record.tableDepth) * stepsPerInch) / 1000;
      break;
    case 1:
      record.tableSurface = record.lastZ;
      break;
    case 2:
      ProbeSurface(record);
      SubtractProbeOffset(record);
      record.tableSurface = record.lastZ;
      break;
    default:
      // KEEP: a mode list without a selection. The surface stays, less the buffer once more.
      break;
  }
  record.tableSurface =
      WrapSubtract(record.tableSurface, InchesToSteps(bufferInches, stepsPerInch));
  SettingsFile{record}.WriteInt(keys::kAxisZ, keys::kTableSurface, record.tableSurface);
  SetFeedRate(record, record.cutterUpSpeed);
  const std::int32_t top = 0;
  if (EmitMove(record, nullptr, nullptr, &top, 1) == kStatusSent) record.cutterState = kCutterUp;
  ForgetMoves(record);
  ReportSurface(record);
}

}  // namespace k7
