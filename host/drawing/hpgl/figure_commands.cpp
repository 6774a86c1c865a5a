// Arcs, and outlines of circles, wedges and rectangles.
#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>

#include "drawing/curve.h"
#include "drawing/hpgl/commands.h"

namespace k7host {
namespace {

// Chord angles that plotters take, degrees.
constexpr double kFinestChord = 0.36;
constexpr double kCoarsestChord = 180.0;

// Pieces of an arc: by the chord angle of the file, which may want a polygon, or by tolerance.
int PiecesOf(HpglPlotter& plotter, double radius, double sweepDegrees, const HpglNumber* chord) {
  if (chord == nullptr)
    return ArcPieces(radius * plotter.axes.UnitSize(), sweepDegrees, plotter.toleranceUnits);
  const double angle = std::clamp(std::fabs(chord->value), kFinestChord, kCoarsestChord);
  return std::max(1, static_cast<int>(std::ceil(std::fabs(sweepDegrees) / angle - 1e-9)));
}

PlotterPoint OnCircle(const PlotterPoint& center, double radius, double degrees) {
  const double angle = degrees * std::numbers::pi / 180.0;
  return {center.x + radius * std::cos(angle), center.y + radius * std::sin(angle)};
}

// From the point at `startDegrees` on; all in user units.
bool Arc(HpglPlotter& plotter, const PlotterPoint& center, double radius, double startDegrees,
         double sweepDegrees, const HpglNumber* chord) {
  const int pieces = PiecesOf(plotter, radius, sweepDegrees, chord);
  for (int i = 1; i <= pieces; ++i) {
    if (!plotter.Go(OnCircle(center, radius, startDegrees + sweepDegrees * i / pieces),
                    plotter.command))
      return false;
  }
  return true;
}

const HpglNumber* Chord(HpglPlotter& plotter, std::size_t index) {
  return index < plotter.text.Numbers().size() ? &plotter.text.Numbers()[index] : nullptr;
}

// A figure that lowers the pen by itself and then leaves it where and as it was.
template <class Draw>
bool Figure(HpglPlotter& plotter, const Draw& draw) {
  const PlotterPoint start = plotter.pen.Here();
  plotter.pen.Suspend();
  if (!draw(plotter.axes.FromTable(start))) return false;
  plotter.pen.Lift();
  if (!plotter.GoTable(start, plotter.command)) return false;
  plotter.pen.Resume();
  return true;
}

// AA, AR: center, angle, chord angle.
bool ArcAround(HpglPlotter& plotter, bool relative) {
  if (!plotter.NumbersUpTo(4, relative ? "AR" : "AA")) return false;
  if (plotter.text.Numbers().size() < 3)
    return plotter.Fail("an arc takes its center and its angle");
  const double sweep = plotter.Value(2);
  if (std::fabs(sweep) > 360.0) {
    return plotter.text.Fail(plotter.text.Numbers()[2].at,
                             "the angle of an arc is at most 360 degrees");
  }
  const PlotterPoint center = plotter.User(plotter.Value(0), plotter.Value(1), relative);
  const PlotterPoint here = plotter.axes.FromTable(plotter.pen.Here());
  const double radius = std::hypot(here.x - center.x, here.y - center.y);
  const double start = std::atan2(here.y - center.y, here.x - center.x) * 180.0 / std::numbers::pi;
  return Arc(plotter, center, radius, start, sweep, Chord(plotter, 3));
}

bool ArcAbsolute(HpglPlotter& plotter) {
  return ArcAround(plotter, false);
}
bool ArcRelative(HpglPlotter& plotter) {
  return ArcAround(plotter, true);
}

// CI: the pen comes back to the center, down if it was down. Plotters leave a dot at the
// center then, and files that do not want it lift the pen before.
bool Circle(HpglPlotter& plotter) {
  if (!plotter.NumbersUpTo(2, "CI") || !plotter.MayDraw()) return false;
  if (plotter.text.Numbers().empty()) return plotter.Fail("CI takes a radius");
  const double radius = plotter.Value(0);
  return Figure(plotter, [&](const PlotterPoint& center) {
    if (!plotter.Go(OnCircle(center, radius, 0.0), plotter.command)) return false;
    plotter.pen.Lower();
    return Arc(plotter, center, radius, 0.0, 360.0, Chord(plotter, 1));
  });
}

// EW: the outline of a wedge: radius, start, sweep, chord angle.
bool Wedge(HpglPlotter& plotter) {
  if (!plotter.NumbersUpTo(4, "EW") || !plotter.MayDraw()) return false;
  if (plotter.text.Numbers().size() < 3) return plotter.Fail("EW takes a radius and two angles");
  if (std::fabs(plotter.Value(1)) > 360.0 || std::fabs(plotter.Value(2)) > 360.0) {
    return plotter.Fail("the angles of a wedge are at most 360 degrees");
  }
  return Figure(plotter, [&](const PlotterPoint& center) {
    plotter.pen.Lower();
    return plotter.Go(OnCircle(center, plotter.Value(0), plotter.Value(1)), plotter.command) &&
           Arc(plotter, center, plotter.Value(0), plotter.Value(1), plotter.Value(2),
               Chord(plotter, 3)) &&
           plotter.Go(center, plotter.command);
  });
}

bool Rectangle(HpglPlotter& plotter, bool relative, std::string_view name) {
  if (!plotter.NumbersUpTo(2, name) || !plotter.MayDraw()) return false;
  if (plotter.text.Numbers().size() != 2) {
    return plotter.Fail(std::string(name) + " takes the opposite corner");
  }
  const PlotterPoint corner = plotter.User(plotter.Value(0), plotter.Value(1), relative);
  return Figure(plotter, [&](const PlotterPoint& start) {
    plotter.pen.Lower();
    return plotter.Go({corner.x, start.y}, plotter.command) &&
           plotter.Go(corner, plotter.command) &&
           plotter.Go({start.x, corner.y}, plotter.command) && plotter.Go(start, plotter.command);
  });
}

bool EdgeRectangle(HpglPlotter& plotter) {
  return Rectangle(plotter, false, "EA");
}
bool EdgeRectangleRelative(HpglPlotter& plotter) {
  return Rectangle(plotter, true, "ER");
}
bool FillRectangle(HpglPlotter& plotter) {
  plotter.Notice("RA", kHpglFill);
  return Rectangle(plotter, false, "RA");
}
bool FillRectangleRelative(HpglPlotter& plotter) {
  plotter.Notice("RR", kHpglFill);
  return Rectangle(plotter, true, "RR");
}

constexpr HpglCommand kCommands[] = {
    {"AA", &ArcAbsolute},   {"AR", &ArcRelative},           {"CI", &Circle},
    {"EW", &Wedge},         {"EA", &EdgeRectangle},         {"ER", &EdgeRectangleRelative},
    {"RA", &FillRectangle}, {"RR", &FillRectangleRelative},
};

}  // namespace

std::span<const HpglCommand> HpglFigureCommands() {
  return kCommands;
}

}  // namespace k7host
