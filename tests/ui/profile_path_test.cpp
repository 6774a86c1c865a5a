#include "ui/profile_path.h"

#include <gtest/gtest.h>

#include <string>

namespace k7 {
namespace {

std::wstring NameOf(const wchar_t* path) {
  wchar_t name[64];
  ProfileNameOfPath(path, name, 64);
  return name;
}

TEST(ProfileNameOfPath, IsThePartAfterTheLastBackslashWithoutFourCharacters) {
  EXPECT_EQ(NameOf(L"C:\\Materials\\Oak.ini"), L"Oak");
  EXPECT_EQ(NameOf(L"C:\\Materials\\Oak.INI"), L"Oak");
  EXPECT_EQ(NameOf(L"Oak.ini"), L"Oak");
  EXPECT_EQ(NameOf(L"C:\\a.b\\Red Oak 1.5.ini"), L"Red Oak 1.5");
  EXPECT_EQ(NameOf(L".ini"), L"");
  EXPECT_EQ(NameOf(L"C:\\x\\abcdef"), L"ab") << "whatever the last four are";
}

// KEEP: the cut comes first, so that a short name loses its backslash as well.
TEST(ProfileNameOfPath, CutsBeforeItLooksForTheBackslash) {
  EXPECT_EQ(NameOf(L"C:\\dir\\abc"), L"dir");
}

TEST(ProfileNameOfPath, StaysWithinItsBuffer) {
  wchar_t name[4] = {L'#', L'#', L'#', L'#'};
  ProfileNameOfPath(L"C:\\Mahogany.ini", name, 3);
  EXPECT_EQ(std::wstring{name}, L"Ma");
  EXPECT_EQ(name[3], L'#');
}

// KEEP: there is nothing before the path to cut.
TEST(ProfileNameOfPathDeathTest, APathOfFewerThanFourCharactersEndsTheProcess) {
  EXPECT_DEATH(NameOf(L"abc"), "");
  EXPECT_DEATH(NameOf(L""), "");
}

}  // namespace
}  // namespace k7
