#include "base/trace_text.h"

#include <charconv>
#include <cstring>
#include <type_traits>

namespace k7 {

namespace {

constexpr char kHexDigits[] = "0123456789ABCDEF";

// Of a short text that a byte or a character stands as.
struct Piece {
  char text[4] = {};
  std::size_t size = 0;
};

Piece PieceOf(char byte) noexcept {
  switch (byte) {
    case '\n':
      return {{'\\', 'n'}, 2};
    case '\r':
      return {{'\\', 'r'}, 2};
    case '\t':
      return {{'\\', 't'}, 2};
    case '\\':
      return {"\\\\", 2};
    case '"':
      return {"\\\"", 2};
    default:
      break;
  }
  const auto value = static_cast<unsigned char>(byte);
  if (value >= 0x20 && value < 0x7F) return {{byte}, 1};
  return {{'\\', 'x', kHexDigits[value >> 4], kHexDigits[value & 15]}, 4};
}

Piece Utf8(std::uint32_t c) noexcept {
  const auto tail = [c](unsigned shift) { return static_cast<char>(0x80 | ((c >> shift) & 0x3F)); };
  if (c < 0x20 || c == 0x7F || c == '"') return {"?", 1};
  if (c < 0x80) return {{static_cast<char>(c)}, 1};
  if (c < 0x800) return {{static_cast<char>(0xC0 | (c >> 6)), tail(0)}, 2};
  if (c < 0x10000) return {{static_cast<char>(0xE0 | (c >> 12)), tail(6), tail(0)}, 3};
  return {{static_cast<char>(0xF0 | (c >> 18)), tail(12), tail(6), tail(0)}, 4};
}

// Takes the next character off UTF-16 (or UTF-32, where wide characters are wider).
std::uint32_t TakeCharacter(const wchar_t*& text) noexcept {
  constexpr std::uint32_t kReplacement = 0xFFFD;
  const auto unit = [](wchar_t c) {
    return static_cast<std::uint32_t>(static_cast<std::make_unsigned_t<wchar_t>>(c));
  };
  const std::uint32_t c = unit(*text++);
  if (c > 0x10FFFF) return kReplacement;
  if (c < 0xD800 || c > 0xDFFF) return c;
  const std::uint32_t next = unit(*text);
  if (c > 0xDBFF || next < 0xDC00 || next > 0xDFFF) return kReplacement;
  ++text;
  return 0x10000 + ((c - 0xD800) << 10) + (next - 0xDC00);
}

}  // namespace

void TraceText::Put(std::string_view text) noexcept {
  std::memcpy(text_ + size_, text.data(), text.size());
  size_ += text.size();
}

TraceText& TraceText::Add(std::string_view text) noexcept {
  for (const char c : text) {
    if (!Fits(1)) break;
    text_[size_++] = c;
  }
  return *this;
}

TraceText& TraceText::AddNumber(std::int64_t number) noexcept {
  char digits[24];
  char* const end = std::to_chars(digits, digits + sizeof digits, number).ptr;
  return Add({digits, static_cast<std::size_t>(end - digits)});
}

TraceText& TraceText::AddMillionths(std::int64_t millionths, std::size_t width) noexcept {
  constexpr int kDecimals = 6;
  const bool negative = millionths < 0;
  std::uint64_t rest = negative ? 0 - static_cast<std::uint64_t>(millionths)
                                : static_cast<std::uint64_t>(millionths);
  char digits[32];
  char* first = digits + sizeof digits;
  int written = 0;
  do {
    if (written == kDecimals) *--first = '.';
    *--first = static_cast<char>('0' + rest % 10);
    rest /= 10;
    ++written;
  } while (rest != 0 || written <= kDecimals);
  if (negative) *--first = '-';
  const auto size = static_cast<std::size_t>(digits + sizeof digits - first);
  for (std::size_t i = size; i < width; ++i) Add(" ");
  return Add({first, size});
}

TraceText& TraceText::AddHex(std::uint64_t number) noexcept {
  char digits[20];
  char* const end = std::to_chars(digits, digits + sizeof digits, number, 16).ptr;
  return Add({digits, static_cast<std::size_t>(end - digits)});
}

TraceText& TraceText::PadTo(std::size_t column) noexcept {
  do Add(" ");
  while (size_ < column && Fits(1));
  return *this;
}

TraceText& TraceText::AddBytes(std::string_view bytes) noexcept {
  Add("\"");
  bool cut = false;
  for (const char byte : bytes) {
    const Piece piece = PieceOf(byte);
    cut = !Fits(piece.size);
    if (cut) break;
    Put({piece.text, piece.size});
  }
  Put(cut ? "\"..." : "\"");  // of the reserve
  return *this;
}

TraceText& TraceText::AddName(const wchar_t* name) noexcept {
  Add("\"");
  bool cut = false;
  while (name != nullptr && *name != L'\0' && !cut) {
    const Piece piece = Utf8(TakeCharacter(name));
    cut = !Fits(piece.size);
    if (!cut) Put({piece.text, piece.size});
  }
  Put(cut ? "\"..." : "\"");
  return *this;
}

TraceText& TraceText::End() noexcept {
  while (size_ > 0 && text_[size_ - 1] == ' ') --size_;
  Put("\n");
  return *this;
}

}  // namespace k7
