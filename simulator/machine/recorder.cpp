#include "machine/recorder.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace k7sim {
namespace {

constexpr double kCutInches = 1e-5;       // what is shallower is the touch of a probe, not a cut
constexpr double kAirDepthInches = 0.01;  // depth at which the cuts of an air head are drawn
constexpr double kPieceInches = 0.1;      // distance between depths over a plate that is not level
constexpr double kEdgeInches = 1e-3;      // a cut this near to the edge of the plate is on it
constexpr std::size_t kFirstMistakes = 50;

}  // namespace

double Recorder::DepthAt(const ToolPlace& place, const Mechanics& mechanics, bool toolOn) const {
  if (tool_ == ToolKind::Air) return toolOn ? kAirDepthInches : 0;
  const auto surface = mechanics.PlateSurface().DepthAt(place.x, place.y);
  if (surface) return place.z - *surface;
  // Beside the plate the depth at its middle counts, so that a lowered tool is noticed there.
  const TableGeometry& table = mechanics.Geometry();
  const auto middle = mechanics.PlateSurface().DepthAt(table.size[0] / 2, table.size[1] / 2);
  return middle ? place.z - *middle : 0;
}

void Recorder::AddMotion(const Vec3& from, const Vec3& to, const Mechanics& mechanics, bool toolOn,
                         Distances* job) {
  const ToolPlace a = mechanics.PlaceAt(from);
  const ToolPlace b = mechanics.PlaceAt(to);
  hasMoved_ = true;
  NoteNearest(a, mechanics);
  NoteNearest(b, mechanics);
  const double flat = std::hypot(b.x - a.x, b.y - a.y);
  const double depthA = DepthAt(a, mechanics, toolOn);
  const double depthB = DepthAt(b, mechanics, toolOn);
  if (tool_ == ToolKind::Spindle && depthB > kCutInches && depthB > depthA + kCutInches &&
      flat < kCutInches && !toolOn) {
    AddMistake(Mistake::DryPlunge, "plunge with the spindle off");
  }
  const bool cuts = depthA > kCutInches || depthB > kCutInches;
  if (depthB > kCutInches && depthB > depthA && flat < kCutInches) ++plunges_;
  const TableGeometry& table = mechanics.Geometry();
  const auto beside = [&](const ToolPlace& p) {
    return p.x < -kEdgeInches || p.x > table.size[0] + kEdgeInches || p.y < -kEdgeInches ||
           p.y > table.size[1] + kEdgeInches;
  };
  const bool round = mechanics.IsRound(0) || mechanics.IsRound(1);
  if (cuts && !round && (beside(a) || beside(b))) {
    char text[96];
    std::snprintf(text, sizeof text, "cut beside the table, to X %.4f Y %.4f in", b.x, b.y);
    AddMistake(Mistake::OutsideTable, text);
  }
  const double pieces = mechanics.PlateSurface().IsLevel() || tool_ == ToolKind::Air
                            ? 1
                            : std::clamp(std::ceil(flat / kPieceInches), 1.0, 1000.0);
  const double cutBefore = total_.cutInches;
  for (int i = 0; i < static_cast<int>(pieces); ++i) {
    const ToolPlace p = mechanics.PlaceAt(Between(from, to, i / pieces));
    const ToolPlace q = mechanics.PlaceAt(Between(from, to, (i + 1) / pieces));
    const ToolPlace middle = {(p.x + q.x) / 2, (p.y + q.y) / 2, (p.z + q.z) / 2};
    const double deepest = std::max({DepthAt(p, mechanics, toolOn), DepthAt(q, mechanics, toolOn),
                                     DepthAt(middle, mechanics, toolOn)});
    AddPiece(p, q, deepest, job);
  }
  // An arc is many moves of one line, and one stroke.
  if (total_.cutInches > cutBefore && (cause_.line == 0 || cause_.line != lastCutLine_)) {
    ++cutStrokes_;
    lastCutLine_ = cause_.line;
  }
}

void Recorder::AddPiece(const ToolPlace& a, const ToolPlace& b, double depth, Distances* job) {
  const double flat = std::hypot(b.x - a.x, b.y - a.y);
  const double length = std::hypot(flat, b.z - a.z);
  const bool cut = depth > kCutInches;
  if (cut) {
    shallowest_ = hasCut_ ? std::min(shallowest_, depth) : depth;
    deepest_ = hasCut_ ? std::max(deepest_, depth) : depth;
    hasCut_ = true;
  }
  for (Distances* distances : {&total_, job}) {
    if (!distances) continue;
    if (cut && flat > 0) {
      distances->cutInches += flat;
    } else {
      distances->travelInches += length;
    }
  }
  if (flat > 0 || cut) strokes_.push_back({a.x, a.y, b.x, b.y, cut ? depth : 0});
}

void Recorder::SetCause(std::uint64_t line, const std::string& command, TimeUs nowUs) {
  cause_.line = line;
  cause_.command = command;
  cause_.atUs = nowUs;
}

void Recorder::AddMistake(Mistake kind, const std::string& what) {
  ++mistakes_[static_cast<std::size_t>(kind)];
  MistakeRecord mistake = cause_;
  mistake.kind = kind;
  mistake.what = what;
  if (firstMistakes_.size() < kFirstMistakes) firstMistakes_.push_back(mistake);
  auto& first = firstOf_[static_cast<std::size_t>(kind)];
  if (!first) first = mistake;
  if (listener_) listener_(mistake);
}

void Recorder::NoteNearest(const ToolPlace& place, const Mechanics& mechanics) {
  const auto surface = mechanics.PlateSurface().DepthAt(place.x, place.y);
  if (!surface) return;
  const double above = *surface - place.z;
  nearest_ = nearest_ ? std::min(*nearest_, above) : above;
}

std::size_t Recorder::MistakeTotal() const {
  std::size_t total = 0;
  for (const std::size_t count : mistakes_) total += count;
  return total;
}

}  // namespace k7sim
