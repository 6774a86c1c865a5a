#include "job/time_estimate.h"

#include <algorithm>
#include <cmath>

#include "job/planner_model.h"
#include "motion/units.h"

namespace k7 {

namespace {

constexpr std::uint32_t kTravel = 1;
constexpr std::uint32_t kCut = 2;

// Both axes within a part in a thousand.
bool HasOneResolution(const DeviceState& record) {
  const float ratio = HostStepsPerInchY(record) / HostStepsPerInchX(record);
  return RoundToSteps(ratio * 1000.0f) == 1000;
}

// Walks the pieces of a drawing; each is held back until the next one shows how it ends.
class Walk {
 public:
  explicit Walk(const DeviceState& record)
      : stepsPerInch_(HostStepsPerInchX(record)),
        travelSpeed_(record.traverseSpeed),
        cutSpeed_(record.engraveSpeed),
        liftSpeed_(record.cutterUpSpeed),
        plungeSpeed_(record.cutterDownSpeed),
        strokeInches_(static_cast<float>(WrapSubtract(PlungeZ(record), LiftZ(record))) /
                      StepsPerInchZ(record)) {}

  // The next point of the path, host steps.
  void GoOn(std::int32_t x, std::int32_t y, std::uint32_t kind) {
    const auto dx = static_cast<float>(std::int64_t{x} - x_);
    const auto dy = static_cast<float>(std::int64_t{y} - y_);
    x_ = x;
    y_ = y;
    const bool moves = dx != 0.0f || dy != 0.0f;
    // The machine makes no travel without length, nor the lift before it.
    if (kind != kind_ && (moves || kind == kCut)) ChangeKind(kind);
    if (!moves) return;
    const Piece next{dx, dy, RunLength(dx, dy)};
    if (held_.lengthSteps > 0.0f) TurnInto(next);
    held_ = next;
  }

  // Ends the path; seconds in all.
  float Finish() {
    EndHeldPiece(0.0f, false);
    if (runSteps_ > 0.0f) total_ += RunSeconds(runSteps_, stepsPerInch_, cutSpeed_);
    return total_;
  }

 private:
  struct Piece {
    float dx = 0.0f, dy = 0.0f, lengthSteps = 0.0f;
  };

  float Speed() const { return kind_ == kTravel ? travelSpeed_ : cutSpeed_; }

  // The held piece goes over into the next without a lift or plunge.
  void TurnInto(const Piece& next) {
    const float cosine =
        (held_.dx * next.dx + held_.dy * next.dy) / (held_.lengthSteps * next.lengthSteps);
    entry_ = EndHeldPiece(std::min(Speed(), planner::CornerSpeed(cosine)), false);
    if (entry_ >= Speed()) return;
    const float rule = RunSeconds(runSteps_, stepsPerInch_, Speed());
    const float standstill = rule - runSteps_ / stepsPerInch_ / Speed();
    // The machine has lost more than the closed runs account for, by the better part of one more
    // standstill.
    if (lag_ + machineSeconds_ - rule >= -standstill / 2.0f) CloseRun();
  }

  // Adds the held piece, left at `exit` or at what can be reached of it, to the run. At a lift or
  // plunge the run ends at a standstill, the machine at an upright corner: the difference is taken
  // off the total. Returns the speed at the end.
  float EndHeldPiece(float exit, bool endsUpright) {
    if (held_.lengthSteps <= 0.0f) return exit;
    const float inches = held_.lengthSteps / stepsPerInch_;
    const float top = Speed();
    const float end = std::min(exit, planner::Reachable(entry_, inches));
    const float start = std::min(entry_, planner::Reachable(end, inches));
    const float seconds = planner::PieceSeconds(inches, start, top, end);
    const float upright = std::min(top, planner::CornerSpeed(0.0f));
    total_ -= seconds - planner::PieceSeconds(inches, startsUpright_ ? upright : start, top,
                                              endsUpright ? upright : end);
    machineSeconds_ += seconds;
    runSteps_ += held_.lengthSteps;
    startsUpright_ = false;
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

  // The cutter goes the other way from here.
  void ChangeKind(std::uint32_t next) {
    const bool counts = hasCut_ || kind_ == kCut;
    EndHeldPiece(0.0f, counts);
    if (runSteps_ > 0.0f) CloseRun();
    hasCut_ = counts;
    if (counts) {
      const float speed = next == kCut ? plungeSpeed_ : liftSpeed_;
      const float rounded = std::min(speed, planner::CornerSpeed(0.0f));
      total_ += planner::PieceSeconds(strokeInches_, rounded, speed, rounded);
    }
    startsUpright_ = counts;
    entry_ = 0.0f;
    kind_ = next;
  }

  const float stepsPerInch_;
  const float travelSpeed_, cutSpeed_, liftSpeed_, plungeSpeed_;  // in per s
  const float strokeInches_;                                      // from lift to depth

  std::int32_t x_ = 0, y_ = 0;
  std::uint32_t kind_ = 0;
  bool hasCut_ = false;  // a stroke is behind: lifts and plunges count
  Piece held_;
  float entry_ = 0.0f;           // in per s, into the held piece
  bool startsUpright_ = false;   // the held piece comes out of a lift or plunge that counts
  float runSteps_ = 0.0f;        // of the open run, without the held piece
  float machineSeconds_ = 0.0f;  // of the open run, as the planner takes it
  float lag_ = 0.0f;             // s of the planner that the closed runs do not account for
  float total_ = 0.0f;
};

}  // namespace

float RunLength(float dx, float dy) noexcept {
  const float square = std::trunc(dx) * dx + dy * dy;
  return static_cast<float>(std::sqrt(static_cast<double>(square)));
}

float RunSeconds(float lengthSteps, float stepsPerInch, float inchesPerSecond) noexcept {
  const float length = lengthSteps - (stepsPerInch * 0.05f / 25.4f + 0.5f);
  if (!(length > 0.0f)) return 0.0f;
  const float ramp = inchesPerSecond * inchesPerSecond / 39.37008f * stepsPerInch;
  if (length > 2.0f * ramp) {
    return (length - 2.0f * ramp) / stepsPerInch / inchesPerSecond +
           2.0f * (inchesPerSecond / 19.68504f);
  }
  const float scale = stepsPerInch * 19.68504f;  // steps per s^2
  const double root = std::sqrt(static_cast<double>(scale * length));
  return static_cast<float>(2.0 * root / static_cast<double>(scale));
}

std::uint32_t EstimateJobTime(const DeviceState& record, const std::uint32_t* triples,
                              std::uint32_t count) noexcept {
  if (triples == nullptr || !HasOneResolution(record)) return 0;
  Walk walk{record};
  for (std::uint32_t i = 0; i < count; ++i) {
    const std::uint32_t* triple = triples + std::size_t{3} * i;
    if (triple[2] != kTravel && triple[2] != kCut) continue;
    walk.GoOn(static_cast<std::int32_t>(triple[0]), static_cast<std::int32_t>(triple[1]),
              triple[2]);
  }
  return static_cast<std::uint32_t>(std::max(0, RoundToSteps(walk.Finish())));
}

}  // namespace k7
