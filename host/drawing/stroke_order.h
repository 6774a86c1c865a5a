// The order in which strokes are cut.
#pragma once

#include <vector>

#include "drawing/drawing.h"

namespace k7host {

struct TravelSaved {
  double beforeInches = 0.0;  // from the table home through the drawing and back, cutter up
  double afterInches = 0.0;
};

// Puts the strokes of each pen, pens in the order in which they come, so that the nearest end comes
// next, and turns strokes around where that end is their last point. An order that would not be
// shorter is not taken. [any]
TravelSaved OptimiseOrder(std::vector<Stroke>& strokes);

}  // namespace k7host
