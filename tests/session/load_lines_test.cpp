// What a load of the settings sends to the controller.
#include "session/load_fixture.h"
#include "settings/paths.h"
#include "support/test_machine.h"

namespace k7 {
namespace {

constexpr char kScrews[] = "M92 X157.48032\nM92 Y157.48032\nM92 Z157.48032\n";
constexpr char kOrigin[] = "G92 X0.000000 Y0.000000\n";

class LoadLinesTest : public testing::Test {
 protected:
  ~LoadLinesTest() override {
    std::filesystem::remove(SettingsFilePath(machine_->link).text);
    hasRoundAttachment = 0;
    hasSpindle = 0;
  }
  std::string Load(const std::vector<Entry>& entries = {}) {
    const k7test::KeyFile file{machine_->link};
    for (const Entry& e : entries) file.WriteText(e.section, e.key, e.text.c_str());
    LoadSettings(*machine_);
    return machine_.Sent();
  }

  k7test::TestMachine machine_;
};

struct LinesCase {
  const char* name;
  std::vector<Entry> file;
  std::string want;
};
void PrintTo(const LinesCase& c, std::ostream* out) {
  *out << c.name;
}

// A fixture of 8000 steps per inch.
std::vector<Entry> Fixture(std::int32_t mode) {
  return {Whole(L"Axis Round", L"Has Round Attachment", 1),
          {L"Axis Round", L"Circumference", L"5"},
          Whole(L"Axis Round", L"Mode", mode)};
}

const LinesCase kLinesCases[] = {
    {"AMissingFileSendsTheStepsTheMappingAndThePosition",
     {},
     std::string{kScrews} + "M800 X1 Y2\n" + kOrigin},
    {"TheStoredPositionIsDeclared",
     {Whole(L"Current Location", L"X Axis", 4000), Whole(L"Current Location", L"Y Axis", 8000)},
     std::string{kScrews} + "M800 X1 Y2\nG92 X25.400000 Y50.799999\n"},
    {"AFixtureInPlaceOfXSendsItsStepsAndMapping", Fixture(1),
     std::string{"M92 X314.96063\nM92 Y157.48032\nM92 Z157.48032\nM800 X5 Y2\n"} + kOrigin},
    {"AFixtureInPlaceOfYSendsItsStepsAndMapping", Fixture(2),
     std::string{"M92 X157.48032\nM92 Y314.96063\nM92 Z157.48032\nM800 X1 Y5\n"} + kOrigin},
    {"AFixtureThatIsOffSendsTheScrews", Fixture(0),
     std::string{kScrews} + "M800 X1 Y2\n" + kOrigin},
    {"AnUnknownModeSendsNoMapping", Fixture(3), std::string{kScrews} + kOrigin},
    {"AModeWithoutTheAttachmentSendsTheScrews",
     {Whole(L"Axis Round", L"Mode", 1)},
     std::string{kScrews} + "M800 X1 Y2\n" + kOrigin},
};

class LoadLines : public LoadLinesTest, public testing::WithParamInterface<LinesCase> {};
TEST_P(LoadLines, AreSent) {
  EXPECT_EQ(Load(GetParam().file), GetParam().want);
}
INSTANTIATE_TEST_SUITE_P(, LoadLines, testing::ValuesIn(kLinesCases), NameOfCase<LinesCase>);

TEST_F(LoadLinesTest, BeforeTheControllerHasAnsweredTheMappingAloneIsSent) {
  machine_->link.connected = 0;
  machine_->position.stepsPerMm.x = 7.0f;
  EXPECT_EQ(Load(), "M800 X1 Y2\n");
  EXPECT_EQ(machine_->position.stepsPerMm.x, 7.0f);
  EXPECT_EQ(machine_->jog.jogFast, 5000);  // the file is read all the same
}

TEST_F(LoadLinesTest, ARunningSpindleTakesTheNewSpeed) {
  machine_.FitSpindle();
  machine_->spindle.spindleOn = 1;
  machine_->spindle.spindleValue = 13000;
  EXPECT_EQ(Load({Whole(L"Spindle", L"Has Spindle", 1), Whole(L"Spindle", L"Spindle RPM", 6500)}),
            std::string{kScrews} + "M42\nM44 S126\nM800 X1 Y2\n" + kOrigin);
}

TEST_F(LoadLinesTest, AStandingSpindleStays) {
  machine_.FitSpindle();
  EXPECT_EQ(Load({Whole(L"Spindle", L"Has Spindle", 1)}),
            std::string{kScrews} + "M800 X1 Y2\n" + kOrigin);
}

}  // namespace
}  // namespace k7
