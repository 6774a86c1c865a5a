// The plotter that the commands of a file move, and the file that it reads them from.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "drawing/drawing.h"
#include "drawing/hpgl/axes.h"
#include "drawing/hpgl/label.h"
#include "drawing/hpgl/text.h"
#include "drawing/pen.h"

namespace k7host {

// Why something is passed over, as the notice of it says.
inline constexpr std::string_view kHpglFill = "areas are not filled, only their outlines are cut";
inline constexpr std::string_view kHpglPage = "the table is the page";
inline constexpr std::string_view kHpglPlotter = "meant for the plotter itself";

// A function that finds a fault notes it and answers false. [any]
struct HpglPlotter {
  HpglPlotter(std::string_view file, double toleranceInches)
      : text(file), toleranceUnits(toleranceInches * kPlotterUnitsPerInch) {}

  // Notes a fault of the command being read.
  bool Fail(std::string message);

  // Reads the numbers of a command; more than `most` are a fault.
  bool NumbersUpTo(std::size_t most, std::string_view name);
  // One of them, or what it is when it is left out.
  double Value(std::size_t index, double otherwise = 0.0) const;

  // A place in user units; `relative`: as seen from where the pen stands.
  PlotterPoint User(double x, double y, bool relativeToPen) const;

  // Goes there, in user units or in plotter units on the table, drawing while the pen is down. `at`
  // is the place of a fault.
  bool Go(const PlotterPoint& user, std::size_t at);
  bool GoTable(const PlotterPoint& table, std::size_t at);

  // Called before anything is drawn: a second page is a fault.
  bool MayDraw();

  // Notes that the command being read is not engraved as it stands there.
  void Notice(std::string_view what, std::string_view why);

  HpglText text;
  double toleranceUnits;  // plotter units; how far the pieces of an arc may lie beside it
  Pen pen;
  HpglAxes axes;
  HpglLetters letters;
  bool relative = false;    // PR: coordinates count from where the pen stands
  bool pageEnded = false;   // something was drawn before it
  std::size_t command = 0;  // first byte of the command being read
  std::vector<DrawingNotice> notices;
};

}  // namespace k7host
