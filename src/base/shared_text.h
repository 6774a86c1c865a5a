// SharedText: a short text that one thread replaces while another reads it.
#pragma once

#include <cstddef>

#include "base/bounded_copy.h"
#include "base/short_lock.h"

namespace k7 {

// Holds up to kSize - 1 characters. Every change appears whole: a reader sees the text before or
// after it, never a mixture. The lock is held only while the few characters are copied. [any]
template <std::size_t kSize>
class SharedText {
 public:
  struct Value {
    wchar_t text[kSize];
  };

  explicit SharedText(const wchar_t* text) noexcept { CopyText(value_.text, text); }

  // Replaces the text, cut to the capacity; null counts as empty.
  void Set(const wchar_t* text) noexcept {
    Value next{};
    CopyText(next.text, text);
    const ShortLockScope lock{guard_};
    value_ = next;
  }

  // The whole text as it stands now.
  Value Get() const noexcept {
    const ShortLockScope lock{guard_};
    return value_;
  }

  // Whether the text as it stands now is exactly `text`.
  bool Is(const wchar_t* text) const noexcept {
    const Value now = Get();
    for (std::size_t i = 0; i < kSize; ++i) {
      if (now.text[i] != text[i]) return false;
      if (text[i] == L'\0') return true;
    }
    return false;
  }

 private:
  mutable ShortLock guard_;
  Value value_{};
};

}  // namespace k7
