// A drawing as every reader of files gives it: strokes in plotter units, what was passed over, and
// the first error.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace k7host {

// Plotter units in an inch (one is 0.025 mm) and in a centimetre.
inline constexpr double kPlotterUnitsPerInch = 1016.0;
inline constexpr double kPlotterUnitsPerCm = 400.0;

// Largest coordinate, either sign, that a file may name or reach, in plotter units.
inline constexpr double kMaxPlotterUnits = 8388607.0;

// Largest pen number.
inline constexpr int kMaxPen = 255;

// Most points of all strokes together: a small file must not be able to fill the memory.
inline constexpr std::size_t kMostPoints = 4'000'000;

// How far the straight pieces of a curve may lie beside it, unless the user says otherwise.
inline constexpr double kDefaultToleranceInches = 0.001;

struct PlotterPoint {
  double x = 0.0;  // plotter units
  double y = 0.0;  // plotter units
};

// What one lowering of the pen draws. A single point is a dot: the pen went down and up again.
struct Stroke {
  int pen = 1;
  std::vector<PlotterPoint> points;  // never empty
};

// The colour of a pen that the file names.
struct PenColour {
  int pen = 1;
  std::uint32_t rgb = 0;  // 0xRRGGBB
};

// Where a file went wrong: 1-based line and column (in bytes) of the text that is at fault.
struct DrawingError {
  int line = 0;
  int column = 0;
  std::string message;
};

// Something in the file that is not engraved, or not as it stands there.
struct DrawingNotice {
  std::string what;         // the command or element
  std::string why;          // the consequence for the work
  std::uint32_t count = 0;  // how often
  int line = 0;             // of the first, 1-based
  int column = 0;
};

struct Drawing {
  std::vector<Stroke> strokes;         // in the order of the file; empty when there is an error
  std::vector<PenColour> colours;      // of the pens, when the file knows colours
  std::vector<DrawingNotice> notices;  // each `what` once, in the order of the file
  std::optional<DrawingError> error;   // the first error in the file
};

// "file:line:column: message". [any]
std::string DrawingErrorText(std::string_view file, const DrawingError& error);

// "2:4 VS passed over (3 times): reason". [any]
std::string NoticeText(const DrawingNotice& notice);

// Counts something passed over that a notice already tells of; false when there is none. [any]
bool CountAgain(std::vector<DrawingNotice>& notices, std::string_view what);

// Line and column of byte `at` of `text`; line ends are "\n". [any]
struct TextPlace {
  int line = 1;
  int column = 1;
};
TextPlace PlaceInText(std::string_view text, std::size_t at);

}  // namespace k7host
