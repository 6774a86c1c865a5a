// Polled<T>: a field that one thread stores and another reads or polls without a mutex.
#pragma once

#include <atomic>

namespace k7 {

// An atomic of the same size as T that reads and writes like a plain field. Polling a plain field
// from another thread would be a data race, and the compiler may remove such a loop.
template <typename T>
class Polled {
 public:
  constexpr Polled(T value = T{}) noexcept : value_(value) {}
  Polled(const Polled&) = delete;
  Polled& operator=(const Polled&) = delete;

  operator T() const noexcept { return value_.load(); }
  T Get() const noexcept { return value_.load(); }
  Polled& operator=(T value) noexcept {
    value_.store(value);
    return *this;
  }
  // Adds to a number, in one step.
  void Add(T change) noexcept { value_.fetch_add(change); }
  // Stores `value` and returns what stood there, in one step.
  T Exchange(T value) noexcept { return value_.exchange(value); }

 private:
  std::atomic<T> value_;
};

}  // namespace k7
