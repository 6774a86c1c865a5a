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
    record_.motorStepsX = record_.motorStepsY = record_.motorStepsRound = 200;
    record_.microStepsX = record_.microStepsY = record_.microStepsRound = 10;
    record_.screwPitchX = 0.5f;   // 4000
    record_.screwPitchY = 0.25f;  // 8000
    record_.roundGearRatio = 20.0f;
    record_.roundCircumference = 5.0f;
    record_.lastX = 11;
    record_.lastY = 22;
    record_.parkedPosition = 33;
    record_.savedPositionX = 1;
    record_.savedPositionY = 2;
    record_.tableHomeX = 7;
    record_.tableHomeY = 8;
    record_.tableHomeRound = 9;
    record_.roundStepsPerInch = 6.0f;
  }
  Books Now() const {
    return {record_.roundAxisMode,    record_.lastX,          record_.lastY,
            record_.parkedPosition,   record_.savedPositionX, record_.savedPositionY,
            record_.tableHomeX,       record_.tableHomeY,     record_.tableHomeRound,
            record_.roundStepsPerInch};
  }
  Books After(std::uint32_t mode) {
    ExchangeRoundPositions(record_, mode);
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
  record_.roundAxisMode = 1;
  record_.tableHomeX = 0;
  record_.tableHomeRound = 500;
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

}  // namespace
}  // namespace k7
