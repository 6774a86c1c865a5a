#include "device/guarded.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace k7 {
namespace {

TEST(Guarded, GivesNothingAndTakesNothingWhileItIsClosed) {
  Guarded<int> guarded{7};
  EXPECT_FALSE(static_cast<bool>(guarded.Lock()));
  EXPECT_EQ(guarded.ValueOr(99), 99);
  guarded.Set(8);
  EXPECT_EQ(guarded.Alone(), 7);
}

TEST(Guarded, GivesItsValueFromOpenToClose) {
  Guarded<int> guarded{7};
  guarded.Open();
  EXPECT_EQ(guarded.ValueOr(99), 7);
  guarded.Set(8);
  if (const auto value = guarded.Lock()) *value += 1;
  EXPECT_EQ(guarded.ValueOr(99), 9);
  guarded.Close();
  EXPECT_EQ(guarded.ValueOr(99), 99);
  EXPECT_EQ(guarded.Alone(), 9);
}

TEST(Guarded, LosesNoChangeOfSeveralThreads) {
  Guarded<int> guarded{0};
  guarded.Open();
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&] {
      for (int n = 0; n < 10000; ++n) {
        if (const auto value = guarded.Lock()) ++*value;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(guarded.ValueOr(-1), 40000);
}

TEST(Guarded, KeepsAnotherThreadOutWhileItIsHeld) {
  Guarded<int> guarded{0};
  guarded.Open();
  std::atomic<bool> in{false};
  std::thread other;
  {
    const auto value = guarded.Lock();
    other = std::thread{[&] {
      guarded.Set(2);
      in = true;
    }};
    std::this_thread::yield();
    EXPECT_FALSE(in);
    *value = 1;
  }
  other.join();
  EXPECT_EQ(guarded.ValueOr(-1), 2);
}

}  // namespace
}  // namespace k7
