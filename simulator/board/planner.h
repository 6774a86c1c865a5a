// The motion queue: blocks, the speed at each corner between them, and the time each block takes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "board/trapezoid.h"
#include "common/clock.h"
#include "machine/geometry.h"

namespace k7sim {

struct MotionLimits {
  double accelMmPerSec2 = 500;  // 0.5 m/s^2
  double junctionDeviationMm = 0.05;
  std::size_t usableBlocks = 31;  // the board's queue has 32 places, one of which stays free
  TimeUs startDelayUs = 100'000;  // from the first block to its motion; none when the queue is full
};

// One straight move in the queue.
struct Block {
  Vec3 from{};
  Vec3 to{};
  double feedMmPerSec = 0;
  bool announced = false;    // the host is told when it begins (BX) and ends (EX)
  int link = 0;              // where its line came from
  std::uint64_t lineId = 0;  // which line made it
  std::string command;       // that line
  bool first = true;         // of the blocks that its line makes
  bool last = true;
  bool afterDrain = false;  // the queue had to be empty before it

  // Filled by the planner.
  double lengthMm = 0;
  double maxEntry = 0;  // mm/s, what the corner before it allows
  double entry = 0;     // mm/s, as planned so far
};

// Is told of each block by the planner. It must not push or flush within a call.
class BlockListener {
 public:
  virtual ~BlockListener() = default;
  virtual void OnBlockBegun(const Block& block, TimeUs nowUs) = 0;
  // `seconds`: how long the block took.
  virtual void OnBlockEnded(const Block& block, double seconds, TimeUs nowUs) = 0;
  // A move that moves nothing has had its turn.
  virtual void OnNothingMoved(const Block&, TimeUs) {}
};

class Planner {
 public:
  Planner(const MotionLimits& limits, BlockListener& listener);

  bool IsIdle() const { return blocks_.empty(); }
  bool IsFull() const { return blocks_.size() >= limits_.usableBlocks; }
  std::size_t Size() const { return blocks_.size(); }

  // Adds a block with a length above 0 and a feed above 0. Must not be called while full.
  void Push(Block block, TimeUs nowUs);

  // Adds a move that moves nothing. It takes no place in the queue and no time: the listener is
  // told of it once all blocks before it have ended, now when there are none.
  void PushNothing(const Block& block, TimeUs nowUs);

  // Begins and ends all blocks that are due up to and including `nowUs`, in time order.
  void Advance(TimeUs nowUs);

  // When the next block begins or ends; kNever while empty.
  TimeUs NextEvent() const;

  // Where the head is within the running block; `resting` when none runs.
  Vec3 PositionAt(TimeUs nowUs, const Vec3& resting) const;

  // Feed hold: the head stands at once where it is, and goes on from there. What is pushed
  // meanwhile waits.
  void Hold(TimeUs nowUs);
  void Resume(TimeUs nowUs);
  bool IsHeld() const { return heldUs_ != kNever; }

  // Feed of the running block; 0 when none runs.
  double FeedMmPerSec() const { return running_ && !IsHeld() ? blocks_.front().feedMmPerSec : 0; }

  // Throws every block away, the running one too, without telling the listener, and ends a hold.
  // The result is how many lines have lost their last block.
  std::size_t Flush();

 private:
  // A move that moves nothing, and how many blocks must have ended before its turn.
  struct Nothing {
    Block block;
    std::uint64_t turn = 0;
  };

  void Begin(TimeUs nowUs);
  void PassNothings(TimeUs nowUs);
  void Replan();

  MotionLimits limits_;
  BlockListener& listener_;
  std::deque<Block> blocks_;      // front: running, or first to run
  std::deque<Nothing> nothings_;  // in the order of their turns
  std::uint64_t ended_ = 0;       // blocks that have ended
  bool running_ = false;
  Trapezoid profile_;  // of the running block, fixed when it began
  TimeUs beganUs_ = 0;
  TimeUs dueUs_ = kNever;   // end of the running block, or start of motion
  TimeUs heldUs_ = kNever;  // since when; kNever: not held
};

// Highest speed through the corner between two blocks, in mm/s. It is the speed at which an arc
// that misses the corner by the junction deviation needs the acceleration that the machine has.
double CornerSpeed(const Block& before, const Block& after, const MotionLimits& limits);

// Seconds from the first block to the end of the last, with a host that always has the next block
// ready.
double PlannedSeconds(const std::vector<Block>& blocks, const MotionLimits& limits);

}  // namespace k7sim
