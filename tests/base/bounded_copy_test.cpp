#include "base/bounded_copy.h"

#include <gtest/gtest.h>

namespace k7 {
namespace {

TEST(CopyText, CutsToTheDestinationAndAlwaysTerminates) {
  wchar_t buffer[4] = {L'x', L'x', L'x', L'x'};
  CopyText(buffer, L"abcdef");
  EXPECT_STREQ(buffer, L"abc");
}

TEST(CopyText, LeavesTheBufferAloneWhenTheSizeIsBelowOne) {
  wchar_t buffer[4] = L"abc";
  CopyText(buffer, std::ptrdiff_t{0}, L"x");
  CopyText(buffer, std::ptrdiff_t{-5}, L"x");
  EXPECT_STREQ(buffer, L"abc");
}

TEST(CopyText, TakesNullAsAnEmptyText) {
  char buffer[4] = "abc";
  CopyText(buffer, static_cast<const char*>(nullptr));
  EXPECT_STREQ(buffer, "");
}

TEST(AppendText, AppendsWhatFits) {
  wchar_t buffer[6] = L"abc";
  AppendText(buffer, L"defg");
  EXPECT_STREQ(buffer, L"abcde");
  AppendText(buffer, L"x");
  EXPECT_STREQ(buffer, L"abcde");
}

}  // namespace
}  // namespace k7
