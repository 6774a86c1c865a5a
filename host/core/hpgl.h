// Reads a plotter file: the HPGL commands IN, SP, PU, PD, PA and PR, as the strokes of a drawing.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace k7host {

// Plotter units in an inch (one is 0.025 mm).
inline constexpr double kPlotterUnitsPerInch = 1016.0;

// Largest coordinate, either sign, that a file may name or reach, in plotter units.
inline constexpr double kMaxPlotterUnits = 8388607.0;

// Largest pen number.
inline constexpr int kMaxPen = 255;

struct PlotterPoint {
  double x = 0.0;  // plotter units
  double y = 0.0;  // plotter units
};

// What one lowering of the pen draws. A single point is a dot: the pen went down and up again.
struct Stroke {
  int pen = 1;
  std::vector<PlotterPoint> points;  // never empty
};

// Where a file went wrong: 1-based line and column (in bytes) of the text that is at fault.
struct HpglError {
  int line = 0;
  int column = 0;
  std::string message;
};

struct HpglDrawing {
  std::vector<Stroke> strokes;     // in the order of the file; empty when there is an error
  std::optional<HpglError> error;  // the first error in the file
};

// Reads a whole file. It starts with the pen up at (0, 0), absolute, and pen 1 selected; IN returns
// to that. SP lifts the pen; with pen 0 (put away) nothing is drawn. Commands may be in either
// case and may follow each other without ";"; numbers may be separated by commas, blanks, line ends
// or their own sign. Any other command or character is an error. [any]
HpglDrawing ReadHpgl(std::string_view text);

// "file:line:column: message". [any]
std::string HpglErrorText(std::string_view file, const HpglError& error);

}  // namespace k7host
