#include "session/library_folders.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/controller_id.h"
#include "support/test_machine.h"

namespace k7 {
namespace {

class LibraryFoldersTest : public testing::Test {
 protected:
  LibraryFoldersTest() { record_.link.controllerId.Set(id_.c_str()); }
  ~LibraryFoldersTest() override { std::filesystem::remove_all(Folder()); }
  std::filesystem::path Folder() const {
    return std::filesystem::path{k7test::SettingsFileOf(id_)}.parent_path() / id_;
  }

  const std::wstring id_ = k7test::FreshControllerId();
  DeviceState record_;
};

TEST_F(LibraryFoldersTest, TheMaterialLibraryHangsBelowTheController) {
  wchar_t buffer[512];
  EXPECT_EQ(GetMaterialLibraryFolder(record_, buffer, 512), 1u);  // created just now
  EXPECT_EQ(std::filesystem::path{buffer}, Folder() / L"Material Library");
  EXPECT_TRUE(std::filesystem::is_directory(buffer));
  EXPECT_FALSE(std::filesystem::exists(Folder() / L"Temp Home Library"));
}

TEST_F(LibraryFoldersTest, TheTempHomeLibraryIsCreatedThoughTheOtherWasNeverUsed) {
  wchar_t buffer[512];
  EXPECT_EQ(GetTempHomeLibraryFolder(record_, buffer, 512), 1u);
  EXPECT_EQ(std::filesystem::path{buffer}, Folder() / L"Temp Home Library");
  EXPECT_TRUE(std::filesystem::is_directory(buffer));
  EXPECT_FALSE(std::filesystem::exists(Folder() / L"Material Library"));
}

TEST_F(LibraryFoldersTest, AFolderThatIsThereAlreadyGivesZeroAndItsPath) {
  wchar_t buffer[512];
  GetMaterialLibraryFolder(record_, buffer, 512);
  buffer[0] = L'\0';
  EXPECT_EQ(GetMaterialLibraryFolder(record_, buffer, 512), 0u);
  EXPECT_EQ(std::filesystem::path{buffer}, Folder() / L"Material Library");
}

TEST_F(LibraryFoldersTest, TheFolderIsCreatedWholeThoughTheBufferCutsItsPath) {
  wchar_t small[8];
  EXPECT_EQ(GetMaterialLibraryFolder(record_, small, 8), 1u);
  EXPECT_EQ(std::wstring{small}, Folder().wstring().substr(0, 7));
  EXPECT_TRUE(std::filesystem::is_directory(Folder() / L"Material Library"));
  EXPECT_EQ(GetTempHomeLibraryFolder(record_, nullptr, 0), 1u);
}

TEST_F(LibraryFoldersTest, AskingReloadsTheSettings) {
  record_.mechanics.axis.x.motorSteps = 7;
  GetTempHomeLibraryFolder(record_, nullptr, 0);
  EXPECT_EQ(record_.mechanics.axis.x.motorSteps, 200);
}

// The folder is named after what then stands in the identity, as the settings file is.
TEST(LibraryFolders, OfAControllerThatDoesNotAnswerBearTheMarkOfAnOpenQuestion) {
  k7test::TestMachine machine;
  machine.controller.Answer("config-get sd controller_id\n", "");
  machine->link.controllerId.Set(kUnsetControllerId);
  wchar_t buffer[512];
  GetMaterialLibraryFolder(*machine, buffer, 512);
  const std::filesystem::path folder = buffer;
  EXPECT_EQ(folder.filename(), L"Material Library");
  EXPECT_EQ(folder.parent_path().filename(), L"Monkey Magic");
  EXPECT_TRUE(std::filesystem::is_directory(folder));
  std::filesystem::remove_all(folder.parent_path());
}

}  // namespace
}  // namespace k7
