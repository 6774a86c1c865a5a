#include "base/short_lock.h"

#include <gtest/gtest.h>

#include <thread>

namespace k7 {
namespace {

TEST(ShortLock, IsTakenOnceAtATime) {
  ShortLock lock;
  lock.Acquire();
  EXPECT_FALSE(lock.TryAcquire());
  lock.Release();
  EXPECT_TRUE(lock.TryAcquire());
  lock.Release();
}

TEST(ShortLock, LetsEachOfSeveralThreadsThroughInTurn) {
  ShortLock lock;
  long count = 0;
  const auto add = [&] {
    for (int i = 0; i < 20000; ++i) {
      const ShortLockScope scope{lock};
      ++count;
    }
  };
  std::thread other{add};
  add();
  other.join();
  EXPECT_EQ(count, 40000);
}

}  // namespace
}  // namespace k7
