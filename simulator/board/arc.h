// Arcs as the short straight chords that the motion queue takes.
#pragma once

#include <array>
#include <cstddef>
#include <optional>

#include "machine/geometry.h"

namespace k7sim {

// The plane of an arc: its axes in the order that counts as anticlockwise, then the axis that it is
// wound around.
using ArcPlane = std::array<std::size_t, 3>;
inline constexpr ArcPlane kPlaneXy = {0, 1, 2};
inline constexpr ArcPlane kPlaneZx = {2, 0, 1};
inline constexpr ArcPlane kPlaneYz = {1, 2, 0};

// An arc from where the head is to `to`, a full turn when both are one place. Along the axis of the
// winding it climbs evenly; a radius that differs at its ends changes evenly.
class Arc {
 public:
  // Around a centre. Nothing when the head stands in the centre.
  static std::optional<Arc> Around(const Vec3& from, const Vec3& to, const Vec3& centre,
                                   const ArcPlane& plane, bool clockwise);
  // With a radius in mm, the longer way round when it is below 0. Nothing when the ends are one
  // place.
  static std::optional<Arc> WithRadius(const Vec3& from, const Vec3& to, double radius,
                                       const ArcPlane& plane, bool clockwise);

  // At least 1, and so many that no chord is off the arc by more than a hundredth of a millimetre.
  std::size_t Chords() const { return chords_; }
  // End of a chord, counted from 0; the last one ends at `to` to the bit.
  Vec3 End(std::size_t chord) const;

 private:
  Vec3 from_{};
  Vec3 to_{};
  Vec3 centre_{};
  ArcPlane plane_ = kPlaneXy;
  double fromAngle_ = 0;
  double sweep_ = 0;  // radians, below 0 clockwise
  double fromRadius_ = 0;
  double toRadius_ = 0;
  std::size_t chords_ = 1;
};

}  // namespace k7sim
