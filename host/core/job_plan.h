// A drawing as the moves of one machine: whole host steps, checked to fit its table.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/scaling.h"
#include "drawing/drawing.h"

namespace k7host {

enum class MoveKind : std::uint8_t {
  Travel,  // to the point, cutter up
  Cut,     // to the point, cutter down
  Plunge,  // a dot: the cutter goes down where it is
};

struct Move {
  MoveKind kind = MoveKind::Travel;
  bool endsStroke = false;   // the last move of a stroke or dot
  std::uint32_t xSteps = 0;  // host steps; for a plunge those of the travel before it
  std::uint32_t ySteps = 0;
};

struct JobPlan {
  std::vector<Move> moves;    // one pass; starts with a travel
  std::uint32_t strokes = 0;  // lines drawn without lifting
  std::uint32_t dots = 0;
  std::uint32_t cuts = 0;       // moves that cut
  std::uint32_t minXSteps = 0;  // extent of all moves, host steps
  std::uint32_t minYSteps = 0;
  std::uint32_t maxXSteps = 0;
  std::uint32_t maxYSteps = 0;
};

struct PlanResult {
  JobPlan plan;
  std::string error;  // empty when the plan holds; one line otherwise, and the plan is empty
};

// Turns the strokes into moves, in their order. Points that fall on the same step are one point; a
// stroke that shrinks to a point is a dot. Left out are a travel to where the cutter already is,
// and a dot where the stroke before it ends. A drawing without a stroke, or one that leaves the
// table at any point, is refused whole. [any]
PlanResult BuildPlan(const std::vector<Stroke>& strokes, const Table& table);

// "X 0.250 to 7.750, Y 0.250 to 4.750" in inches. [any]
std::string ExtentText(const JobPlan& plan, const Table& table);

}  // namespace k7host
