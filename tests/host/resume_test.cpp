#include "core/resume.h"

#include <gtest/gtest.h>

#include "core/job_summary.h"
#include "drawing/hpgl/hpgl.h"

namespace k7host {
namespace {

const Table kTable{1016.0, 508.0, 100000, 100000};

JobPlan Plan(const char* file) {
  return BuildPlan(ReadHpgl(file).strokes, kTable).plan;
}

TEST(ResumeText, IsReadBackAsItWas) {
  ResumePoint point;
  point.words = {"engrave", "Z:\\my plate: ä.plt", "--passes", "2"};
  point.folder = "C:\\job: one";
  point.controller = "0123456789ABCDEF";
  point.strokesDone = 310;
  point.strokesTotal = 885;
  point.plan = "00112233aabbccdd";
  const std::string text = ResumeText(point);
  EXPECT_EQ(text,
            "k7host resume file 1\ncontroller: 0123456789ABCDEF\nstrokes done: 310\n"
            "strokes of all passes: 885\nplan: 00112233aabbccdd\nfolder: C:\\job: one\n"
            "word: engrave\nword: Z:\\my plate: ä.plt\nword: --passes\nword: 2\n");
  const auto read = ReadResume(text);
  ASSERT_TRUE(read);
  EXPECT_EQ(ResumeText(*read), text);
}

TEST(ReadResume, RefusesAnythingElse) {
  for (const char* text :
       {"", "IN;PU;", "k7host resume file 1\n", "k7host resume file 2\nword: engrave\n",
        "k7host resume file 1\nword: engrave\nbogus: 1\n",
        "k7host resume file 1\nword: engrave\nstrokes done: x\n",
        "k7host resume file 1\nword: engrave\nstrokes done: 3\nstrokes of all passes: 2\n"}) {
    EXPECT_FALSE(ReadResume(text)) << text;
  }
  EXPECT_TRUE(ReadResume("k7host resume file 1\r\nword: engrave\r\n"));
}

TEST(PlanMark, TellsPlansApart) {
  const std::string mark = PlanMark(Plan("PU10,20;PD30,40"));
  EXPECT_EQ(mark.size(), 16u);
  EXPECT_EQ(PlanMark(Plan("IN;PU10,20;PD30,40;")), mark);
  EXPECT_NE(PlanMark(Plan("PU10,20;PD30,42")), mark);
  EXPECT_NE(PlanMark(Plan("PU10,20;PD")), PlanMark(Plan("PU10,20;")));
}

TEST(CutInches, CountsCutsThroughThePasses) {
  // Travel, 1 in along X, 2 in along Y, travel, dot.
  const JobPlan plan = Plan("PU0,0;PD1016,0,1016,2032;PU5000,5000;PD;");
  ASSERT_EQ(plan.moves.size(), 5u);
  EXPECT_DOUBLE_EQ(CutInches(plan, kTable, 0, 5), 3.0);
  EXPECT_DOUBLE_EQ(CutInches(plan, kTable, 0, 10), 6.0);
  EXPECT_DOUBLE_EQ(CutInches(plan, kTable, 2, 7), 3.0);
  EXPECT_DOUBLE_EQ(CutInches(plan, kTable, 3, 3), 0.0);
}

TEST(DepthOfStatus, IsTheNumberInIt) {
  EXPECT_EQ(DepthOfStatus("Pass 2 of 4 - 0.038 - GRID"), "0.038");
  EXPECT_EQ(DepthOfStatus("Pass 1 of 1 - 0.063"), "0.063");
  EXPECT_FALSE(DepthOfStatus("Pass 1 of 1 - Air Z"));
  EXPECT_FALSE(DepthOfStatus(""));
}

TEST(AirCutText, WarnsWhereTheCutterHomeWasNeverSet) {
  EXPECT_EQ(AirCutText({63, 1813, 1000.0}, 0.063),
            "nothing was cut, unless the work lies at Z 0: the surface set is 1.750 in below the "
            "deepest stroke; set the cutter home (Set Cutter... in k7host settings)");
  EXPECT_EQ(AirCutText({1063, 2000, 1000.0}, 0.063), "");  // an inch down
  EXPECT_EQ(AirCutText({63, 63, 1000.0}, 0.063), "");      // on the surface
  EXPECT_EQ(AirCutText({63, 1813, 0.0}, 0.063), "");
}

}  // namespace
}  // namespace k7host
