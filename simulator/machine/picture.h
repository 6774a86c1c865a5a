// The plate seen from above, as SVG text.
#pragma once

#include <string>
#include <vector>

#include "machine/mechanics.h"
#include "machine/recorder.h"

namespace k7sim {

// The corner of the plate that the table home is in. X runs to the right in both cases.
enum class HomeCorner { BottomLeft, TopLeft };

// Travel is drawn in thin grey lines; a cut is the wider and the darker the deeper it is. The same
// strokes give the same text, byte for byte.
std::string DrawPicture(const std::vector<Stroke>& strokes, const TableGeometry& table,
                        HomeCorner corner);

// How a cut is drawn: its width in inches, and its colour from light brown (shallow) to nearly
// black (the deepest).
double CutWidthInches(double depthInches);
std::string CutColour(double depthInches, double deepestInches);

}  // namespace k7sim
