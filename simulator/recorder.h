// What the machine did: strokes for the picture, jobs with their times, distances and mistakes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "simulator/clock.h"
#include "simulator/mechanics.h"
#include "simulator/planner.h"

namespace k7sim {

// A straight line over the plate, in inches from the table home.
struct Stroke {
  double x0 = 0;
  double y0 = 0;
  double x1 = 0;
  double y1 = 0;
  double depth = 0;  // inches into the work; 0 or less: a traverse above it
};

// Distances in inches, times in machine seconds.
struct JobRecord {
  TimeUs startUs = 0;
  double simulatedSeconds = 0;  // from the start of the job to its last block's end, as it ran
  double plannedSeconds = 0;    // the same blocks with a host that is never late
  double motionSeconds = 0;     // sum of the blocks
  std::size_t blocks = 0;
  double cutInches = 0;
  double travelInches = 0;
  bool ended = false;  // the host has closed it
};

enum class Mistake { MoveBeforeHoming, OutsideTable, OutsideTravel, DryPlunge, HomingFailed };
inline constexpr const char* kMistakeNames[] = {"moveBeforeHoming", "outsideTable", "outsideTravel",
                                                "dryPlunge", "homingFailed"};
inline constexpr std::size_t kMistakeKinds = 5;

// What cuts: a spindle whose depth is the axis's own, or an air head that is either down or up.
enum class ToolKind { Spindle, Air };

class Recorder {
 public:
  Recorder(const MotionLimits& limits, ToolKind tool) : limits_(limits), tool_(tool) {}

  // A job starts; one that is still open ends.
  void BeginJob(TimeUs nowUs);
  void EndJob();

  // The head went straight from `from` to `to` (controller's coordinates, before the mechanics
  // were driven on), with the tool on or off at the end of the move.
  void AddMotion(const Vec3& from, const Vec3& to, const Mechanics& mechanics, bool toolOn);

  // A block has ended: its share of the job.
  void AddBlock(const Block& block, double seconds, TimeUs nowUs);

  void AddMistake(Mistake kind, const std::string& what);

  const std::vector<Stroke>& Strokes() const { return strokes_; }
  const std::vector<JobRecord>& Jobs() const { return jobs_; }
  std::size_t MistakeCount(Mistake kind) const { return mistakes_[static_cast<std::size_t>(kind)]; }
  std::size_t MistakeTotal() const;
  const std::vector<std::string>& MistakeTexts() const { return mistakeTexts_; }

  std::size_t Blocks() const { return blocks_; }
  double CutInches() const { return cutInches_; }
  double TravelInches() const { return travelInches_; }
  bool HasCut() const { return hasCut_; }
  double ShallowestInches() const { return shallowest_; }
  double DeepestInches() const { return deepest_; }

  // Fills the planned time of the last job; the others have theirs since they ended.
  void Settle();

 private:
  void AddPiece(const ToolPlace& a, const ToolPlace& b, double depth);
  double DepthAt(const ToolPlace& place, const Mechanics& mechanics, bool toolOn) const;

  MotionLimits limits_;
  ToolKind tool_;
  std::vector<Stroke> strokes_;
  std::vector<JobRecord> jobs_;
  std::vector<Block> jobBlocks_;  // of the job that is open
  bool jobOpen_ = false;
  std::size_t mistakes_[kMistakeKinds] = {};
  std::vector<std::string> mistakeTexts_;
  std::size_t blocks_ = 0;
  double cutInches_ = 0;
  double travelInches_ = 0;
  bool hasCut_ = false;
  double shallowest_ = 0;
  double deepest_ = 0;
};

}  // namespace k7sim
