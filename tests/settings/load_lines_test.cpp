// What a load of the settings sends to the controller.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "device/module_state.h"
#include "settings/load.h"
#include "settings/settings_file.h"
#include "support/attached_device.h"
#include "support/controller_id.h"

namespace k7 {
namespace {

class LoadLinesTest : public testing::Test {
 protected:
  LoadLinesTest() { device_->controllerId.Set(id_.c_str()); }
  ~LoadLinesTest() override {
    std::filesystem::remove(k7test::SettingsFileOf(id_));
    hasRoundAttachment = 0;
    hasSpindle = 0;
  }
  SettingsFile File() { return SettingsFile{*device_}; }
  // The lines of one load, up to a mark that is sent behind them.
  std::string Load() {
    controller_.Clear();
    LoadSettings(*device_);
    SendLine(*device_, "mark\n");
    EXPECT_TRUE(controller_.WaitForLine("mark\n"));
    const std::string all = controller_.Transcript();
    return all.substr(0, all.find("mark\n"));
  }

  const std::wstring id_ = k7test::FreshControllerId();
  k7test::FakeController controller_;
  k7test::AttachedDevice device_{controller_};
};

TEST_F(LoadLinesTest, AMissingFileSendsTheStepsTheMappingAndThePosition) {
  EXPECT_EQ(Load(),
            "M92 X157.48032\nM92 Y157.48032\nM92 Z157.48032\nM800 X1 Y2\n"
            "G92 X0.000000 Y0.000000\n");
}

TEST_F(LoadLinesTest, TheStoredPositionIsDeclared) {
  File().WriteInt(L"Current Location", L"X Axis", 4000);
  File().WriteInt(L"Current Location", L"Y Axis", 8000);
  EXPECT_EQ(Load(),
            "M92 X157.48032\nM92 Y157.48032\nM92 Z157.48032\nM800 X1 Y2\n"
            "G92 X25.400000 Y50.799999\n");
}

TEST_F(LoadLinesTest, AFixtureSendsItsOwnStepsAndMapping) {
  const SettingsFile file = File();
  file.WriteInt(L"Axis Round", L"Has Round Attachment", 1);
  file.WriteText(L"Axis Round", L"Circumference", L"5");  // 8000 steps per inch
  file.WriteInt(L"Axis Round", L"Mode", 1);
  EXPECT_EQ(Load(),
            "M92 X314.96063\nM92 Y157.48032\nM92 Z157.48032\nM800 X5 Y2\n"
            "G92 X0.000000 Y0.000000\n");
  file.WriteInt(L"Axis Round", L"Mode", 2);
  EXPECT_EQ(Load(),
            "M92 X157.48032\nM92 Y314.96063\nM92 Z157.48032\nM800 X1 Y5\n"
            "G92 X0.000000 Y0.000000\n");
  file.WriteInt(L"Axis Round", L"Mode", 0);
  EXPECT_EQ(Load(),
            "M92 X157.48032\nM92 Y157.48032\nM92 Z157.48032\nM800 X1 Y2\n"
            "G92 X0.000000 Y0.000000\n");
}

TEST_F(LoadLinesTest, AnUnknownModeSendsNoMapping) {
  File().WriteInt(L"Axis Round", L"Has Round Attachment", 1);
  File().WriteInt(L"Axis Round", L"Mode", 3);
  EXPECT_EQ(Load(), "M92 X157.48032\nM92 Y157.48032\nM92 Z157.48032\nG92 X0.000000 Y0.000000\n");
}

TEST_F(LoadLinesTest, BeforeTheControllerHasAnsweredTheMappingAloneIsSent) {
  device_->connected = 0;
  EXPECT_EQ(Load(), "M800 X1 Y2\n");
  EXPECT_EQ(device_->stepsPerMmX, 0.0f);
  EXPECT_EQ(device_->motorStepsX, 200);  // the file is read all the same
}

TEST_F(LoadLinesTest, ARunningSpindleTakesTheNewSpeed) {
  File().WriteInt(L"Spindle", L"Has Spindle", 1);
  File().WriteInt(L"Spindle", L"Spindle RPM", 6500);
  File().WriteInt(L"Engrave Settings", L"Cutter Mode", 0);
  device_->spindlePresent = 1;
  device_->spindleOn = 1;
  device_->spindleValue = 13000;
  EXPECT_EQ(Load(),
            "M92 X157.48032\nM92 Y157.48032\nM92 Z157.48032\nM42\nM44 S126\nM800 X1 Y2\n"
            "G92 X0.000000 Y0.000000\n");
}

TEST_F(LoadLinesTest, AStandingSpindleStays) {
  File().WriteInt(L"Spindle", L"Has Spindle", 1);
  File().WriteInt(L"Engrave Settings", L"Cutter Mode", 0);
  device_->spindlePresent = 1;
  EXPECT_EQ(Load().find("M42"), std::string::npos);
}

}  // namespace
}  // namespace k7
