#include "session/identity_generator.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <string>

namespace k7 {
namespace {

// Draws 0, 1, 2, …
GeneratedId Counting(std::uint64_t first, std::uint64_t step) {
  std::uint64_t next = first - step;
  return GenerateControllerId([&] { return next += step; });
}

TEST(GenerateControllerId, KeepsTheCodesOfItsAlphabetAndDropsAllOthers) {
  EXPECT_STREQ(Counting(0, 1).text, L"0123456789ABCDEF");
  EXPECT_STREQ(Counting(':', 1).text, L"ABCDEFGHIJKLMNOP");
  EXPECT_STREQ(Counting('Y', 1).text, L"YZ0123456789ABCD");
}

TEST(GenerateControllerId, TakesEveryNumberModulo256) {
  EXPECT_STREQ(Counting(0x700000000ull + 'Z', 256).text, L"ZZZZZZZZZZZZZZZZ");
}

TEST(IdentityNumbers, FollowFromTheCalendarSecondAlone) {
  constexpr std::uint64_t kSecond = 1'700'000'000;
  IdentityNumbers numbers, others;
  numbers.SeedAt(kSecond);
  others.SeedAt(kSecond - 1);
  others();
  others.SeedAt(kSecond);
  const GeneratedId first = GenerateControllerId([&] { return numbers(); });
  const GeneratedId same = GenerateControllerId([&] { return others(); });
  EXPECT_STREQ(first.text, same.text);
  others.SeedAt(kSecond + 1);
  const GeneratedId later = GenerateControllerId([&] { return others(); });
  EXPECT_STRNE(first.text, later.text);
}

TEST(IdentityNumbers, GoOnWithinOneSecond) {
  IdentityNumbers numbers;
  std::set<std::wstring> seen;
  for (int i = 0; i < 100; ++i) {
    numbers.SeedAt(1'700'000'000);
    seen.insert(GenerateControllerId([&] { return numbers(); }).text);
  }
  EXPECT_EQ(seen.size(), 100u);
}

TEST(IsIdentityCode, HoldsForDigitsAndCapitalsAlone) {
  int count = 0;
  for (unsigned code = 0; code < 256; ++code) {
    const bool want = std::string{"0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ"}.find(
                          static_cast<char>(code)) != std::string::npos &&
                      code != 0;
    EXPECT_EQ(IsIdentityCode(code), want) << code;
    if (IsIdentityCode(code)) ++count;
  }
  EXPECT_EQ(count, 36);
}

}  // namespace
}  // namespace k7
