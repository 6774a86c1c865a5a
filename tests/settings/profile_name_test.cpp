#include "settings/profile_name.h"

#include <gtest/gtest.h>

#include <string>

namespace k7 {
namespace {

std::wstring Listed(std::wstring name) {
  if (!IsProfileFileName(name.c_str())) return L"(not listed)";
  CutProfileExtension(name.data());
  return name.c_str();
}

TEST(ProfileName, IsTheFileNameWithoutIniInAnyCase) {
  EXPECT_EQ(Listed(L"Oak.INI"), L"Oak");
  EXPECT_EQ(Listed(L"oak.ini"), L"oak");
  EXPECT_EQ(Listed(L"Oak.iNi"), L"Oak");
  EXPECT_EQ(Listed(L"a.ini"), L"a");
  EXPECT_EQ(Listed(L"oak.1.ini"), L"oak.1");
  EXPECT_EQ(Listed(L"oak.ini.ini"), L"oak.ini");
}

TEST(ProfileName, AFileNamedOnlyIniIsNotListed) {
  EXPECT_EQ(Listed(L".ini"), L"(not listed)");
  EXPECT_EQ(Listed(L".INI"), L"(not listed)");
}

TEST(ProfileName, OtherFilesAreNotListed) {
  for (const wchar_t* name : {L"", L".", L"..", L"ini", L"oak", L"oakini", L"oak.txt", L"oak.ini2",
                              L"oak.ini.bak", L"o.inı"}) {
    EXPECT_FALSE(IsProfileFileName(name)) << name;
  }
  EXPECT_FALSE(IsProfileFileName(nullptr));
}

TEST(ProfileName, CuttingLeavesANameThatIsNoneAlone) {
  wchar_t name[] = L"oak.txt";
  CutProfileExtension(name);
  EXPECT_STREQ(name, L"oak.txt");
  CutProfileExtension(nullptr);
}

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
