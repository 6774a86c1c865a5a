#include "job/passes.h"

#include "base/arithmetic.h"
#include "device/polling.h"
#include "device/progress.h"
#include "job/pass_status.h"
#include "motion/axes.h"
#include "motion/cutter.h"
#include "motion/cutter_mode.h"
#include "motion/move.h"

namespace k7 {

namespace {

void TakePassDepth(PassState& passes, std::uint32_t pass) {
  passes.currentPass = pass;
  if (!passes.passDepths || pass < 1 || pass > passes.passCount) return;
  passes.passDepth = passes.passDepths[pass - 1];
}

// For a cutter that is still in the work from the pass before. KEEP: it is plunged here only when
// it is at the first point, and without the least depth that a stroke's plunge has.
void PlungeAgain(DeviceState& record, std::uint32_t hostX, std::uint32_t hostY) {
  const MachinePlace place = MachinePlaceOf(record.mechanics, record.position, hostX, hostY);
  if (CheckMove(record, {.x = place.x, .y = place.y}) != kStatusNothing) return;
  const std::int32_t z =
      WrapAdd(record.position.cutterHome,
              InchesToSteps(record.passes.passDepth, StepsPerInch(record.mechanics, Axis::Z)));
  SetFeedRate(record, record.tools.cutterDownSpeed);
  MoveCutter(record, z, CommandTag::Plunge, kCutterDown, HasEngraveDelay(record.tools));
}

}  // namespace

std::uint32_t StartPass(DeviceState& record, std::uint32_t pass, std::uint32_t hostX,
                        std::uint32_t hostY, wchar_t* status, std::int32_t size) noexcept {
  if (record.link.connected != 1) return 0;
  const auto drained = [&] { return !MovesRemain(record.job); };
  AwaitReader(record.link, record.job, drained, awaited::kNoMoves);
  TakePassDepth(record.passes, pass);
  TracePass(record.link.linkHandle, pass, record.passes.passCount, record.passes.passDepth);
  if (record.tools.cutterState == kCutterDown) PlungeAgain(record, hostX, hostY);
  const PassStatus line{.pass = pass,
                        .count = record.passes.passCount,
                        .depthInches = record.passes.passDepth,
                        .airZ = HasPneumaticHead(record.tools),
                        .runKind = record.host.gridMode};
  WritePassStatus(line, status, size);
  return 0;
}

}  // namespace k7
