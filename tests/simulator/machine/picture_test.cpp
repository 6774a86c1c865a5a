#include "machine/picture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "tests/simulator/support/small_job.h"

namespace k7sim {
namespace {

using k7test::Bench;
using k7test::InchDeep;
using k7test::RunJob;

TEST(Picture, ShowsPlateScaleHomeTravelAndCuts) {
  Bench bench(InchDeep());
  RunJob(bench);
  const std::string svg =
      DrawPicture(bench.board.Record().Strokes(), TableGeometry{}, HomeCorner::BottomLeft);
  // 100 units an inch, 0.7 inches of margin; Y runs up the plate, which is 16 inches high.
  EXPECT_THAT(svg, testing::HasSubstr("viewBox=\"0 0 2640 1740\""));
  EXPECT_THAT(svg, testing::HasSubstr("<rect id=\"plate\" x=\"70.0\" y=\"70.0\" width=\"2500.0\" "
                                      "height=\"1600.0\""));
  EXPECT_THAT(svg, testing::HasSubstr("<circle cx=\"70.0\" cy=\"1670.0\""));
  EXPECT_THAT(svg, testing::HasSubstr(">25</text>"));
  EXPECT_THAT(svg, testing::HasSubstr("id=\"travel\" fill=\"none\" stroke=\"#a3a9b0\" "
                                      "stroke-width=\"1.2\" d=\"M70.00 1670.00L170.00 1570.00"));
  EXPECT_THAT(svg, testing::HasSubstr("<path stroke=\"#1c140c\" stroke-width=\"3.70\" "
                                      "data-depth=\"0.0500\" d=\"M170.00 1570.00L170.00 1570.00"
                                      "L370.00 1570.00"));
}

TEST(Picture, CanHaveTheTableHomeAtTheTop) {
  const std::string svg = DrawPicture({{0, 0, 1, 1, 0.1}}, TableGeometry{}, HomeCorner::TopLeft);
  EXPECT_THAT(svg, testing::HasSubstr("d=\"M70.00 70.00L170.00 170.00\""));
  EXPECT_THAT(svg, testing::HasSubstr("<circle cx=\"70.0\" cy=\"70.0\""));
}

TEST(Picture, DrawsDeeperCutsWiderAndDarker) {
  EXPECT_LT(CutWidthInches(0.01), CutWidthInches(0.05));
  EXPECT_DOUBLE_EQ(CutWidthInches(5), 0.15);
  EXPECT_EQ(CutColour(0.1, 0.1), "#1c140c");
  EXPECT_EQ(CutColour(0, 0.1), "#b89a6c");
}

TEST(Picture, OfNothingIsStillAPlate) {
  const std::string svg = DrawPicture({}, TableGeometry{}, HomeCorner::BottomLeft);
  EXPECT_THAT(svg, testing::HasSubstr("id=\"plate\""));
  EXPECT_THAT(svg, testing::Not(testing::HasSubstr("id=\"travel\"")));
}

}  // namespace
}  // namespace k7sim
