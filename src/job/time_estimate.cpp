#include "job/time_estimate.h"

#include <algorithm>
#include <cmath>

#include "base/arithmetic.h"
#include "job/planner_model.h"
#include "motion/axes.h"

namespace k7 {

namespace {

constexpr std::uint32_t kTravel = 1;
constexpr std::uint32_t kCut = 2;

// Both axes within a part in a thousand.
bool HasOneResolution(const Mechanics& mechanics) {
  const float ratio = HostStepsPerInch(mechanics, Axis::Y) / HostStepsPerInch(mechanics, Axis::X);
  return RoundToSteps(ratio * 1000.0f) == 1000;
}

// Walks along the pieces of a drawing. A piece is held back until the next one is known, because
// the corner between them decides at which speed it ends.
class Walk {
 public:
  Walk(const Mechanics& mechanics, const Tools& tools)
      : stepsPerInch_(HostStepsPerInch(mechanics, Axis::X)),
        travelSpeed_(tools.traverseSpeed),
        cutSpeed_(tools.engraveSpeed) {}

  // The next point of the path, host steps.
  void GoOn(std::int32_t x, std::int32_t y, std::uint32_t kind) {
    const auto dx = static_cast<float>(std::int64_t{x} - x_);
    const auto dy = static_cast<float>(std::int64_t{y} - y_);
    x_ = x;
    y_ = y;
    const bool moves = dx != 0.0f || dy != 0.0f;
    // A travel without length is not made, and no lift goes before it.
    if (kind != kind_ && (moves || kind == kCut)) ChangeKind(kind);
    if (!moves) return;
    const Piece next{dx, dy, RunLength(dx, dy)};
    if (held_.lengthSteps > 0.0f) TurnInto(next);
    held_ = next;
  }

  // Ends the path; seconds in all.
  float Finish() {
    EndHeldPiece(0.0f);
    if (runSteps_ > 0.0f) total_ += RunSeconds(runSteps_, stepsPerInch_, cutSpeed_);
    return total_;
  }

 private:
  struct Piece {
    float dx = 0.0f, dy = 0.0f, lengthSteps = 0.0f;
  };

  float Speed() const { return kind_ == kTravel ? travelSpeed_ : cutSpeed_; }

  // Ends the held piece at the corner to `next`, without a lift or plunge between them.
  void TurnInto(const Piece& next) {
    const float cosine =
        (held_.dx * next.dx + held_.dy * next.dy) / (held_.lengthSteps * next.lengthSteps);
    entry_ = EndHeldPiece(std::min(Speed(), planner::CornerSpeed(cosine)));
    if (entry_ >= Speed()) return;
    const float rule = RunSeconds(runSteps_, stepsPerInch_, Speed());
    const float standstill = rule - runSteps_ / stepsPerInch_ / Speed();
    // The corners have cost the machine more time than the closed runs account for, by at least
    // half the cost of a standstill.
    if (lag_ + machineSeconds_ - rule >= -standstill / 2.0f) CloseRun();
  }

  // Adds the held piece to the run. It ends at speed `exit`, or slower when its length does not
  // allow to reach that; returns the speed at its end.
  float EndHeldPiece(float exit) {
    if (held_.lengthSteps <= 0.0f) return exit;
    const float inches = held_.lengthSteps / stepsPerInch_;
    const float end = std::min(exit, planner::Reachable(entry_, inches));
    const float start = std::min(entry_, planner::Reachable(end, inches));
    machineSeconds_ += planner::PieceSeconds(inches, start, Speed(), end);
    runSteps_ += held_.lengthSteps;
    held_ = {};
    return end;
  }

  void CloseRun() {
    const float seconds = RunSeconds(runSteps_, stepsPerInch_, Speed());
    total_ += seconds;
    lag_ += machineSeconds_ - seconds;
    machineSeconds_ = 0.0f;
    runSteps_ = 0.0f;
  }

  // A lift or a plunge comes next, so the machine comes to a standstill.
  void ChangeKind(std::uint32_t next) {
    EndHeldPiece(0.0f);
    if (runSteps_ > 0.0f) CloseRun();
    entry_ = 0.0f;
    kind_ = next;
  }

  const float stepsPerInch_;
  const float travelSpeed_, cutSpeed_;  // in per s

  std::int32_t x_ = 0, y_ = 0;
  std::uint32_t kind_ = 0;
  Piece held_;
  float entry_ = 0.0f;           // in per s, into the held piece
  float runSteps_ = 0.0f;        // of the open run, without the held piece
  float machineSeconds_ = 0.0f;  // of the open run, as the planner takes it
  float lag_ = 0.0f;             // s that the planner takes beyond the closed runs
  float total_ = 0.0f;           // s of the closed runs
};

}  // namespace

float RunLength(float dx, float dy) noexcept {
  const float square = std::trunc(dx) * dx + dy * dy;
  return static_cast<float>(std::sqrt(static_cast<double>(square)));
}

float RunSeconds(float lengthSteps, float stepsPerInch, float inchesPerSecond) noexcept {
  const float length = lengthSteps - (stepsPerInch * 0.05f / kMmPerInch + 0.5f);
  if (!(length > 0.0f)) return 0.0f;
  const float ramp = inchesPerSecond * inchesPerSecond / 39.37008f * stepsPerInch;
  if (length > 2.0f * ramp) {
    return (length - 2.0f * ramp) / stepsPerInch / inchesPerSecond +
           2.0f * (inchesPerSecond / 19.68504f);
  }
  const float scale = stepsPerInch * 19.68504f;  // steps per s^2
  return 2.0f * static_cast<float>(std::sqrt(static_cast<double>(scale * length))) / scale;
}

std::uint32_t EstimateJobTime(const Mechanics& mechanics, const Tools& tools,
                              const std::uint32_t* triples, std::uint32_t count) noexcept {
  if (triples == nullptr || !HasOneResolution(mechanics)) return 0;
  Walk walk{mechanics, tools};
  for (std::uint32_t i = 0; i < count; ++i) {
    const std::uint32_t* triple = triples + std::size_t{3} * i;
    if (triple[2] != kTravel && triple[2] != kCut) continue;
    walk.GoOn(static_cast<std::int32_t>(triple[0]), static_cast<std::int32_t>(triple[1]),
              triple[2]);
  }
  return static_cast<std::uint32_t>(std::max(0, RoundToSteps(walk.Finish())));
}

}  // namespace k7
