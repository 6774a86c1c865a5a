// Reads a plotter file (HPGL) as the strokes of a drawing.
#pragma once

#include <string_view>

#include "drawing/drawing.h"

namespace k7host {

// Reads a whole file. It starts with the pen up at (0, 0), absolute, without scaling, and pen 1
// selected; IN returns to that. SP lifts the pen; with pen 0 (put away) nothing is drawn. Commands
// may be in either case and may follow each other without ";"; numbers may be separated by commas,
// blanks, line ends or their own sign.
//
// Carried out: IN DF SP PU PD PA PR PE, AA AR CI EW, EA ER RA RR, LB DT SI DI, IP SC RO.
// Passed over with a notice, because they do not move the pen: speeds, forces, pen widths, line and
// fill types, sizes of the plot, requests for output, the codes that switch a plotter on and off.
// Anything else is an error, because strokes would be missing or in the wrong place.
//
// An arc with no chord angle of its own becomes straight pieces within `toleranceInches`. [any]
Drawing ReadHpgl(std::string_view text, double toleranceInches = kDefaultToleranceInches);

}  // namespace k7host
