#include "job/passes.h"

#include "device/polling.h"
#include "job/pass_status.h"
#include "motion/move.h"
#include "motion/tool_wait.h"
#include "motion/units.h"

namespace k7 {

namespace {

constexpr std::uint32_t kPollMs = 50;

void TakePassDepth(DeviceState& record, std::uint32_t pass) {
  record.currentPass = pass;
  if (!record.passDepths || pass < 1 || pass > record.passCount) return;
  record.passDepth = record.passDepths[pass - 1];
}

// The cutter is still in the work from the pass before. KEEP: only when it stands on the first
// point is it plunged here, and the least depth of a stroke's plunge does not hold.
void PlungeAgain(DeviceState& record, std::uint32_t hostX, std::uint32_t hostY) {
  const std::int32_t x = MachineX(record, hostX);
  const std::int32_t y = MachineY(record, hostY);
  if (EmitMove(record, &x, &y, nullptr, 0) != kStatusNothing) return;
  const std::int32_t z =
      WrapAdd(record.cutterHome, InchesToSteps(record.passDepth, StepsPerInchZ(record)));
  SetFeedRate(record, record.cutterDownSpeed);
  MoveCutter(record, z, CommandTag::Plunge, kCutterDown, record.engraveDelayMs > 0);
}

}  // namespace

std::uint32_t StartPass(DeviceState& record, std::uint32_t pass, std::uint32_t hostX,
                        std::uint32_t hostY, wchar_t* status, std::int32_t size) noexcept {
  if (record.connected != 1) return 0;
  PollUntil(kPollMs, [&] { return !MovesRemain(record); });
  TakePassDepth(record, pass);
  if (record.cutterState == kCutterDown) PlungeAgain(record, hostX, hostY);
  const PassStatus line{.pass = pass,
                        .count = record.passCount,
                        .depthInches = record.passDepth,
                        .airZ = record.cutterMode == kCutterAirZ,
                        .runKind = record.gridMode};
  WritePassStatus(line, status, size);
  return 0;
}

}  // namespace k7
