// The end of a device object: what it writes, what it stops, what it frees.
#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <new>
#include <string>

#include "device/module_state.h"
#include "module/smoothieboard.h"
#include "support/controller_id.h"
#include "support/fake_controller.h"
#include "support/stand_in_jog.h"

namespace k7 {
namespace {

using k7test::FakeController;
using k7test::FreshControllerId;
using k7test::SettingsFileOf;

// The keys of "Current Location" as "key=value" rows, empty without any.
std::wstring SavedLocation(const std::wstring& id) {
  wchar_t rows[256] = L"";
  GetPrivateProfileSectionW(L"Current Location", rows, 256, SettingsFileOf(id).c_str());
  std::wstring text;
  for (const wchar_t* row = rows; *row != L'\0'; row += std::wcslen(row) + 1) {
    text += std::wstring{row} + L";";
  }
  return text;
}

class DeviceLife : public ::testing::Test {
 protected:
  ~DeviceLife() override { hasRoundAttachment = 0; }

  Smoothieboard* Make(std::uint32_t roundAxisMode) {
    Smoothieboard* const device = Smoothieboard::Create();
    device->Record()->link.controllerId.Set(id_.c_str());
    device->Record()->position.last.x = 1234;
    device->Record()->position.last.y = -56;
    device->Record()->mechanics.roundAxisMode = roundAxisMode;
    return device;
  }

  const std::wstring id_ = FreshControllerId();
};

TEST_F(DeviceLife, WritesItsPositionToTheFileOfItsIdentity) {
  Smoothieboard* const device = Make(0);
  EXPECT_EQ(device->DeleteSelf(1), static_cast<void*>(device));
  EXPECT_EQ(SavedLocation(id_), L"X Axis=1234;Y Axis=-56;");
}

TEST_F(DeviceLife, NamesTheReplacedAxisRoundWithAnAttachment) {
  constexpr struct {
    std::uint8_t attachment;
    std::uint32_t mode;
    const wchar_t* want;
  } kCases[] = {
      {0, 1, L"X Axis=1234;Y Axis=-56;"}, {1, 0, L"X Axis=1234;Y Axis=-56;"},
      {1, 1, L"R Axis=1234;Y Axis=-56;"}, {1, 2, L"X Axis=1234;R Axis=-56;"},
      {2, 1, L"X Axis=1234;Y Axis=-56;"},  // only the value 1 counts
  };
  for (const auto& c : kCases) {
    DeleteFileW(SettingsFileOf(id_).c_str());
    Smoothieboard* const device = Make(c.mode);
    hasRoundAttachment = c.attachment;
    device->DeleteSelf(1);
    EXPECT_EQ(SavedLocation(id_), c.want) << int{c.attachment} << " " << c.mode;
  }
}

// Takes the settings tree of this machine out of the way for one test, and puts it back.
class WithoutSettingsTree {
 public:
  WithoutSettingsTree() { std::filesystem::rename(tree_, aside_, ignored_); }
  ~WithoutSettingsTree() {
    if (!std::filesystem::exists(aside_)) return;
    std::filesystem::remove_all(tree_, ignored_);
    std::filesystem::rename(aside_, tree_, ignored_);
  }

 private:
  std::error_code ignored_;
  const std::filesystem::path tree_ =
      std::filesystem::path{SettingsFileOf(L"x")}.parent_path().parent_path().parent_path();
  const std::filesystem::path aside_ = tree_.wstring() + L".aside";
};

// Mode 3 does not exist; nothing is known about which key its positions belong under.
TEST_F(DeviceLife, WritesNoKeysInAnUnknownRoundModeButStillMakesTheFolders) {
  const WithoutSettingsTree guard;
  const std::filesystem::path folder = std::filesystem::path{SettingsFileOf(id_)}.parent_path();
  ASSERT_FALSE(std::filesystem::exists(folder));
  Smoothieboard* const device = Make(3);
  hasRoundAttachment = 1;
  device->DeleteSelf(1);
  EXPECT_TRUE(std::filesystem::exists(folder));
  EXPECT_EQ(SavedLocation(id_), L"");
}

TEST_F(DeviceLife, LeavesItsMemoryWhenBitZeroIsClear) {
  alignas(Smoothieboard) unsigned char place[sizeof(Smoothieboard)];
  for (const std::uint32_t flags : {0u, 2u, 0xFFFFFFFEu}) {
    auto* const device = new (place) Smoothieboard{std::make_unique<DeviceState>()};
    device->Record()->link.controllerId.Set(id_.c_str());
    EXPECT_EQ(device->DeleteSelf(flags), static_cast<void*>(place));
    EXPECT_EQ(SavedLocation(id_), L"X Axis=0;Y Axis=0;");
  }
}

// A host that forgets to detach must not leave a reader thread on freed memory.
TEST_F(DeviceLife, DetachesALinkThatIsStillAttached) {
  FakeController controller;
  Smoothieboard* const device = Make(0);
  device->AttachLink(controller.DriverEnd(), kLinkSerial, L"fake");
  ASSERT_EQ(device->GetReaderAlive(), 1);
  device->DeleteSelf(1);
  EXPECT_EQ(SavedLocation(id_), L"X Axis=1234;Y Axis=-56;");
  // The link stays the caller's: it is still open.
  DWORD flags = 0;
  EXPECT_TRUE(GetHandleInformation(controller.DriverEnd(), &flags));
}

// A jog polls the counts that a detach closes.
TEST_F(DeviceLife, ADetachEndsAJogFirst) {
  FakeController controller;
  Smoothieboard* const device = Make(0);
  device->AttachLink(controller.DriverEnd(), kLinkSerial, L"fake");
  DeviceState& record = *device->Record();
  ASSERT_TRUE(k7test::StartStandInJog(record));
  device->AttachLink(nullptr, kLinkNone, nullptr);
  EXPECT_EQ(record.jog.jogThread, nullptr);
  EXPECT_EQ(record.position.last.x, k7test::kLastXOfStandInJog);
  device->DeleteSelf(1);
}

TEST_F(DeviceLife, SendsNothingWhenMadeAndWhenEnded) {
  FakeController controller;
  Smoothieboard* const device = Make(0);
  device->AttachLink(controller.DriverEnd(), kLinkSerial, L"fake");
  device->AttachLink(nullptr, kLinkNone, nullptr);
  device->DeleteSelf(1);
  EXPECT_EQ(controller.Transcript(), "");
}

}  // namespace
}  // namespace k7
