#include "board/arc.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace k7sim {
namespace {

constexpr double kChordErrorMm = 0.01;
constexpr double kMostChords = 5000;  // of arcs larger than any machine
constexpr double kSmallestMm = 1e-6;
constexpr double kTurn = 2 * std::numbers::pi;

}  // namespace

std::optional<Arc> Arc::Around(const Vec3& from, const Vec3& to, const Vec3& centre,
                               const ArcPlane& plane, bool clockwise) {
  Arc arc;
  arc.from_ = from;
  arc.to_ = to;
  arc.centre_ = centre;
  arc.plane_ = plane;
  const auto [a, b, along] = plane;
  arc.fromRadius_ = std::hypot(from[a] - centre[a], from[b] - centre[b]);
  arc.toRadius_ = std::hypot(to[a] - centre[a], to[b] - centre[b]);
  if (!(arc.fromRadius_ > kSmallestMm)) return std::nullopt;
  arc.fromAngle_ = std::atan2(from[b] - centre[b], from[a] - centre[a]);
  const bool turn = std::hypot(to[a] - from[a], to[b] - from[b]) < kSmallestMm;
  const double toAngle = turn ? arc.fromAngle_ : std::atan2(to[b] - centre[b], to[a] - centre[a]);
  arc.sweep_ = toAngle - arc.fromAngle_;
  if (clockwise && arc.sweep_ >= 0) arc.sweep_ -= kTurn;
  if (!clockwise && arc.sweep_ <= 0) arc.sweep_ += kTurn;
  const double radius = std::max(arc.fromRadius_, arc.toRadius_);
  // Angle of a chord whose middle is off the arc by the error that is allowed.
  const double step = 2 * std::acos(std::max(0.0, 1 - kChordErrorMm / radius));
  const double chords = std::ceil(std::abs(arc.sweep_) / step);
  arc.chords_ = chords > 1 ? static_cast<std::size_t>(std::min(chords, kMostChords)) : 1;
  return arc;
}

std::optional<Arc> Arc::WithRadius(const Vec3& from, const Vec3& to, double radius,
                                   const ArcPlane& plane, bool clockwise) {
  const auto [a, b, along] = plane;
  const double da = to[a] - from[a], db = to[b] - from[b];
  const double distance = std::hypot(da, db);
  if (!(distance > kSmallestMm)) return std::nullopt;
  // A radius too small to reach both ends counts as the smallest that does.
  const double offset = std::sqrt(std::max(0.0, radius * radius - distance * distance / 4));
  const double side = clockwise == (radius > 0) ? 1 : -1;  // 1: to the right of the way
  Vec3 centre = from;
  centre[a] = (from[a] + to[a]) / 2 + side * offset * db / distance;
  centre[b] = (from[b] + to[b]) / 2 - side * offset * da / distance;
  return Around(from, to, centre, plane, clockwise);
}

Vec3 Arc::End(std::size_t chord) const {
  if (chord + 1 >= chords_) return to_;
  const double done = static_cast<double>(chord + 1) / static_cast<double>(chords_);
  const double angle = fromAngle_ + sweep_ * done;
  const double radius = fromRadius_ + (toRadius_ - fromRadius_) * done;
  Vec3 point = Between(from_, to_, done);
  point[plane_[0]] = centre_[plane_[0]] + radius * std::cos(angle);
  point[plane_[1]] = centre_[plane_[1]] + radius * std::sin(angle);
  return point;
}

}  // namespace k7sim
