// Waiting in tests: for a condition, with a deadline, never for a time.
#pragma once

#include <chrono>
#include <thread>

namespace k7test {

// Long enough for a slow machine; a test that needs all of it has failed anyway.
inline constexpr std::chrono::seconds kDeadline{20};

// Polls `condition()` until it is true; false when the deadline has passed.
template <typename Condition>
bool WaitUntil(Condition condition, std::chrono::milliseconds deadline = kDeadline) {
  const auto end = std::chrono::steady_clock::now() + deadline;
  while (!condition()) {
    if (std::chrono::steady_clock::now() >= end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  return true;
}

}  // namespace k7test
