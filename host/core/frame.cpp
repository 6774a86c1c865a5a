// Five travels and one to the first point.
#include "core/frame.h"

namespace k7host {

FrameResult DriveFrame(k7::IEngraver& device, const JobPlan& plan, JobObserver& observer) {
  FrameResult result;
  if (!device.BeginJob()) {
    result.end = JobEnd::Refused;
    return result;
  }
  const Move& first = plan.moves[0];
  const std::uint32_t corners[][2] = {
      {plan.minXSteps, plan.minYSteps}, {plan.maxXSteps, plan.minYSteps},
      {plan.maxXSteps, plan.maxYSteps}, {plan.minXSteps, plan.maxYSteps},
      {plan.minXSteps, plan.minYSteps}, {first.xSteps, first.ySteps}};
  for (const auto& corner : corners) {
    if (observer.StopRequested()) {
      result.end = JobEnd::Stopped;
      break;
    }
    const std::uint32_t status = device.MoveTo(corner[0], corner[1]);
    if (status == k7::kStatusOneShot) result.manualCutter = true;
    if (status == k7::kStatusRefused) result.end = JobEnd::TableViolation;
    if (status == k7::kStatusNothing && device.IsConnected() == 0) {
      result.end = JobEnd::Disconnected;
    }
    if (result.end != JobEnd::Done) break;
  }
  device.EndJob();
  return result;
}

}  // namespace k7host
