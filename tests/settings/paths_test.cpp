#include "settings/paths.h"

#include <gtest/gtest.h>
#include <windows.h>
// After windows.h, whose types it needs.
#include <shlobj.h>

#include <filesystem>
#include <string>

#include "support/controller_id.h"

namespace k7 {
namespace {

TEST(SettingsFilePath, IsTheIdentityIniInTheFolderOfAllControllers) {
  const std::wstring id = k7test::FreshControllerId();
  DeviceState record;
  record.link.controllerId.Set(id.c_str());
  wchar_t common[MAX_PATH] = L"";
  SHGetFolderPathW(nullptr, 35, nullptr, 1, common);
  const std::wstring want =
      std::wstring{common} + L"\\Penfold Hatch\\Veltrana\\Controllers\\" + id + L".ini";
  EXPECT_EQ(SettingsFilePath(record.link).text, want);
}

TEST(SettingsFilePath, CreatesTheFoldersButNotTheFile) {
  const std::wstring id = k7test::FreshControllerId();
  DeviceState record;
  record.link.controllerId.Set(id.c_str());
  const std::filesystem::path path = SettingsFilePath(record.link).text;
  EXPECT_TRUE(std::filesystem::is_directory(path.parent_path()));
  EXPECT_FALSE(std::filesystem::exists(path));
}

TEST(GetSettingsFilePath, CutsToTheBufferAndReturnsZeroAllTheSame) {
  DeviceState record;
  record.link.controllerId.Set(k7test::FreshControllerId().c_str());
  const std::wstring whole = SettingsFilePath(record.link).text;
  wchar_t buffer[kPathCapacity];
  EXPECT_EQ(GetSettingsFilePath(record.link, buffer, kPathCapacity), 0u);
  EXPECT_EQ(buffer, whole);
  wchar_t small[11] = L"xxxxxxxxxx";
  EXPECT_EQ(GetSettingsFilePath(record.link, small, 10), 0u);
  EXPECT_EQ(small, whole.substr(0, 9));
}

TEST(GetSettingsFilePath, LeavesABufferOfNoSizeAlone) {
  DeviceState record;
  wchar_t buffer[4] = L"abc";
  EXPECT_EQ(GetSettingsFilePath(record.link, buffer, 0), 0u);
  EXPECT_EQ(GetSettingsFilePath(record.link, buffer, -1), 0u);
  EXPECT_EQ(GetSettingsFilePath(record.link, nullptr, 512), 0u);
  EXPECT_STREQ(buffer, L"abc");
}

TEST(AppendFolder, ReportsWhatTheLastCreateDirectorySaid) {
  const std::wstring id = k7test::FreshControllerId();
  SettingsPath path = ControllersFolder();
  EXPECT_EQ(AppendFolder(path, id.c_str()), 1u);
  SettingsPath again = ControllersFolder();
  EXPECT_EQ(AppendFolder(again, id.c_str()), 0u);
  EXPECT_STREQ(path.text, again.text);
  std::filesystem::remove(path.text);
}

TEST(AppendLevel, CutsAPathThatWouldBeTooLong) {
  SettingsPath path{};
  AppendLevel(path, std::wstring(600, L'a').c_str());
  EXPECT_EQ(std::wstring{path.text}.size(), std::size_t{kPathCapacity - 1});
}

}  // namespace
}  // namespace k7
