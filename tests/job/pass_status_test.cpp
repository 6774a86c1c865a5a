#include "job/pass_status.h"

#include <gtest/gtest.h>

#include <string>

namespace k7 {
namespace {

std::wstring Line(const PassStatus& status) {
  wchar_t buffer[256];
  WritePassStatus(status, buffer, 256);
  return buffer;
}

TEST(PassStatus, NamesThePassTheCountTheDepthAndTheRun) {
  EXPECT_EQ(Line({.pass = 2, .count = 4, .depthInches = 0.038333f, .runKind = kRunGrid}),
            L"Pass 2 of 4 - 0.038 - GRID");
}

TEST(PassStatus, RoundsTheDepthToThreeDecimals) {
  EXPECT_EQ(Line({.pass = 3, .count = 4, .depthInches = 0.0575f}), L"Pass 3 of 4 - 0.058");
  EXPECT_EQ(Line({.pass = 4, .count = 4, .depthInches = 0.0625f}), L"Pass 4 of 4 - 0.063");
  EXPECT_EQ(Line({.pass = 1, .count = 1, .depthInches = 1.25f}), L"Pass 1 of 1 - 1.250");
  EXPECT_EQ(Line({.pass = 1, .count = 1, .depthInches = 0.0f}), L"Pass 1 of 1 - 0.000");
}

TEST(PassStatus, OfAPneumaticHeadHasNoDepth) {
  EXPECT_EQ(Line({.pass = 1, .count = 1, .depthInches = 0.01f, .airZ = true}),
            L"Pass 1 of 1 - Air Z");
}

TEST(PassStatus, EndsWithTheKindOfRun) {
  constexpr struct {
    std::uint32_t kind;
    const wchar_t* want;
  } kCases[] = {
      {0, L"Pass 1 of 1 - 0.063"},
      {1, L"Pass 1 of 1 - 0.063 - GRID"},
      {2, L"Pass 1 of 1 - 0.063 - BRAILLE DRILL"},
      {3, L"Pass 1 of 1 - 0.063 - BRAILLE BEAD INSERT"},
      {4, L"Pass 1 of 1 - 0.063"},
      {0xFFFFFFFFu, L"Pass 1 of 1 - 0.063"},
  };
  for (const auto& c : kCases) {
    EXPECT_EQ(Line({.pass = 1, .count = 1, .depthInches = 0.0625f, .runKind = c.kind}), c.want);
  }
  EXPECT_EQ(Line({.pass = 1, .count = 1, .airZ = true, .runKind = kRunBrailleDrill}),
            L"Pass 1 of 1 - Air Z - BRAILLE DRILL");
}

TEST(PassStatus, CountsWithoutSign) {
  EXPECT_EQ(Line({.pass = 4294967295u, .count = 4294967295u, .airZ = true}),
            L"Pass 4294967295 of 4294967295 - Air Z");
}

TEST(PassStatus, IsCutToTheBufferAndTerminated) {
  wchar_t buffer[9] = L"xxxxxxxx";
  WritePassStatus({.pass = 2, .count = 4, .depthInches = 0.038333f}, buffer, 8);
  EXPECT_STREQ(buffer, L"Pass 2 ");
}

TEST(PassStatus, LeavesNoBufferAndABufferOfNoSizeAlone) {
  wchar_t buffer[4] = L"abc";
  WritePassStatus({.pass = 1, .count = 1}, nullptr, 10);
  WritePassStatus({.pass = 1, .count = 1}, buffer, 0);
  WritePassStatus({.pass = 1, .count = 1}, buffer, -1);
  EXPECT_STREQ(buffer, L"abc");
}

}  // namespace
}  // namespace k7
