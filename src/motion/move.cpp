#include "motion/move.h"

#include <windows.h>

#include <cstring>

#include "device/bounded_copy.h"
#include "device/polling.h"
#include "link/link.h"
#include "link/tags.h"
#include "motion/line_text.h"
#include "motion/move_plan.h"
#include "motion/units.h"

namespace k7 {

namespace {

constexpr std::int32_t kQueueLines = 32;  // lines that the controller takes before it holds us up

// Tells the user by how much the cutter would have gone too deep.
void ShowSurfaceViolation(HWND owner, const NumberText& excessInches) noexcept {
  wchar_t excess[sizeof excessInches.text] = L"";
  for (std::size_t i = 0; excessInches.text[i] != '\0'; ++i) {
    excess[i] = static_cast<wchar_t>(excessInches.text[i]);
  }
  wchar_t text[192] = L"";
  AppendText(text, L"Current settings will violate the table zero and table buffer settings by ");
  AppendText(text, excess);
  AppendText(text, L" inches");
  MessageBoxW(owner, text, L"Table Surface/Buffer Violation", MB_OK);
}

}  // namespace

std::uint32_t EmitMove(DeviceState& record, const std::int32_t* x, const std::int32_t* y,
                       const std::int32_t* z, std::uint8_t send, CommandTag tag) noexcept {
  if (record.connected != 1) return kStatusNothing;
  if (x == nullptr && y == nullptr && z == nullptr) return kStatusNothing;

  const MovePlan plan = PlanMove(record, x, y, z);
  if (send == 1) {
    // KEEP: a refused plunge leaves the target in lastX and lastY, although no line goes out.
    record.lastX = plan.lastX;
    record.lastY = plan.lastY;
  }
  if (plan.violatesSurface) {
    const auto owner = static_cast<HWND>(record.ownerWindow.Get());
    if (owner != nullptr) ShowSurfaceViolation(owner, plan.excessInches);
    return kStatusRefused;
  }
  if (!plan.changed) return kStatusNothing;
  if (send != 1) return kStatusSent;
  record.lastZ = plan.lastZ;

  WaitForFewerInFlight(record, kQueueLines);
  if (tag != CommandTag::None) PushTag(record, tag);
  SendLine(record, plan.line);
  // The answer may have come first: the count is then -1 for a moment, which is why it is signed.
  if (const RecordLock<flightMutex> lock{record}) {
    record.linesInFlight = WrapAdd(record.linesInFlight, 1);
  }
  return kStatusSent;
}

void SetFeedRate(DeviceState& record, float inchesPerSecond) noexcept {
  if (record.connected != 1) return;
  const NumberText feed = FeedText(inchesPerSecond);
  if (std::strcmp(feed.c_str(), record.lastFeedText) == 0) return;
  CopyText(record.lastFeedText, feed.c_str());
  SendLine(record, FeedLine(feed.c_str()).c_str());
}

void SetMaxSpeeds(DeviceState& record, float x, float y, float z) noexcept {
  if (record.connected != 1) return;
  SendLine(record, MaxSpeedsLine(x, y, z).c_str());
}

}  // namespace k7
