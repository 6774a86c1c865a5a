// The plate from above, as an SVG file.
#pragma once

#include <string>
#include <vector>

#include "machine/mechanics.h"
#include "machine/recorder.h"

namespace k7sim {

// Which corner of the picture the table home is in. X runs to the right in both.
enum class HomeCorner { BottomLeft, TopLeft };

// Traverses are thin and grey, cuts dark: the deeper, the wider and the darker. The same strokes
// give the same text, byte for byte.
std::string DrawPicture(const std::vector<Stroke>& strokes, const TableGeometry& table,
                        HomeCorner corner);

// How a cut is drawn: width in inches and a grey-brown from light (shallow) to nearly black.
double CutWidthInches(double depthInches);
std::string CutColour(double depthInches, double deepestInches);

}  // namespace k7sim
