// Owner of a brush in one colour.
#pragma once

#include <windows.h>

namespace k7 {

// Deletes its brush at the end of its life. [host]
class SolidBrush {
 public:
  SolidBrush() noexcept = default;
  ~SolidBrush() {
    if (brush_ != nullptr) DeleteObject(brush_);
  }
  SolidBrush(const SolidBrush&) = delete;
  SolidBrush& operator=(const SolidBrush&) = delete;

  // Makes the brush; once.
  void Make(COLORREF color) noexcept { brush_ = CreateSolidBrush(color); }
  // Null: none was made.
  HBRUSH Get() const noexcept { return brush_; }

 private:
  HBRUSH brush_ = nullptr;
};

}  // namespace k7
