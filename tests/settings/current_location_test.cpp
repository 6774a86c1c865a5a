#include "settings/current_location.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "device/module_state.h"
#include "support/controller_id.h"

namespace k7 {
namespace {

class CurrentLocationTest : public testing::Test {
 protected:
  CurrentLocationTest() {
    record_.link.controllerId.Set(id_.c_str());
    record_.position.last.x = -111;
    record_.position.last.y = 222;
  }
  ~CurrentLocationTest() override {
    std::filesystem::remove(k7test::SettingsFileOf(id_));
    hasRoundAttachment = 0;
  }
  void Round(std::uint8_t attachment, std::uint32_t mode) {
    hasRoundAttachment = attachment;
    record_.mechanics.roundAxisMode = mode;
  }
  std::string Contents() const {
    std::ifstream in{std::filesystem::path{k7test::SettingsFileOf(id_)}, std::ios::binary};
    return {std::istreambuf_iterator<char>{in}, {}};
  }

  const std::wstring id_ = k7test::FreshControllerId();
  DeviceState record_;
};

TEST_F(CurrentLocationTest, WithoutAFixtureBothLinearAxesAreSaved) {
  KeepPosition(record_);
  EXPECT_EQ(Contents(), "[Current Location]\r\nX Axis=-111\r\nY Axis=222\r\n");
}

TEST_F(CurrentLocationTest, AModeWithoutTheAttachmentCountsAsNone) {
  Round(0, kRoundReplacesX);
  KeepPosition(record_);
  EXPECT_EQ(Contents(), "[Current Location]\r\nX Axis=-111\r\nY Axis=222\r\n");
}

TEST_F(CurrentLocationTest, AFixtureInPlaceOfXIsSavedUnderR) {
  Round(1, kRoundReplacesX);
  KeepPosition(record_);
  EXPECT_EQ(Contents(), "[Current Location]\r\nR Axis=-111\r\nY Axis=222\r\n");
}

TEST_F(CurrentLocationTest, AFixtureInPlaceOfYIsSavedUnderR) {
  Round(1, kRoundReplacesY);
  KeepPosition(record_);
  EXPECT_EQ(Contents(), "[Current Location]\r\nX Axis=-111\r\nR Axis=222\r\n");
}

TEST_F(CurrentLocationTest, AnUnknownModeSavesNothing) {
  Round(1, 3);
  KeepPosition(record_);
  EXPECT_FALSE(std::filesystem::exists(k7test::SettingsFileOf(id_)));
}

TEST_F(CurrentLocationTest, AGoToWritesXAndYWhateverTheMode) {
  for (const std::uint32_t mode : {0u, 1u, 2u, 3u}) {
    Round(1, mode);
    record_.position.last.x = static_cast<std::int32_t>(mode);
    KeepXyPosition(record_);
    EXPECT_EQ(Contents(),
              "[Current Location]\r\nX Axis=" + std::to_string(mode) + "\r\nY Axis=222\r\n");
  }
}

}  // namespace
}  // namespace k7
