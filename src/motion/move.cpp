#include "motion/move.h"

#include <windows.h>

#include <cstring>

#include "base/arithmetic.h"
#include "base/bounded_copy.h"
#include "device/progress.h"
#include "link/commands.h"
#include "link/link.h"
#include "link/tags.h"

namespace k7 {

namespace {

constexpr std::int32_t kQueueLines = 32;  // what the controller's queue takes

// Tells the user by how much the cutter would have gone too deep.
void ShowSurfaceViolation(const NotifyState& notify, const NumberText& excessInches) noexcept {
  const auto owner = static_cast<HWND>(notify.ownerWindow.Get());
  if (owner == nullptr) return;
  wchar_t excess[sizeof excessInches.text] = L"";
  for (std::size_t i = 0; excessInches.text[i] != '\0'; ++i) {
    excess[i] = static_cast<wchar_t>(excessInches.text[i]);
  }
  wchar_t text[192] = L"";
  AppendText(text, L"Current settings will violate the table zero and table buffer settings by ");
  AppendText(text, excess);
  AppendText(text, L" inches");
  const TracedStandstill traced{awaited::kUser};
  MessageBoxW(owner, text, L"Table Surface/Buffer Violation", MB_OK);
}

bool NamesNoAxis(const AxisTargets& targets) noexcept {
  return !targets.x && !targets.y && !targets.z;
}

// The status of a plan; a refusal is shown to the user.
std::uint32_t StatusOf(const MovePlan& plan, const NotifyState& notify) noexcept {
  if (plan.violatesSurface) {
    ShowSurfaceViolation(notify, plan.excessInches);
    return kStatusRefused;
  }
  return plan.changed ? kStatusSent : kStatusNothing;
}

}  // namespace

std::uint32_t CheckMove(const DeviceState& record, const AxisTargets& targets) noexcept {
  if (record.link.connected != 1 || NamesNoAxis(targets)) return kStatusNothing;
  return StatusOf(PlanMove(record, targets), record.notify);
}

std::uint32_t SendMove(DeviceState& record, const AxisTargets& targets, CommandTag tag) noexcept {
  if (record.link.connected != 1 || NamesNoAxis(targets)) return kStatusNothing;

  const MovePlan plan = PlanMove(record, targets);
  // KEEP: a refused plunge leaves the target in last.x and last.y, although no line is sent.
  record.position.last.x = plan.lastX;
  record.position.last.y = plan.lastY;
  if (const std::uint32_t status = StatusOf(plan, record.notify); status != kStatusSent) {
    return status;
  }
  record.position.last.z = plan.lastZ;

  AwaitFewerInFlight(record.link, record.job, kQueueLines);
  if (tag != CommandTag::None) PushTag(record.job, tag);
  SendLine(record.link, plan.line.c_str(), tag);
  // Of a line on a lost link nothing will be reported.
  if (record.link.lost != 0) return kStatusSent;
  // The reader may have counted the line off already; the count is then -1 until this statement.
  if (const auto lines = record.job.linesInFlight.Lock()) *lines = WrapAdd(*lines, 1);
  return kStatusSent;
}

void SetFeedRate(DeviceState& record, float inchesPerSecond) noexcept {
  if (record.link.connected != 1) return;
  const NumberText feed = FeedText(inchesPerSecond);
  if (std::strcmp(feed.c_str(), record.position.lastFeedText) == 0) return;
  CopyText(record.position.lastFeedText, feed.c_str());
  SendLine(record.link, FeedLine(feed.c_str()).c_str());
}

void SetMaxSpeeds(LinkState& link, float x, float y, float z) noexcept {
  if (link.connected != 1) return;
  SendLine(link, MaxSpeedsLine(x, y, z).c_str());
}

void SetAxisStepsPerMm(LinkState& link, Positions& position, const char* axis,
                       float stepsPerMm) noexcept {
  if (link.connected != 1 || axis == nullptr) return;
  switch (axis[0]) {
    case 'X':
      position.stepsPerMm.x = stepsPerMm;
      break;
    case 'Y':
      position.stepsPerMm.y = stepsPerMm;
      break;
    case 'Z':
      position.stepsPerMm.z = stepsPerMm;
      break;
    default:
      break;  // KEEP: the record has no field for another letter, but the line is sent.
  }
  SendLine(link, StepsPerMmLine(axis, stepsPerMm).c_str());
}

void SetMotorPower(LinkState& link, std::uint8_t on) noexcept {
  if (link.connected != 1 || link.linkHandle.Get() == nullptr) return;
  SendLine(link, on == 1 ? commands::kMotorsOn : commands::kMotorsOff);
}

}  // namespace k7
