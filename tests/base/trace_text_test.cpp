#include "base/trace_text.h"

#include <gtest/gtest.h>

#include <string>

namespace k7 {
namespace {

TEST(TraceText, WritesMillionthsWithSixDecimalsAlignedToTheRight) {
  constexpr struct {
    std::int64_t number;
    std::size_t width;
    const char* want;
  } kCases[] = {{0, 0, "0.000000"},
                {1234567, 0, "1.234567"},
                {-20, 0, "-0.000020"},
                {7, 14, "      0.000007"},
                {9223372036854775807, 0, "9223372036854.775807"},
                {-9223372036854775807 - 1, 0, "-9223372036854.775808"}};
  for (const auto& c : kCases) {
    EXPECT_EQ(TraceText{}.AddMillionths(c.number, c.width).Text(), c.want);
  }
}

TEST(TraceText, EscapesWhatIsNotPrintableInBytes) {
  EXPECT_EQ(TraceText{}.AddBytes("G0 X1\r\n").Text(), "\"G0 X1\\r\\n\"");
  EXPECT_EQ(TraceText{}.AddBytes("\t\"\\\x01\x7F\xE4~").Text(), R"("\t\"\\\x01\x7F\xE4~")");
  EXPECT_EQ(TraceText{}.AddBytes({"\0", 1}).Text(), R"("\x00")");
}

TEST(TraceText, WritesNamesAsUtf8AndLeavesBackslashesAlone) {
  EXPECT_EQ(TraceText{}.AddName(L"\\\\.\\COM7").Text(), R"("\\.\COM7")");
  EXPECT_EQ(TraceText{}.AddName(L"Fr\u00e4se \u6df1\U0001F600").Text(),
            "\"Fr\xC3\xA4se \xE6\xB7\xB1\xF0\x9F\x98\x80\"");
  const wchar_t broken[] = {L'a', static_cast<wchar_t>(0xD800), L'"', L'\n', L'\0'};
  EXPECT_EQ(TraceText{}.AddName(broken).Text(), "\"a\xEF\xBF\xBD??\"");
  EXPECT_EQ(TraceText{}.AddName(nullptr).Text(), "\"\"");
}

TEST(TraceText, CutsWhatIsTooLongAndSaysSoAndStillEnds) {
  const std::string text{TraceText{}.AddBytes(std::string(5000, '\n')).End().Text()};
  EXPECT_LE(text.size(), TraceText::kCapacity);
  EXPECT_GT(text.size(), TraceText::kCapacity - 10);
  EXPECT_TRUE(text.ends_with("\\n\"...\n"));
  const std::string name{TraceText{}.AddName(std::wstring(5000, L'\u6df1').c_str()).End().Text()};
  EXPECT_LE(name.size(), TraceText::kCapacity);
  EXPECT_TRUE(name.ends_with("\xE6\xB7\xB1\"...\n"));
  TraceText full;
  EXPECT_LE(full.Add(std::string(9000, 'a')).PadTo(9999).AddNumber(7).End().Text().size(),
            TraceText::kCapacity);
}

TEST(TraceText, PadsToAColumnAndEndsWithoutBlanks) {
  EXPECT_EQ(TraceText{}.Add("ab").PadTo(4).Add("c").Text(), "ab  c");
  EXPECT_EQ(TraceText{}.Add("abcde").PadTo(4).AddHex(0x1C4).Text(), "abcde 1c4");
  EXPECT_EQ(TraceText{}.Add("ab").PadTo(4).End().Text(), "ab\n");
}

}  // namespace
}  // namespace k7
