#include "core/text.h"

#include <gtest/gtest.h>

namespace k7host {
namespace {

TEST(Text, GoesToTheConsoleAndBack) {
  const struct {
    std::wstring wide;
    const char* narrow;
  } kCases[] = {
      {L"", ""},
      {L"Pass 2 of 4 - 0.038 - GRID", "Pass 2 of 4 - 0.038 - GRID"},
      {L"\u00e9\u20ac", "\xc3\xa9\xe2\x82\xac"},
      {L"\U0001F600", "\xf0\x9f\x98\x80"},
  };
  for (const auto& c : kCases) {
    EXPECT_EQ(NarrowText(c.wide), c.narrow);
    EXPECT_EQ(WideText(c.narrow), c.wide);
  }
}

TEST(Text, HalfACharacterIsReplaced) {
  const std::wstring high(1, static_cast<wchar_t>(0xD83D));
  const std::wstring low(1, static_cast<wchar_t>(0xDE00));
  EXPECT_EQ(NarrowText(high), "\xef\xbf\xbd");
  EXPECT_EQ(NarrowText(low + L"a"),
            "\xef\xbf\xbd"
            "a");
  EXPECT_EQ(NarrowText(high + low), "\xf0\x9f\x98\x80");
}

TEST(Text, BytesThatAreNotUtf8AreReplaced) {
  EXPECT_EQ(WideText("a\xff"
                     "b"),
            L"a\ufffd"
            L"b");
  EXPECT_EQ(WideText("\xc3"), L"\ufffd");
  EXPECT_EQ(WideText("\xc0\x80"), L"\ufffd\ufffd");            // longer than need be
  EXPECT_EQ(WideText("\xed\xa0\x80"), L"\ufffd\ufffd\ufffd");  // half of a pair
  EXPECT_EQ(WideText("\xf4\x90\x80\x80"), L"\ufffd\ufffd\ufffd\ufffd");
}

}  // namespace
}  // namespace k7host
