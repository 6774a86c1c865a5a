// Reads an SVG file as the strokes of a drawing.
#pragma once

#include <string_view>

#include "drawing/drawing.h"

namespace k7host {

// True for text that is to be read as SVG rather than as a plotter file: its first character, past
// a byte order mark and blanks, is "<". [any]
bool LooksLikeXml(std::string_view text);

// Reads a whole file. The lower left corner of the page is (0, 0); a page without a size ends at
// the lower edge of the drawing. 96 pixels are an inch. Every shape that is painted becomes its
// outline, in the colour of its stroke or, without one, of its fill; white is the material and is
// left out. The colours become the pens 1 to 16 in the order of the file. Curves become straight
// pieces within `toleranceInches`.
//
// Text that has not been converted to paths is an error, because the work would lack it. Images,
// clipping, masks, dashes and the like are passed over with a notice. [any]
Drawing ReadSvg(std::string_view text, double toleranceInches = kDefaultToleranceInches);

}  // namespace k7host
