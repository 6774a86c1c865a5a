#include "drawing/hpgl/plotter.h"

#include <utility>

namespace k7host {

bool HpglPlotter::Fail(std::string message) {
  return text.Fail(command, std::move(message));
}

bool HpglPlotter::NumbersUpTo(std::size_t most, std::string_view name) {
  if (!text.ReadNumbers()) return false;
  if (text.Numbers().size() <= most) return true;
  return text.Fail(text.Numbers()[most].at,
                   std::string(name) + " takes " + std::to_string(most) + " numbers at most");
}

double HpglPlotter::Value(std::size_t index, double otherwise) const {
  return index < text.Numbers().size() ? text.Numbers()[index].value : otherwise;
}

PlotterPoint HpglPlotter::User(double x, double y, bool relativeToPen) const {
  if (!relativeToPen) return {x, y};
  const PlotterPoint here = axes.FromTable(pen.Here());
  return {here.x + x, here.y + y};
}

bool HpglPlotter::Go(const PlotterPoint& user, std::size_t at) {
  return GoTable(axes.ToTable(user), at);
}

bool HpglPlotter::GoTable(const PlotterPoint& table, std::size_t at) {
  if (pen.Go(table)) return true;
  return text.Fail(at, pen.IsFull() ? "the drawing has too many points" : "position out of range");
}

bool HpglPlotter::MayDraw() {
  if (!pageEnded) return true;
  return Fail("a second page begins here: engrave one page at a time");
}

void HpglPlotter::Notice(std::string_view what, std::string_view why) {
  if (CountAgain(notices, what)) return;
  const TextPlace place = text.Place(command);
  notices.push_back({std::string(what), std::string(why), 1, place.line, place.column});
}

}  // namespace k7host
