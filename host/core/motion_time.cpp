// The model of the motion queue and what a job puts into it.
#include "core/motion_time.h"

#include <algorithm>
#include <cmath>

namespace k7host {
namespace {

// Of the machine: 0.5 m/s^2, corners rounded by 0.05 mm at most, room for 31 moves, and a tenth of
// a second in which it waits for more moves before it begins with fewer.
constexpr double kAcceleration = 500.0 / 25.4;
constexpr double kJunctionDeviation = 0.05 / 25.4;
constexpr std::size_t kRoom = 31;
constexpr double kStartSeconds = 0.1;

constexpr double kSpindleSeconds = 0.75;  // that the driver waits for a spindle

double Reachable(double speed, double inches) {
  return std::sqrt(speed * speed + 2.0 * kAcceleration * inches);
}

double Seconds(double length, double entry, double top, double exit) {
  const double ramps = (2.0 * top * top - entry * entry - exit * exit) / (2.0 * kAcceleration);
  double peak = top;
  double cruise = length - ramps;
  if (cruise < 0.0) {
    cruise = 0.0;
    peak = std::sqrt(kAcceleration * length + (entry * entry + exit * exit) / 2.0);
    peak = std::max({peak, entry, exit});
  }
  return (2.0 * peak - entry - exit) / kAcceleration + cruise / peak;
}

}  // namespace

double MotionQueue::Corner(const Block& before, const Block& after) {
  const double straight = std::min(before.speed, after.speed);
  double cosine = 0.0;
  for (int axis = 0; axis < 3; ++axis) cosine += before.way[axis] * after.way[axis];
  cosine /= before.length * after.length;
  if (cosine < -0.999999) return 0.0;
  if (cosine > 0.999999) return straight;
  const double sineHalf = std::sqrt((1.0 + cosine) / 2.0);
  return std::min(straight,
                  std::sqrt(kAcceleration * kJunctionDeviation * sineHalf / (1.0 - sineHalf)));
}

void MotionQueue::Replan() {
  const std::size_t first = running_ ? 1 : 0;
  double exit = 0.0;
  for (std::size_t i = blocks_.size(); i-- > first;) {
    Block& block = blocks_[i];
    block.entry = i == first ? (running_ ? exit_ : 0.0)
                             : std::min(block.highestEntry, Reachable(exit, block.length));
    exit = block.entry;
  }
  for (std::size_t i = first + 1; i < blocks_.size(); ++i) {
    blocks_[i].entry =
        std::min(blocks_[i].entry, Reachable(blocks_[i - 1].entry, blocks_[i - 1].length));
  }
}

// Sets the first block going; its end is fixed by what is known of those behind it.
void MotionQueue::Begin() {
  const Block& block = blocks_.front();
  exit_ = blocks_.size() > 1 ? blocks_[1].entry : 0.0;
  seconds_ += k7host::Seconds(block.length, block.entry, block.speed, exit_);
  running_ = true;
}

void MotionQueue::Go(double x, double y, double z, double inchesPerSecond) {
  const double to[3] = {x, y, z};
  Block block;
  for (int axis = 0; axis < 3; ++axis) {
    block.way[axis] = to[axis] - at_[axis];
    at_[axis] = to[axis];
  }
  block.length = std::hypot(block.way[0], block.way[1], block.way[2]);
  block.speed = inchesPerSecond;
  if (!(block.length > 1e-9 && inchesPerSecond > 0.0)) return;
  if (blocks_.size() == kRoom) {
    blocks_.erase(blocks_.begin());
    Begin();
  }
  if (!blocks_.empty()) block.highestEntry = Corner(blocks_.back(), block);
  blocks_.push_back(block);
  Replan();
  if (!running_ && blocks_.size() == kRoom) Begin();
}

void MotionQueue::Drain() {
  if (blocks_.empty()) return;
  if (!running_) {
    seconds_ += startSeconds_;
    Begin();
  }
  for (blocks_.erase(blocks_.begin()); !blocks_.empty(); blocks_.erase(blocks_.begin())) Begin();
  running_ = false;
}

void MotionQueue::Wait(double seconds) {
  Drain();
  seconds_ += seconds;
}

double RunSeconds(const JobPlan& plan, const Table& table, const JobSpeeds& speeds,
                  bool endsAtTableHome) {
  MotionQueue queue(0.0);
  MoveKind last = MoveKind::Travel;
  for (const Move& move : plan.moves) {
    if (move.kind != last || move.kind == MoveKind::Plunge) queue.Drain();
    last = move.kind;
    if (move.kind == MoveKind::Plunge) continue;
    queue.Go(move.xSteps / table.xStepsPerInch, move.ySteps / table.yStepsPerInch, 0.0,
             move.kind == MoveKind::Travel ? speeds.travel : speeds.engrave);
  }
  queue.Drain();
  // The driver counts a travel at the end of the drawing at the engraving speed.
  if (endsAtTableHome) queue.Go(0.0, 0.0, 0.0, speeds.engrave);
  queue.Drain();
  return queue.Seconds();
}

namespace {

// Puts into the queue what the driver sends for the operations of a job.
class Job {
 public:
  Job(const Table& table, const JobSpeeds& speeds, double cutSpeed, const HeadPlace& start)
      : table_(table), speeds_(speeds), cutSpeed_(cutSpeed) {
    z_ = start.z;
    queue_.Go(start.x, start.y, start.z, speeds.travel);  // to be there, which takes no time
    queue_.Drain();
    before_ = queue_.Seconds();
  }

  // The next pass begins only when the machine has carried out the one before.
  void StartPass(double depthInches, const Move& first) {
    queue_.Drain();
    depth_ = depthInches;
    if (down_ && IsAt(first)) Plunge();
  }

  void Carry(const Move& move) {
    switch (move.kind) {
      case MoveKind::Travel:
        return Travel(move);
      case MoveKind::Plunge:
        if (!down_) Plunge();
        return;
      case MoveKind::Cut:
        if (!down_) Plunge();
        return Go(move, cutSpeed_);
    }
  }

  void Travel(const Move& move) {
    if (IsAt(move) && moved_) return;
    moved_ = true;
    if (down_) Vertical(-speeds_.liftInches, speeds_.cutterUp);
    down_ = false;
    Go(move, speeds_.travel);
  }

  JobSeconds End() {
    Travel({});
    queue_.Drain();
    if (spindleOn_) SpinFor(kSpindleSeconds);
    result_.all = queue_.Seconds() - before_;
    return result_;
  }

 private:
  bool IsAt(const Move& move) const { return move.xSteps == xSteps_ && move.ySteps == ySteps_; }

  void Go(const Move& move, double speed) {
    xSteps_ = move.xSteps;
    ySteps_ = move.ySteps;
    x_ = move.xSteps / table_.xStepsPerInch;
    y_ = move.ySteps / table_.yStepsPerInch;
    queue_.Go(x_, y_, z_, speed);
  }

  void Vertical(double z, double speed) {
    z_ = z;
    queue_.Go(x_, y_, z_, speed);
  }

  void Plunge() {
    Vertical(depth_, speeds_.cutterDown);
    down_ = true;
    if (speeds_.dwellSeconds > 0.0) {
      queue_.Wait(speeds_.dwellSeconds);
      result_.dwells += speeds_.dwellSeconds;
    }
    if (speeds_.spindle && !spindleOn_) {
      spindleOn_ = true;
      SpinFor(kSpindleSeconds);
    }
  }

  void SpinFor(double seconds) {
    queue_.Wait(seconds);
    result_.spindle += seconds;
  }

  const Table& table_;
  const JobSpeeds& speeds_;
  const double cutSpeed_;
  MotionQueue queue_{kStartSeconds};
  double before_ = 0.0;
  double x_ = 0.0;  // inches
  double y_ = 0.0;
  double z_ = 0.0;
  std::uint32_t xSteps_ = 0;
  std::uint32_t ySteps_ = 0;
  double depth_ = 0.0;
  bool moved_ = false;  // until then the head stands where the job has begun
  bool down_ = false;
  bool spindleOn_ = false;
  JobSeconds result_;
};

}  // namespace

JobSeconds WholeJobSeconds(const JobPlan& plan, const Table& table, const JobSpeeds& speeds,
                           std::uint32_t passes, bool gridRun, const HeadPlace& start) {
  if (plan.moves.empty() || speeds.passDepthsInches.empty()) return {};
  Job job(table, speeds, gridRun ? speeds.grid : speeds.engrave, start);
  for (std::uint32_t pass = 0; pass < passes; ++pass) {
    const std::size_t last = speeds.passDepthsInches.size() - 1;
    job.StartPass(speeds.passDepthsInches[std::min<std::size_t>(pass, last)], plan.moves[0]);
    for (const Move& move : plan.moves) job.Carry(move);
  }
  return job.End();
}

}  // namespace k7host
