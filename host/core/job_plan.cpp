// From strokes in plotter units to moves in host steps.
#include "core/job_plan.h"

#include <algorithm>
#include <cmath>

namespace k7host {
namespace {

struct StepPoint {
  std::int64_t x = 0;
  std::int64_t y = 0;
  bool operator==(const StepPoint&) const = default;
};

struct Extent {
  StepPoint low;
  StepPoint high;
};

StepPoint Scale(const PlotterPoint& point, const Table& table) {
  return {StepsFromPlotterUnits(point.x, table.xStepsPerInch),
          StepsFromPlotterUnits(point.y, table.yStepsPerInch)};
}

bool Usable(double stepsPerInch) {
  return std::isfinite(stepsPerInch) && stepsPerInch > 0.0;
}

Extent Measure(const std::vector<Stroke>& strokes, const Table& table) {
  Extent extent{Scale(strokes[0].points[0], table), Scale(strokes[0].points[0], table)};
  for (const Stroke& stroke : strokes) {
    for (const PlotterPoint& point : stroke.points) {
      const StepPoint at = Scale(point, table);
      extent.low = {std::min(extent.low.x, at.x), std::min(extent.low.y, at.y)};
      extent.high = {std::max(extent.high.x, at.x), std::max(extent.high.y, at.y)};
    }
  }
  return extent;
}

std::string ExtentOf(const Extent& extent, const Table& table) {
  return "X " + InchesFromSteps(extent.low.x, table.xStepsPerInch) + " to " +
         InchesFromSteps(extent.high.x, table.xStepsPerInch) + ", Y " +
         InchesFromSteps(extent.low.y, table.yStepsPerInch) + " to " +
         InchesFromSteps(extent.high.y, table.yStepsPerInch);
}

// Adds strokes to a plan one after the other and keeps track of where the cutter is.
class Builder {
 public:
  Builder(const Table& table, JobPlan& plan) : table_(table), plan_(plan) {}

  void Add(const Stroke& stroke) {
    const StepPoint start = Scale(stroke.points[0], table_);
    const bool moved = plan_.moves.empty() || !(here_ == start);
    if (moved) Push(MoveKind::Travel, start);
    const std::size_t before = plan_.moves.size();
    for (const PlotterPoint& point : stroke.points) {
      const StepPoint at = Scale(point, table_);
      if (!(at == here_)) Push(MoveKind::Cut, at);
    }
    if (plan_.moves.size() > before) {
      ++plan_.strokes;
      plan_.cuts += static_cast<std::uint32_t>(plan_.moves.size() - before);
    } else if (moved) {
      Push(MoveKind::Plunge, start);
      ++plan_.dots;
    } else {
      return;  // a dot where the stroke before it ends: it is cut already
    }
    plan_.moves.back().endsStroke = true;
  }

 private:
  void Push(MoveKind kind, const StepPoint& at) {
    plan_.moves.push_back(
        {kind, false, static_cast<std::uint32_t>(at.x), static_cast<std::uint32_t>(at.y)});
    here_ = at;
  }

  const Table& table_;
  JobPlan& plan_;
  StepPoint here_;
};

}  // namespace

PlanResult BuildPlan(const std::vector<Stroke>& strokes, const Table& table) {
  PlanResult result;
  if (!Usable(table.xStepsPerInch) || !Usable(table.yStepsPerInch)) {
    result.error = "the driver reports no resolution";
    return result;
  }
  if (strokes.empty()) {
    result.error = "the drawing has no strokes";
    return result;
  }
  const Extent extent = Measure(strokes, table);
  if (extent.low.x < 0 || extent.low.y < 0 || extent.high.x > table.widthSteps ||
      extent.high.y > table.heightSteps) {
    result.error = "the drawing does not fit the table: it spans " + ExtentOf(extent, table) +
                   " inches, the table is " +
                   InchesFromSteps(table.widthSteps, table.xStepsPerInch) + " x " +
                   InchesFromSteps(table.heightSteps, table.yStepsPerInch) +
                   " inches; --origin, --offset and --scale place the drawing";
    return result;
  }
  Builder builder(table, result.plan);
  for (const Stroke& stroke : strokes) builder.Add(stroke);
  result.plan.minXSteps = static_cast<std::uint32_t>(extent.low.x);
  result.plan.minYSteps = static_cast<std::uint32_t>(extent.low.y);
  result.plan.maxXSteps = static_cast<std::uint32_t>(extent.high.x);
  result.plan.maxYSteps = static_cast<std::uint32_t>(extent.high.y);
  return result;
}

std::string ExtentText(const JobPlan& plan, const Table& table) {
  return ExtentOf({{plan.minXSteps, plan.minYSteps}, {plan.maxXSteps, plan.maxYSteps}}, table);
}

}  // namespace k7host
