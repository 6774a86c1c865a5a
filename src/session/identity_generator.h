// Making an identity for a controller that has none.
#pragma once

#include <cstdint>
#include <random>

namespace k7 {

// A fresh identity, terminated.
struct GeneratedId {
  wchar_t text[17];
};

// Whether this character code may stand in a generated identity: "0" to "9", "A" to "Z".
constexpr bool IsIdentityCode(unsigned code) noexcept {
  return (code >= '0' && code <= '9') || (code >= 'A' && code <= 'Z');
}

// Draws numbers until sixteen of them, taken modulo 256, have been codes of that alphabet; the rest
// are dropped, so that every character is equally likely. [any]
template <typename Draw>
constexpr GeneratedId GenerateControllerId(Draw draw) noexcept {
  GeneratedId id{};
  for (int kept = 0; kept < 16;) {
    const unsigned code = static_cast<unsigned>(draw() % 256);
    if (IsIdentityCode(code)) id.text[kept++] = static_cast<wchar_t>(code);
  }
  return id;
}

// The numbers behind fresh identities. Not for two threads at once. [host]
class IdentityNumbers {
 public:
  // Seeds them with the calendar time in seconds. A second call within the same second continues
  // the sequence instead, so that two controllers do not get the same identity.
  void SeedAt(std::uint64_t calendarSeconds) noexcept {
    if (calendarSeconds == seed_) return;
    seed_ = calendarSeconds;
    generator_.seed(calendarSeconds);
  }
  std::uint64_t operator()() noexcept { return generator_(); }

 private:
  std::uint64_t seed_ = 0;
  std::mt19937_64 generator_{0};
};

}  // namespace k7
