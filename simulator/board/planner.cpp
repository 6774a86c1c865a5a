#include "board/planner.h"

#include <algorithm>
#include <cmath>

namespace k7sim {

double CornerSpeed(const Block& before, const Block& after, const MotionLimits& limits) {
  const double straight = std::min(before.feedMmPerSec, after.feedMmPerSec);
  const double lengths = before.lengthMm * after.lengthMm;
  if (lengths <= 0) return 0;
  const double cosTheta = -Dot(before.to - before.from, after.to - after.from) / lengths;
  if (cosTheta > 0.999999) return 0;          // straight back
  if (cosTheta < -0.999999) return straight;  // straight on
  const double sinHalf = std::sqrt((1 - cosTheta) / 2);
  const double corner =
      std::sqrt(limits.accelMmPerSec2 * limits.junctionDeviationMm * sinHalf / (1 - sinHalf));
  return std::min(straight, corner);
}

Planner::Planner(const MotionLimits& limits, BlockListener& listener)
    : limits_(limits), listener_(listener) {}

void Planner::Push(Block block, TimeUs nowUs) {
  block.lengthMm = Length(block.to - block.from);
  block.maxEntry = blocks_.empty() ? 0 : CornerSpeed(blocks_.back(), block, limits_);
  blocks_.push_back(block);
  Replan();
  if (running_) return;
  if (blocks_.size() == 1) dueUs_ = nowUs + limits_.startDelayUs;
  if (IsFull()) dueUs_ = std::min(dueUs_, nowUs);
}

void Planner::PushNothing(const Block& block, TimeUs nowUs) {
  nothings_.push_back({block, ended_ + blocks_.size()});
  PassNothings(nowUs);
}

void Planner::PassNothings(TimeUs nowUs) {
  while (!nothings_.empty() && nothings_.front().turn <= ended_) {
    const Block block = nothings_.front().block;
    nothings_.pop_front();
    listener_.OnNothingMoved(block, nowUs);
  }
}

void Planner::Replan() {
  const double a2 = 2 * limits_.accelMmPerSec2;
  // The running block keeps the exit speed it began with, and so the next one its entry speed.
  const std::size_t first = running_ ? 1 : 0;
  double exit = 0;
  for (std::size_t i = blocks_.size(); i-- > first;) {
    Block& block = blocks_[i];
    if (i == first) {
      block.entry = running_ ? profile_.exit : 0;
    } else {
      block.entry = std::min(block.maxEntry, std::sqrt(exit * exit + a2 * block.lengthMm));
    }
    exit = block.entry;
  }
  for (std::size_t i = first + 1; i < blocks_.size(); ++i) {
    const Block& before = blocks_[i - 1];
    const double reachable = std::sqrt(before.entry * before.entry + a2 * before.lengthMm);
    blocks_[i].entry = std::min(blocks_[i].entry, reachable);
  }
}

void Planner::Begin(TimeUs nowUs) {
  Block& block = blocks_.front();
  const double exit = blocks_.size() > 1 ? blocks_[1].entry : 0;
  profile_ = Trapezoid::Make(block.lengthMm, block.entry, block.feedMmPerSec, exit,
                             limits_.accelMmPerSec2);
  running_ = true;
  beganUs_ = nowUs;
  dueUs_ = nowUs + std::max<TimeUs>(1, UsFromSeconds(profile_.Seconds()));
  listener_.OnBlockBegun(block, nowUs);
}

void Planner::Advance(TimeUs nowUs) {
  while (!blocks_.empty() && !IsHeld() && dueUs_ <= nowUs) {
    const TimeUs at = dueUs_;
    if (running_) {
      const Block ended = blocks_.front();
      const double seconds = profile_.Seconds();
      blocks_.pop_front();
      ++ended_;
      running_ = false;
      dueUs_ = kNever;
      listener_.OnBlockEnded(ended, seconds, at);
      PassNothings(at);
      if (!blocks_.empty()) Begin(at);
    } else {
      Begin(at);
    }
  }
}

TimeUs Planner::NextEvent() const {
  return blocks_.empty() || IsHeld() ? kNever : dueUs_;
}

Vec3 Planner::PositionAt(TimeUs nowUs, const Vec3& resting) const {
  if (blocks_.empty() || !running_) return resting;
  const Block& block = blocks_.front();
  const TimeUs untilUs = std::min(nowUs, heldUs_);
  const double done = profile_.DistanceAfter(SecondsFromUs(untilUs - beganUs_));
  return Between(block.from, block.to, done / block.lengthMm);
}

void Planner::Hold(TimeUs nowUs) {
  if (!IsHeld()) heldUs_ = nowUs;
}

void Planner::Resume(TimeUs nowUs) {
  if (!IsHeld()) return;
  if (running_) {
    beganUs_ += nowUs - heldUs_;
    dueUs_ += nowUs - heldUs_;
  } else if (!blocks_.empty()) {
    dueUs_ = std::max(dueUs_, nowUs);
  }
  heldUs_ = kNever;
}

std::size_t Planner::Flush() {
  std::size_t lines = nothings_.size();
  for (const Block& block : blocks_) lines += block.last ? 1 : 0;
  blocks_.clear();
  nothings_.clear();
  running_ = false;
  dueUs_ = kNever;
  heldUs_ = kNever;
  return lines;
}

namespace {

class Stopwatch final : public BlockListener {
 public:
  void OnBlockBegun(const Block&, TimeUs) override {}
  void OnBlockEnded(const Block&, double, TimeUs nowUs) override { lastUs = nowUs; }
  TimeUs lastUs = 0;
};

}  // namespace

double PlannedSeconds(const std::vector<Block>& blocks, const MotionLimits& limits) {
  Stopwatch watch;
  Planner planner(limits, watch);
  TimeUs now = 0;
  for (const Block& block : blocks) {
    while (planner.IsFull() || (block.afterDrain && !planner.IsIdle())) {
      now = planner.NextEvent();
      planner.Advance(now);
    }
    planner.Push(block, now);
  }
  while (!planner.IsIdle()) planner.Advance(planner.NextEvent());
  return SecondsFromUs(watch.lastUs);
}

}  // namespace k7sim
