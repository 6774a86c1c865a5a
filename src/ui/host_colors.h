// The host's table of the colours in a drawing. Its layout is the host's own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace k7 {

inline constexpr int kHostColors = 16;

// A view of the table at an address of the host's; entries are 0 to 15. The address need not be
// aligned. [host]
class HostColors {
 public:
  explicit HostColors(void* table) noexcept : table_(static_cast<unsigned char*>(table)) {}

  bool IsPresent() const noexcept { return table_ != nullptr; }
  // 0x00BBGGRR.
  std::uint32_t Color(int entry) const noexcept { return Read<std::uint32_t>(kColorsAt, entry); }
  // Objects of the drawing in this colour.
  std::int32_t UseCount(int entry) const noexcept { return Read<std::int32_t>(kCountsAt, entry); }
  std::uint8_t Flag(int entry) const noexcept { return Read<std::uint8_t>(kFlagsAt, entry); }
  void SetFlag(int entry, std::uint8_t flag) const noexcept {
    table_[kFlagsAt + static_cast<std::size_t>(entry)] = flag;
  }

 private:
  static constexpr std::size_t kColorsAt = 688;
  static constexpr std::size_t kCountsAt = 788;
  static constexpr std::size_t kFlagsAt = 884;

  template <typename T>
  T Read(std::size_t arrayAt, int entry) const noexcept {
    T value;
    std::memcpy(&value, table_ + arrayAt + sizeof value * static_cast<std::size_t>(entry),
                sizeof value);
    return value;
  }

  unsigned char* table_;
};

}  // namespace k7
