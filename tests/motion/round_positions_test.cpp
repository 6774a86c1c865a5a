#include "motion/round_positions.h"

#include <gtest/gtest.h>

namespace k7 {
namespace {

// Every field that the bookkeeping may touch.
struct Books {
  std::uint32_t mode;
  std::int32_t lastX, lastY, parked, savedX, savedY, homeX, homeY, homeRound;
  float stepsPerInch;
  bool operator==(const Books&) const = default;
};

void PrintTo(const Books& b, std::ostream* out) {
  *out << "mode " << b.mode << " last " << b.lastX << ',' << b.lastY << " parked " << b.parked
       << " saved " << b.savedX << ',' << b.savedY << " home " << b.homeX << ',' << b.homeY << ','
       << b.homeRound << " steps " << b.stepsPerInch;
}

class RoundPositions : public testing::Test {
 protected:
  RoundPositions() {
    record_.mechanics.axis.x.motorSteps = record_.mechanics.axis.y.motorSteps =
        record_.mechanics.motorStepsRound = 200;
    record_.mechanics.axis.x.microSteps = record_.mechanics.axis.y.microSteps =
        record_.mechanics.microStepsRound = 10;
    record_.mechanics.axis.x.screwPitch = 0.5f;   // 4000
    record_.mechanics.axis.y.screwPitch = 0.25f;  // 8000
    record_.mechanics.roundGearRatio = 20.0f;
    record_.mechanics.roundCircumference = 5.0f;
    record_.position.last.x = 11;
    record_.position.last.y = 22;
    record_.position.parkedPosition = 33;
    record_.position.saved.x = 1;
    record_.position.saved.y = 2;
    record_.position.tableHome.x = 7;
    record_.position.tableHome.y = 8;
    record_.position.tableHomeRound = 9;
    record_.position.roundStepsPerInch = 6.0f;
  }
  Books Now() const {
    return {record_.mechanics.roundAxisMode, record_.position.last.x,
            record_.position.last.y,         record_.position.parkedPosition,
            record_.position.saved.x,        record_.position.saved.y,
            record_.position.tableHome.x,    record_.position.tableHome.y,
            record_.position.tableHomeRound, record_.position.roundStepsPerInch};
  }
  Books After(std::uint32_t mode) {
    ExchangeRoundPositions(record_.mechanics, record_.position, mode);
    return Now();
  }
  DeviceState record_;
};

TEST_F(RoundPositions, OffToXAndBackRestoresLastXAndTableHomeX) {
  EXPECT_EQ(After(1), (Books{1, 33, 22, 11, 11, 2, 7, 8, 7, 4000.0f}));
  EXPECT_EQ(After(0), (Books{0, 11, 22, 33, 11, 2, 7, 8, 7, 4000.0f}));
}

TEST_F(RoundPositions, OffToYAndBackRestoresLastYAndTableHomeY) {
  EXPECT_EQ(After(2), (Books{2, 11, 33, 22, 1, 22, 7, 8, 8, 8000.0f}));
  EXPECT_EQ(After(0), (Books{0, 11, 22, 33, 1, 22, 7, 8, 8, 8000.0f}));
}

// The home that a load has set to 0 while the fixture is active comes back.
TEST_F(RoundPositions, GivingTheAxisBackRestoresTheKeptHome) {
  record_.mechanics.roundAxisMode = 1;
  record_.position.tableHome.x = 0;
  record_.position.tableHomeRound = 500;
  EXPECT_EQ(After(0), (Books{0, 33, 22, 11, 33, 2, 500, 8, 500, 6.0f}));
}

// KEEP: only the two live positions change places; the parked one and the kept home stay.
TEST_F(RoundPositions, OverBothAxesTheLinearPositionsComeBackExchanged) {
  After(1);
  EXPECT_EQ(After(2), (Books{2, 22, 33, 11, 11, 2, 7, 8, 7, 8000.0f}));
  EXPECT_EQ(After(0), (Books{0, 22, 11, 33, 11, 11, 7, 7, 7, 8000.0f}));
}

TEST_F(RoundPositions, FromYToXSavesUnderY) {
  After(2);
  EXPECT_EQ(After(1), (Books{1, 33, 11, 22, 1, 22, 7, 8, 8, 4000.0f}));
}

TEST_F(RoundPositions, ThePresentModeChangesNothing) {
  const Books before = Now();
  EXPECT_EQ(After(0), before);
}

TEST_F(RoundPositions, AModeOfNeitherAxisExchangesNothing) {
  Books want = Now();
  want.mode = 3;
  EXPECT_EQ(After(3), want);
  want.mode = 1;
  EXPECT_EQ(After(1), want);
}

TEST(SwapAxisPositions, MovesTheFixturesPositionIntoTheReplacedAxis) {
  constexpr struct {
    std::uint32_t from, to;
    std::int32_t x, y, parked;
  } kCases[] = {
      {0, 0, 1, 2, 3}, {0, 1, 3, 2, 1},          {0, 2, 1, 3, 2},          {1, 0, 3, 2, 1},
      {1, 1, 1, 2, 3}, {1, 2, 3, 1, 2},          {2, 0, 1, 3, 2},          {2, 1, 2, 3, 1},
      {2, 2, 1, 2, 3}, {0, 0xFFFFFFFF, 1, 2, 3}, {1, 0xFFFFFFFF, 3, 2, 1}, {7, 1, 3, 2, 1},
  };
  for (const auto& c : kCases) {
    DeviceState record;
    record.mechanics.roundAxisMode = c.from;
    record.position.last.x = 1;
    record.position.last.y = 2;
    record.position.parkedPosition = 3;
    SwapAxisPositions(record.position, record.mechanics.roundAxisMode, c.to);
    EXPECT_EQ(record.position.last.x, c.x) << c.from << " to " << c.to;
    EXPECT_EQ(record.position.last.y, c.y) << c.from << " to " << c.to;
    EXPECT_EQ(record.position.parkedPosition, c.parked) << c.from << " to " << c.to;
    EXPECT_EQ(record.mechanics.roundAxisMode, c.from) << "left to the next load";
  }
}

}  // namespace
}  // namespace k7
