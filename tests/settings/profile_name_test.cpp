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

}  // namespace
}  // namespace k7
