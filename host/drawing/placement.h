// Where on the table a drawing goes, and how large.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "drawing/drawing.h"

namespace k7host {

// Which point of a drawing comes to the table home, before the offset.
enum class Origin {
  File,  // (0, 0) of the file
  LowerLeft,
  LowerRight,
  UpperLeft,
  UpperRight,
  Center,
};

// "file", "lower-left", "lower-right", "upper-left", "upper-right", "center"; none for another
// word. [any]
std::optional<Origin> OriginNamed(std::string_view name);

struct Placement {
  double scale = 1.0;
  double rotateDegrees = 0.0;  // counter-clockwise
  Origin origin = Origin::File;
  double offsetXInches = 0.0;
  double offsetYInches = 0.0;
};

// Scales and rotates about (0, 0), then moves so that the origin comes to the table home, then by
// the offset. A placement that changes nothing leaves every number as it is. [any]
void Place(std::vector<Stroke>& strokes, const Placement& placement);

}  // namespace k7host
