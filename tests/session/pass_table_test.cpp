#include "session/pass_table.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <vector>

#include "settings/encodings.h"

namespace k7 {
namespace {

std::vector<float> Table(const PassSettings& settings) {
  const PassPlan plan = PlanPasses(settings);
  if (plan.count > kMostPasses) return {};
  std::vector<float> depths(plan.count);
  FillPasses(plan, settings.engraveDepth, depths.data());
  return depths;
}

PassSettings Copies(std::uint32_t copies) {
  return {.multiPass = true, .mode = 1, .copies = copies, .engraveDepth = 0.0625f};
}

PassSettings Steps(float depth, float largest, float finish) {
  return {.multiPass = true,
          .mode = 0,
          .maxPassDepth = largest,
          .finishPassDepth = finish,
          .engraveDepth = depth};
}

TEST(PassTable, WithoutMultiPassIsOnePassAtTheFullDepth) {
  EXPECT_EQ(Table({.engraveDepth = 0.0625f}), std::vector<float>{0.0625f});
  PassSettings settings = Copies(5);
  settings.multiPass = false;
  EXPECT_EQ(Table(settings), std::vector<float>{0.0625f});
}

TEST(PassTable, OfCopiesHasEveryPassAtTheFullDepth) {
  EXPECT_EQ(Table(Copies(5)), std::vector<float>(5, 0.0625f));
  EXPECT_EQ(Table(Copies(2)), std::vector<float>(2, 0.0625f));
}

TEST(PassTable, OfOneOrNoCopyIsASinglePass) {
  EXPECT_EQ(Table(Copies(1)), std::vector<float>{0.0625f});
  EXPECT_EQ(Table(Copies(0)), std::vector<float>{0.0625f});
}

TEST(PassTable, StepsEquallyAndEndsWithTheFinishingPass) {
  const std::vector<float> depths = Table(Steps(0.0625f, 0.02f, 0.005f));
  ASSERT_EQ(depths.size(), 4u);
  const float step = (0.0625f - 0.005f) / 3.0f;
  EXPECT_EQ(depths[0], step);
  EXPECT_EQ(depths[1], step + step);
  EXPECT_EQ(depths[2], step + step + step);  // a running single-precision sum
  EXPECT_EQ(depths[3], 0.0625f);
  EXPECT_NEAR(depths[0], 0.019167f, 1e-6);
  EXPECT_NEAR(depths[1], 0.038333f, 1e-6);
  EXPECT_NEAR(depths[2], 0.0575f, 1e-6);
}

TEST(PassTable, WithoutAFinishingPassEndsExactlyAtTheFullDepth) {
  const std::vector<float> depths = Table(Steps(0.0625f, 0.02f, 0.0f));
  ASSERT_EQ(depths.size(), 4u);  // 0.0625 / 3 is more than 0.02
  EXPECT_EQ(depths[0], 0.015625f);
  EXPECT_EQ(depths[3], 0.0625f);
}

TEST(PassTable, TakesNoFurtherStepWhenTheDepthDividesExactly) {
  EXPECT_EQ(Table(Steps(0.5f, 0.25f, 0.0f)), (std::vector<float>{0.25f, 0.5f}));
}

TEST(PassTable, OfALargestDepthBeyondTheDepthIsOnePassAndTheFinishingOne) {
  EXPECT_EQ(Table(Steps(0.0625f, 1.0f, 0.0f)), std::vector<float>{0.0625f});
  EXPECT_EQ(Table(Steps(0.0625f, 1.0f, 0.005f)), (std::vector<float>{0.0625f - 0.005f, 0.0625f}));
}

TEST(PassTable, OfNoLargestDepthIsOnePassAtTheFullDepthEvenWithAFinishingDepth) {
  EXPECT_EQ(Table(Steps(0.0625f, 0.0f, 0.005f)), std::vector<float>{0.0625f});
}

TEST(PassTable, TakesAnyModeButCopiesForDepthSteps) {
  for (const std::int32_t mode : {0, 2, -1}) {
    PassSettings settings = Steps(0.5f, 0.25f, 0.0f);
    settings.mode = mode;
    EXPECT_EQ(Table(settings).size(), 2u);
  }
}

TEST(PassTable, AlwaysHasAtLeastOneEntry) {
  constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
  for (const PassSettings& settings :
       {Steps(0.0f, 0.02f, 0.0f), Steps(0.0625f, 0.02f, 0.0625f), Steps(0.0625f, 0.02f, 0.5f),
        Steps(0.0625f, -0.02f, 0.0f), Steps(0.0625f, -0.02f, 0.005f), Steps(0.0625f, -0.0f, 0.0f),
        Steps(0.0625f, kNan, 0.0f), Steps(kNan, 0.02f, 0.0f), Steps(-0.0625f, 0.02f, 0.0f)}) {
    const std::vector<float> depths = Table(settings);
    ASSERT_EQ(depths.size(), 1u);
    EXPECT_EQ(BitsOfFloat(depths[0]), BitsOfFloat(settings.engraveDepth));
  }
}

TEST(PassTable, OfAnAbsurdCountKeepsTheCountAndIsNotMade) {
  EXPECT_EQ(PlanPasses(Copies(0xFFFFFFFFu)).count, 0xFFFFFFFFu);
  EXPECT_TRUE(Table(Copies(0xFFFFFFFFu)).empty());
  EXPECT_GT(PlanPasses(Steps(1.0f, 1e-30f, 0.0f)).count, kMostPasses);
  EXPECT_GT(PlanPasses(Steps(1.0f, 1e-30f, 0.5f)).count, kMostPasses);
  EXPECT_GT(PlanPasses(Steps(std::numeric_limits<float>::infinity(), 0.02f, 0.0f)).count,
            kMostPasses);
}

}  // namespace
}  // namespace k7
