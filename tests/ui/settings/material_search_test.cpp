// The list of material profiles on a drive that fails while its folder is searched.
#include <gmock/gmock.h>

#include <atomic>
#include <fstream>

#include "support/replaced_import.h"
#include "ui/settings/material_profiles_fixture.h"

// Where this program keeps the address of the system's function.
extern "C" BOOL(WINAPI* __imp_FindNextFileW)(HANDLE, LPWIN32_FIND_DATAW);

namespace k7 {
namespace {

using namespace k7test;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// For its life every search of this program fails, from the second file on: so many times before
// each further file, or for ever.
class FailingDrive {
 public:
  static constexpr int kForEver = -1;

  explicit FailingDrive(int failuresBeforeEachFile) {
    failures_.store(failuresBeforeEachFile);
    left_.store(failuresBeforeEachFile);
    asked_.store(0);
  }

  int TimesAsked() const { return asked_; }

 private:
  using Function = BOOL(WINAPI*)(HANDLE, LPWIN32_FIND_DATAW);

  static BOOL WINAPI FindNext(HANDLE search, LPWIN32_FIND_DATAW found) {
    ++asked_;
    if (left_ == 0) {
      left_.store(failures_);
      return kReal(search, found);
    }
    if (left_ > 0) --left_;
    SetLastError(ERROR_NOT_READY);
    return FALSE;
  }

  static inline const Function kReal = __imp_FindNextFileW;
  static inline std::atomic<int> failures_{0};
  static inline std::atomic<int> left_{0};
  static inline std::atomic<int> asked_{0};
  const ReplacedImport<Function> replaced_{__imp_FindNextFileW, &FindNext};
};

using MaterialSearchTest = MaterialProfilesTest;

TEST_F(MaterialSearchTest, ASearchThatFailsForSomeTimeIsAskedAgain) {
  for (const wchar_t* file : {L"Ash.ini", L"Elm.ini", L"Fir.ini", L"Oak.ini"}) MakeProfile(file);
  File().WriteText(L"Engrave Settings", L"Material Profile", L"Oak");
  const FailingDrive drive{60};
  Open();
  EXPECT_THAT(EntriesOf(dialog_, IDC_CS_MATERIAL), ElementsAre(L"Ash", L"Elm", L"Fir", L"Oak"));
  EXPECT_EQ(PickedText(dialog_, IDC_CS_MATERIAL), L"Oak");
}

TEST_F(MaterialSearchTest, ASearchThatKeepsFailingIsGivenUp) {
  for (const wchar_t* file : {L"Ash.ini", L"Elm.ini", L"Fir.ini"}) MakeProfile(file);
  const FailingDrive drive{FailingDrive::kForEver};
  Open();
  // At most: the first entry of a folder may be the folder itself.
  EXPECT_THAT(EntriesOf(dialog_, IDC_CS_MATERIAL), SizeIs(testing::Le(1u)));
  EXPECT_GT(drive.TimesAsked(), 1);
  EXPECT_LE(drive.TimesAsked(), 1000);
}

// A file in the way: the folder cannot be made, nor searched.
class UnsearchableFolderTest : public MaterialProfilesTest {
 protected:
  void BlockFolder() {
    std::filesystem::remove_all(folder_);
    std::ofstream{std::filesystem::path{folder_}} << "in the way";
  }
};

TEST_F(UnsearchableFolderTest, GivesAnEmptyListWithNothingToDelete) {
  BlockFolder();
  Open();
  EXPECT_THAT(EntriesOf(dialog_, IDC_CS_MATERIAL), IsEmpty());
  EXPECT_FALSE(Enabled(IDC_CS_DELETE_MATERIAL));
}

// KEEP: only a search that was carried out says whether there is something to delete.
TEST_F(UnsearchableFolderTest, EmptiesTheListAndLeavesTheButtonAsItWas) {
  MakeProfile(L"Oak.ini");
  Open();
  Choose(L"Oak");
  BlockFolder();
  Press(dialog_, IDC_CS_DELETE_MATERIAL);
  driver_->AnswerBox(dialog_, IDYES);
  WaitUntilHandled();
  EXPECT_THAT(EntriesOf(dialog_, IDC_CS_MATERIAL), IsEmpty());
  EXPECT_TRUE(Enabled(IDC_CS_DELETE_MATERIAL));
}

}  // namespace
}  // namespace k7
