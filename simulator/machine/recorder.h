// What the tool did to the plate: strokes for the picture, distances, depths and mistakes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "common/clock.h"
#include "machine/mechanics.h"

namespace k7sim {

// A straight line over the plate, in inches from the table home.
struct Stroke {
  double x0 = 0;
  double y0 = 0;
  double x1 = 0;
  double y1 = 0;
  double depth = 0;  // inches into the plate; 0: travel above it
};

// Cuts are measured along the plate; all else the tool covers is travel.
struct Distances {
  double cutInches = 0;
  double travelInches = 0;
};

// What must not happen while a host works the machine. The names stand in the report.
enum class Mistake { MoveBeforeHoming, OutsideTable, OutsideTravel, DryPlunge, HomingFailed };
inline constexpr const char* kMistakeNames[] = {"moveBeforeHoming", "outsideTable", "outsideTravel",
                                                "dryPlunge", "homingFailed"};
inline constexpr std::size_t kMistakeKinds = 5;

// What cuts: a spindle whose depth is the axis's own, or an air head that is either down or up.
enum class ToolKind { Spindle, Air };

// A mistake and the line that made it.
struct MistakeRecord {
  Mistake kind{};
  std::string what;
  std::uint64_t line = 0;  // number of the line received, from 1
  TimeUs atUs = 0;         // machine time
  std::string command;     // the line
};

class Recorder {
 public:
  using MistakeListener = std::function<void(const MistakeRecord&)>;

  explicit Recorder(ToolKind tool) : tool_(tool) {}

  // Is called for each mistake.
  void SetListener(MistakeListener listener) { listener_ = std::move(listener); }

  // The line behind what comes next, and the machine time of it.
  void SetCause(std::uint64_t line, const std::string& command, TimeUs nowUs);

  // The head moves straight from `from` to `to`, in the board's coordinates, with the tool on or
  // off. Called before the mechanics are driven there. The distances are added to the total and,
  // unless it is null, to `job`.
  void AddMotion(const Vec3& from, const Vec3& to, const Mechanics& mechanics, bool toolOn,
                 Distances* job);

  void AddMistake(Mistake kind, const std::string& what);

  // Inches into the plate of a tool at this place; 0 or less above it.
  double DepthAt(const ToolPlace& place, const Mechanics& mechanics, bool toolOn) const;

  const std::vector<Stroke>& Strokes() const { return strokes_; }
  std::size_t MistakeCount(Mistake kind) const { return mistakes_[static_cast<std::size_t>(kind)]; }
  std::size_t MistakeTotal() const;
  // The first of them, up to a limit; the counts tell of the others.
  const std::vector<MistakeRecord>& FirstMistakes() const { return firstMistakes_; }
  const std::optional<MistakeRecord>& FirstMistake(Mistake kind) const {
    return firstOf_[static_cast<std::size_t>(kind)];
  }

  double CutInches() const { return total_.cutInches; }
  double TravelInches() const { return total_.travelInches; }
  ToolKind Tool() const { return tool_; }
  bool HasMoved() const { return hasMoved_; }
  bool HasCut() const { return hasCut_; }
  // Lines that cut along the plate, and moves straight down into it.
  std::size_t CutStrokes() const { return cutStrokes_; }
  std::size_t Plunges() const { return plunges_; }
  // Least distance above the plate at the ends of all moves; nothing when there never was a plate.
  const std::optional<double>& NearestInches() const { return nearest_; }
  double ShallowestInches() const { return shallowest_; }
  double DeepestInches() const { return deepest_; }

 private:
  void AddPiece(const ToolPlace& a, const ToolPlace& b, double depth, Distances* job);
  void NoteNearest(const ToolPlace& place, const Mechanics& mechanics);

  ToolKind tool_;
  MistakeListener listener_;
  MistakeRecord cause_;  // line, time and command of what comes next
  std::vector<Stroke> strokes_;
  std::size_t mistakes_[kMistakeKinds] = {};
  std::vector<MistakeRecord> firstMistakes_;
  std::optional<MistakeRecord> firstOf_[kMistakeKinds];
  Distances total_;
  bool hasMoved_ = false;
  bool hasCut_ = false;
  std::size_t cutStrokes_ = 0;
  std::uint64_t lastCutLine_ = 0;
  std::size_t plunges_ = 0;
  std::optional<double> nearest_;
  double shallowest_ = 0;
  double deepest_ = 0;
};

}  // namespace k7sim
