// What the tool did to the plate: strokes for the picture, distances, depths and mistakes.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

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

class Recorder {
 public:
  explicit Recorder(ToolKind tool) : tool_(tool) {}

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
  const std::vector<std::string>& MistakeTexts() const { return mistakeTexts_; }

  double CutInches() const { return total_.cutInches; }
  double TravelInches() const { return total_.travelInches; }
  bool HasCut() const { return hasCut_; }
  double ShallowestInches() const { return shallowest_; }
  double DeepestInches() const { return deepest_; }

 private:
  void AddPiece(const ToolPlace& a, const ToolPlace& b, double depth, Distances* job);
  ToolKind tool_;
  std::vector<Stroke> strokes_;
  std::size_t mistakes_[kMistakeKinds] = {};
  std::vector<std::string> mistakeTexts_;
  Distances total_;
  bool hasCut_ = false;
  double shallowest_ = 0;
  double deepest_ = 0;
};

}  // namespace k7sim
