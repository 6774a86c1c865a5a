// Copying text into a buffer of fixed size: cut to the buffer, always terminated.
#pragma once

#include <cstddef>

namespace k7 {

// Copies `source` (null counts as empty) into `buffer` of `size` characters, cut to size - 1 and
// always terminated. Copies nothing when `buffer` is null or `size` is below 1. [any]
template <typename Char>
constexpr void CopyText(Char* buffer, std::ptrdiff_t size, const Char* source) noexcept {
  if (buffer == nullptr || size < 1) return;
  std::ptrdiff_t i = 0;
  if (source != nullptr) {
    for (; i < size - 1 && source[i] != Char{}; ++i) buffer[i] = source[i];
  }
  buffer[i] = Char{};
}

// The same into a whole array.
template <typename Char, std::size_t kSize>
constexpr void CopyText(Char (&buffer)[kSize], const Char* source) noexcept {
  CopyText(buffer, static_cast<std::ptrdiff_t>(kSize), source);
}

// Appends `source` to the terminated text in `buffer` under the same rules.
template <typename Char, std::size_t kSize>
constexpr void AppendText(Char (&buffer)[kSize], const Char* source) noexcept {
  std::size_t used = 0;
  while (used < kSize - 1 && buffer[used] != Char{}) ++used;
  CopyText(buffer + used, static_cast<std::ptrdiff_t>(kSize - used), source);
}

}  // namespace k7
