// One record of the trace as text. Pure, and without a request for memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace k7 {

// What the header of a trace names; a change that a reader has to know of raises it.
inline constexpr int kTraceFormat = 1;

// Text built up to a capacity; what goes beyond it is cut. [any]
class TraceText {
 public:
  static constexpr std::size_t kCapacity = 4096;

  TraceText& Add(std::string_view text) noexcept;
  TraceText& AddNumber(std::int64_t number) noexcept;
  // With six decimals, right-aligned in `width` characters: 1234567 is "1.234567".
  TraceText& AddMillionths(std::int64_t millionths, std::size_t width = 0) noexcept;
  TraceText& AddHex(std::uint64_t number) noexcept;
  // Blanks, at least one, up to that column.
  TraceText& PadTo(std::size_t column) noexcept;
  // Bytes of the wire in quotation marks: printable ASCII as it is, the rest as \n, \r, \t, \\, \"
  // and \xNN. Cut bytes leave "..." behind the closing mark.
  TraceText& AddBytes(std::string_view bytes) noexcept;
  // A name (a path, a port) in quotation marks, in UTF-8, nothing escaped: backslashes stay as they
  // are. A quotation mark or a control character within becomes "?", a lone surrogate U+FFFD. Null
  // is an empty name.
  TraceText& AddName(const wchar_t* name) noexcept;
  // Ends the record: a line feed, for which there is always room, in the place of blanks.
  TraceText& End() noexcept;

  std::string_view Text() const noexcept { return {text_, size_}; }

 private:
  // Room that Add leaves free: the end of a cut text and the line feed.
  static constexpr std::size_t kReserve = 8;

  bool Fits(std::size_t more) const noexcept { return size_ + more + kReserve <= kCapacity; }
  void Put(std::string_view text) noexcept;

  std::size_t size_ = 0;
  char text_[kCapacity];
};

}  // namespace k7
