// Discovery, with controllers of the test's own behind the port names.
#include "module/discovery.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "base/bounded_copy.h"
#include "device/polling.h"
#include "support/controller_id.h"
#include "support/fake_controller.h"
#include "support/wait_until.h"

namespace k7 {
namespace {

using k7test::FakeController;
using k7test::FreshControllerId;
using k7test::SettingsFileOf;
using k7test::WaitUntil;

constexpr wchar_t kZeros[] = L"0000000000000000";
constexpr DWORD kSlackMs = 100;  // the question may arrive late, what follows it at once

// What stands behind each name, and the names asked for, in order.
std::map<std::wstring, FakeController*> ports;
std::vector<std::wstring> asked;

UniqueFile OpenFake(const wchar_t* path) noexcept {
  asked.emplace_back(path);
  const auto found = ports.find(path);
  if (found == ports.end()) return {};
  HANDLE port = nullptr;
  DuplicateHandle(GetCurrentProcess(), found->second->DriverEnd(), GetCurrentProcess(), &port, 0,
                  FALSE, DUPLICATE_SAME_ACCESS);
  return UniqueFile{port};
}

std::wstring Port(int number) {
  return L"\\\\.\\COM" + std::to_wstring(number);
}

int SavedInt(const std::wstring& id, const wchar_t* key) {
  return static_cast<int>(
      GetPrivateProfileIntW(L"Current Location", key, 4711, SettingsFileOf(id).c_str()));
}

class Discovery : public ::testing::Test {
 protected:
  Discovery() {
    ports.clear();
    asked.clear();
    CopyText(table_.entries[0].id, L"LEFTOVER");
    DeleteFileW(SettingsFileOf(kZeros).c_str());
  }

  // A healthy controller behind this port; its identity.
  std::wstring Add(int number) {
    const std::wstring id = FreshControllerId();
    AddSilent(number).BehaveWell(std::string{id.begin(), id.end()});
    return id;
  }
  FakeController& AddSilent(int number) {
    fakes_.push_back(std::make_unique<FakeController>());
    ports[Port(number)] = fakes_.back().get();
    return *fakes_.back();
  }
  int Discover() { return DiscoverControllers(table_, &OpenFake); }

  std::vector<std::unique_ptr<FakeController>> fakes_;
  ControllerTable table_;
};

TEST_F(Discovery, FindsNothingWhenNoPortOpens) {
  EXPECT_EQ(Discover(), 0);
  ASSERT_EQ(asked.size(), 50u);
  for (int i = 0; i < 50; ++i) EXPECT_EQ(asked[static_cast<std::size_t>(i)], Port(i));
  EXPECT_STREQ(table_.entries[0].id, L"");  // the last discovery is forgotten
}

TEST_F(Discovery, WritesAZeroLocationUnderSixteenZerosWhenNobodyAnswered) {
  EXPECT_EQ(Discover(), 0);
  EXPECT_EQ(SavedInt(kZeros, L"X Axis"), 0);
  EXPECT_EQ(SavedInt(kZeros, L"Y Axis"), 0);
}

TEST_F(Discovery, RecordsAControllerWithItsNameAndPort) {
  const std::wstring id = Add(7);
  std::filesystem::create_directories(std::filesystem::path{SettingsFileOf(id)}.parent_path());
  WritePrivateProfileStringW(L"Settings", L"FriendlyName", L"Bench", SettingsFileOf(id).c_str());
  EXPECT_EQ(Discover(), 1);
  EXPECT_EQ(table_.entries[0].id, id);
  EXPECT_STREQ(table_.entries[0].name, L"Bench");
  EXPECT_STREQ(table_.entries[0].address, L"\\\\.\\COM7");
  EXPECT_EQ(table_.entries[0].linkType, kLinkSerial);
  EXPECT_STREQ(table_.entries[1].id, L"");
  const std::vector<std::string> lines = fakes_[0]->Lines();
  ASSERT_GE(lines.size(), 2u);
  EXPECT_EQ(lines[0], "SmoothieIsConnected\n");
  EXPECT_EQ(lines[1], "config-get sd controller_id\n");
}

TEST_F(Discovery, WritesTheLocationOfTheLastIdentityMet) {
  const std::wstring first = Add(1);
  const std::wstring last = Add(2);
  EXPECT_EQ(Discover(), 2);
  EXPECT_EQ(SavedInt(last, L"X Axis"), 0);
  EXPECT_EQ(SavedInt(last, L"Y Axis"), 0);
  EXPECT_EQ(SavedInt(first, L"X Axis"), 4711);
  EXPECT_EQ(SavedInt(kZeros, L"X Axis"), 4711);
}

// The flag of the controller before must not speak for a port where nobody answers.
TEST_F(Discovery, PassesOverASilentPortAfterOneThatAnswered) {
  const std::wstring id = Add(3);
  FakeController& silent = AddSilent(4);
  EXPECT_EQ(Discover(), 1);
  EXPECT_EQ(table_.entries[0].id, id);
  EXPECT_EQ(silent.Transcript(), "SmoothieIsConnected\n");
}

TEST_F(Discovery, DoesNotRecordAControllerThatHidesItsIdentity) {
  AddSilent(3).Answer("SmoothieIsConnected\n", "SmoothieIsConnected\r\n");
  const std::wstring id = Add(5);
  EXPECT_EQ(Discover(), 1);
  EXPECT_EQ(table_.entries[0].id, id);  // its slot was given to the next
  EXPECT_STREQ(table_.entries[1].id, L"");
}

TEST_F(Discovery, LeavesAnEmptyIdentityBehindAHiddenOne) {
  AddSilent(3).Answer("SmoothieIsConnected\n", "SmoothieIsConnected\r\n");
  EXPECT_EQ(Discover(), 0);
  EXPECT_EQ(table_.entries[0].id[0], L'\0');
  EXPECT_EQ(table_.entries[0].linkType, kLinkNone);
  // The mark of the unanswered question is the last identity that the temporary device held.
  EXPECT_EQ(SavedInt(L"Monkey Magic", L"X Axis"), 0);
  DeleteFileW(SettingsFileOf(L"Monkey Magic").c_str());
}

TEST_F(Discovery, AsksEachControllerAfreshForItsIdentity) {
  const std::wstring first = Add(10);
  const std::wstring second = Add(49);
  EXPECT_EQ(Discover(), 2);
  EXPECT_EQ(table_.entries[0].id, first);
  EXPECT_EQ(table_.entries[1].id, second);
  EXPECT_STREQ(table_.entries[1].address, L"\\\\.\\COM49");
}

TEST_F(Discovery, StopsAfterTheTenthOfElevenControllers) {
  std::vector<std::wstring> ids;
  for (const int number : {0, 1, 2, 5, 8, 9, 10, 11, 20, 30, 40}) ids.push_back(Add(number));
  EXPECT_EQ(Discover(), 10);
  for (std::size_t i = 0; i < 10; ++i) EXPECT_EQ(table_.entries[i].id, ids[i]);
  EXPECT_EQ(asked.back(), Port(30));
  EXPECT_EQ(fakes_[10]->Transcript(), "");
}

TEST_F(Discovery, GivesAControllerAFifthOfASecondToAnswer) {
  Add(1);
  EXPECT_EQ(Discover(), 1);
  const DWORD waitedMs = fakes_[0]->ReceivedAtMs("config-get sd controller_id\n") -
                         fakes_[0]->ReceivedAtMs("SmoothieIsConnected\n");
  EXPECT_GE(waitedMs, 200u - kSlackMs);
  EXPECT_LT(waitedMs, 200u + 2000u);
}

TEST_F(Discovery, DetachesEveryPort) {
  Add(1);
  EXPECT_EQ(Discover(), 1);
  EXPECT_EQ(Discover(), 1);  // the port can be attached again
}

TEST_F(Discovery, ClosesEveryPort) {
  Add(1);
  AddSilent(2);
  const PortOpener giveAway = [](const wchar_t* path) noexcept -> UniqueFile {
    const auto found = ports.find(path);
    return found == ports.end() ? UniqueFile{} : UniqueFile{found->second->ReleaseDriverEnd()};
  };
  EXPECT_EQ(DiscoverControllers(table_, giveAway), 1);
  for (const auto& fake : fakes_) EXPECT_TRUE(WaitUntil([&] { return fake->IsClosed(); }));
}

TEST(ProbePort, StartsTheLivenessClockWithTheQuestion) {
  FakeController silent;
  DeviceState record;
  record.link.connected = 1;
  ControllerEntry entry;
  const std::uint32_t before = TickMs();
  EXPECT_FALSE(ProbePort(record, silent.DriverEnd(), L"\\\\.\\COM1", entry));
  EXPECT_GE(record.link.alive.Alone().lastCheckTick - before, 0u);
  EXPECT_LT(record.link.alive.Alone().lastCheckTick - before, 2000u);
  EXPECT_EQ(record.link.alive.Alone().lastAnswerTick, record.link.alive.Alone().lastCheckTick);
  EXPECT_EQ(record.link.connected, 0);
  EXPECT_EQ(record.link.linkHandle, nullptr);
  EXPECT_EQ(record.link.linkType, kLinkNone);
  EXPECT_EQ(record.link.readerAlive, 0);
  EXPECT_STREQ(record.link.portName, L"");
  EXPECT_TRUE(record.link.controllerId.Is(kZeros));
}

}  // namespace
}  // namespace k7
