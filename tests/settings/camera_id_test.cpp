#include "settings/camera_id.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "session/load.h"
#include "support/controller_id.h"
#include "support/key_file.h"

namespace k7 {
namespace {

class CameraIdTest : public testing::Test {
 protected:
  CameraIdTest() { record_.link.controllerId.Set(id_.c_str()); }
  ~CameraIdTest() override { std::filesystem::remove(k7test::SettingsFileOf(id_)); }
  std::wstring InFile() const {
    return k7test::KeyFile{record_.link}.ReadText(L"Settings", L"CameraID", L"(missing)");
  }

  const std::wstring id_ = k7test::FreshControllerId();
  DeviceState record_;
};

TEST_F(CameraIdTest, IsKeptInMemoryAndInTheFile) {
  SetCameraId(record_, L"Camera 7");
  wchar_t buffer[16];
  EXPECT_EQ(GetCameraId(record_.host, buffer, 16), 8);
  EXPECT_STREQ(buffer, L"Camera 7");
  EXPECT_EQ(InFile(), L"Camera 7");
}

TEST_F(CameraIdTest, WithoutOneHasNoLengthAndLeavesTheBuffer) {
  wchar_t buffer[4] = L"abc";
  EXPECT_EQ(GetCameraId(record_.host, buffer, 4), 0);
  EXPECT_STREQ(buffer, L"abc");
}

TEST_F(CameraIdTest, IsCopiedOnlyIntoABufferThatHoldsItWhole) {
  SetCameraId(record_, L"Camera 7");
  wchar_t buffer[16] = L"untouched";
  EXPECT_EQ(GetCameraId(record_.host, buffer, 8), 8);
  EXPECT_STREQ(buffer, L"untouched");
  EXPECT_EQ(GetCameraId(record_.host, nullptr, 100), 8);
  EXPECT_EQ(GetCameraId(record_.host, buffer, 9), 8);
  EXPECT_STREQ(buffer, L"Camera 7");
}

TEST_F(CameraIdTest, AnEmptyOneClearsTheMemoryButReturnsAtTheNextLoad) {
  SetCameraId(record_, L"Camera 7");
  SetCameraId(record_, L"");
  EXPECT_EQ(GetCameraId(record_.host, nullptr, 0), 0);
  EXPECT_EQ(InFile(), L"Camera 7");
  LoadSettings(record_);
  EXPECT_EQ(GetCameraId(record_.host, nullptr, 0), 8);
}

TEST_F(CameraIdTest, ANullOneChangesNothing) {
  SetCameraId(record_, L"Camera 7");
  SetCameraId(record_, nullptr);
  EXPECT_EQ(GetCameraId(record_.host, nullptr, 0), 8);
}

}  // namespace
}  // namespace k7
