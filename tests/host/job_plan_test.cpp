#include "core/job_plan.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "drawing/hpgl/hpgl.h"

namespace k7host {
namespace {

// 1016 steps an inch: one step is one plotter unit. Two inches by one.
constexpr Table kTable{1016.0, 1016.0, 2032, 1016};

// Moves as text: T travel, C cut, P plunge; "|" after the end of a stroke.
std::string Planned(const JobPlan& plan) {
  std::string text;
  for (const Move& move : plan.moves) {
    if (!text.empty()) text += " ";
    text += move.kind == MoveKind::Travel ? "T" : move.kind == MoveKind::Cut ? "C" : "P";
    text += std::to_string(move.xSteps) + "," + std::to_string(move.ySteps);
    if (move.endsStroke) text += "|";
  }
  return text;
}

PlanResult Plan(std::string_view file, const Table& table = kTable) {
  return BuildPlan(ReadHpgl(file).strokes, table);
}

TEST(JobPlan, TravelsToEachStrokeAndCutsIt) {
  const PlanResult result = Plan("PU10,20;PD30,40,50,60;PU70,80;PD70,90;PU0,0");
  EXPECT_EQ(result.error, "");
  EXPECT_EQ(Planned(result.plan), "T10,20 C30,40 C50,60| T70,80 C70,90|");
  EXPECT_EQ(result.plan.strokes, 2u);
  EXPECT_EQ(result.plan.cuts, 3u);
  EXPECT_EQ(result.plan.dots, 0u);
}

TEST(JobPlan, SeveralTravelsInARowBecomeOne) {
  EXPECT_EQ(Planned(Plan("PU1,1,2,2;PU3,3;PA4,4;PD5,5").plan), "T4,4 C5,5|");
}

TEST(JobPlan, ATravelThatLeavesTheTableIsNotMadeAndDoesNotCount) {
  EXPECT_EQ(Planned(Plan("PU-500,9000;PU4,4;PD5,5;PU99999,0").plan), "T4,4 C5,5|");
}

TEST(JobPlan, APenDownWithoutAMoveIsADot) {
  const PlanResult result = Plan("PU5,5;PD;PU6,6;PD;PU7,7;PD8,8;");
  EXPECT_EQ(Planned(result.plan), "T5,5 P5,5| T6,6 P6,6| T7,7 C8,8|");
  EXPECT_EQ(result.plan.dots, 2u);
  EXPECT_EQ(result.plan.strokes, 1u);
}

TEST(JobPlan, ADotAtTheTableHomeIsReached) {
  EXPECT_EQ(Planned(Plan("PD").plan), "T0,0 P0,0|");
}

TEST(JobPlan, PointsOnTheSameStepAreOnePoint) {
  const Table coarse{101.6, 101.6, 203, 102};  // ten units a step
  const PlanResult result = Plan("PU100,100;PD101,101,102,102,110,100,113,100,120,100", coarse);
  EXPECT_EQ(Planned(result.plan), "T10,10 C11,10 C12,10|");
}

TEST(JobPlan, AStrokeThatShrinksToAPointIsADot) {
  const Table coarse{101.6, 101.6, 203, 102};
  EXPECT_EQ(Planned(Plan("PU100,100;PD103,103", coarse).plan), "T10,10 P10,10|");
}

TEST(JobPlan, AStrokeFromTheEndOfTheLastGoesOnWithoutATravel) {
  EXPECT_EQ(Planned(Plan("PU1,1;PD2,2;PU;PD3,3").plan), "T1,1 C2,2| C3,3|");
}

TEST(JobPlan, ADotWhereTheCutterHasJustBeenIsLeftOut) {
  const PlanResult result = Plan("PU1,1;PD2,2;PU;PD;PU;PD;PU3,3;PD;PU;PD");
  EXPECT_EQ(Planned(result.plan), "T1,1 C2,2| T3,3 P3,3|");
  EXPECT_EQ(result.plan.dots, 1u);
}

TEST(JobPlan, ScalesEachAxisByItsOwnResolution) {
  const Table table{4000.0, 2000.0, 8000, 4000};
  EXPECT_EQ(Planned(Plan("PU1016,1016;PD1,1", table).plan), "T4000,2000 C4,2|");
}

TEST(JobPlan, ADrawingMayTouchTheTablesEdges) {
  const PlanResult result = Plan("PU0,0;PD2032,0,2032,1016,0,1016,0,0");
  EXPECT_EQ(result.error, "");
  EXPECT_EQ(ExtentText(result.plan, kTable), "X 0.000 to 2.000, Y 0.000 to 1.000");
}

TEST(JobPlan, ADrawingThatDoesNotFitIsRefusedWhole) {
  constexpr struct {
    const char* file;
    const char* want;
  } kCases[] = {
      {"PU5,5;PD2033,5", "X 0.005 to 2.001, Y 0.005 to 0.005"},
      {"PU5,5;PD5,1017", "X 0.005 to 0.005, Y 0.005 to 1.001"},
      {"PU5,5;PD-1,5", "X -0.001 to 0.005, Y 0.005 to 0.005"},
      {"PU5,-1;PD5,5", "X 0.005 to 0.005, Y -0.001 to 0.005"},
      {"PU8388607,0;PD", "X 8256.503 to 8256.503, Y 0.000 to 0.000"},
  };
  for (const auto& c : kCases) {
    const PlanResult result = Plan(c.file);
    EXPECT_EQ(result.error,
              "the drawing does not fit the table: it spans " + std::string(c.want) +
                  " inches, the table is 2.000 x 1.000 inches; --origin, --offset and "
                  "--scale place the drawing");
    EXPECT_TRUE(result.plan.moves.empty());
  }
}

TEST(JobPlan, NothingToEngraveIsRefused) {
  EXPECT_EQ(Plan("IN;PU5,5;").error, "the drawing has no strokes");
}

TEST(JobPlan, ADriverWithoutAResolutionIsRefused) {
  for (const double bad : {0.0, -1.0, std::nan(""), std::numeric_limits<double>::infinity()}) {
    EXPECT_EQ(Plan("PD1,1", {bad, 1016.0, 99, 99}).error, "the driver reports no resolution");
    EXPECT_EQ(Plan("PD1,1", {1016.0, bad, 99, 99}).error, "the driver reports no resolution");
  }
}

}  // namespace
}  // namespace k7host
