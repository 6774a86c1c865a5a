#include "base/shared_text.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace k7 {
namespace {

TEST(SharedText, IsExactlyTheTextThatWasSet) {
  SharedText<24> text{L"0000000000000000"};
  EXPECT_TRUE(text.Is(L"0000000000000000"));
  EXPECT_FALSE(text.Is(L"000000000000000"));
  text.Set(L"Monkey Magic");
  EXPECT_TRUE(text.Is(L"Monkey Magic"));
  EXPECT_FALSE(text.Is(L"monkey magic"));
}

TEST(SharedText, ShowsEachChangeWhole) {
  SharedText<24> text{L"AAAAAAAAAAAAAAAA"};
  std::atomic<bool> stop{false};
  std::thread writer{[&] {
    while (!stop) {
      text.Set(L"BBBBBBBBBBBBBBBB");
      text.Set(L"AAAAAAAAAAAAAAAA");
    }
  }};
  int mixtures = 0;
  for (int i = 0; i < 20000; ++i) {
    const auto now = text.Get();
    for (int k = 1; k < 16; ++k) mixtures += now.text[k] != now.text[0];
  }
  stop = true;
  writer.join();
  EXPECT_EQ(mixtures, 0);
}

}  // namespace
}  // namespace k7
