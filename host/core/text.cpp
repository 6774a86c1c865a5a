// Conversions of text.h. Written out so that they are the same on every platform.
#include "core/text.h"

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace k7host {
namespace {

constexpr std::uint32_t kReplacement = 0xFFFD;

void AppendNarrow(std::string& out, std::uint32_t c) {
  const auto tail = [&](unsigned shift) {
    out.push_back(static_cast<char>(0x80 | ((c >> shift) & 0x3F)));
  };
  if (c < 0x80) {
    out.push_back(static_cast<char>(c));
  } else if (c < 0x800) {
    out.push_back(static_cast<char>(0xC0 | (c >> 6)));
    tail(0);
  } else if (c < 0x10000) {
    out.push_back(static_cast<char>(0xE0 | (c >> 12)));
    tail(6);
    tail(0);
  } else {
    out.push_back(static_cast<char>(0xF0 | (c >> 18)));
    tail(12);
    tail(6);
    tail(0);
  }
}

void AppendWide(std::wstring& out, std::uint32_t c) {
  if constexpr (sizeof(wchar_t) == 2) {
    if (c >= 0x10000) {
      out.push_back(static_cast<wchar_t>(0xD800 + ((c - 0x10000) >> 10)));
      out.push_back(static_cast<wchar_t>(0xDC00 + ((c - 0x10000) & 0x3FF)));
      return;
    }
  }
  out.push_back(static_cast<wchar_t>(c));
}

// Wide characters are signed on some platforms.
std::uint32_t Value(wchar_t c) {
  return static_cast<std::make_unsigned_t<wchar_t>>(c);
}

bool IsSurrogate(std::uint32_t c) {
  return c >= 0xD800 && c <= 0xDFFF;
}

}  // namespace

std::string NarrowText(std::wstring_view text) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    auto c = Value(text[i]);
    if (IsSurrogate(c)) {
      const auto next = i + 1 < text.size() ? Value(text[i + 1]) : 0u;
      if (c < 0xDC00 && next >= 0xDC00 && next <= 0xDFFF) {
        c = 0x10000 + ((c - 0xD800) << 10) + (next - 0xDC00);
        ++i;
      } else {
        c = kReplacement;
      }
    }
    AppendNarrow(out, c > 0x10FFFF ? kReplacement : c);
  }
  return out;
}

std::wstring WideText(std::string_view text) {
  std::wstring out;
  for (std::size_t i = 0; i < text.size();) {
    const auto lead = static_cast<std::uint8_t>(text[i]);
    const std::size_t length = lead < 0x80       ? 1
                               : lead >> 5 == 6  ? 2
                               : lead >> 4 == 14 ? 3
                               : lead >> 3 == 30 ? 4
                                                 : 0;
    constexpr std::uint32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    std::uint32_t c = length == 1 ? lead : lead & (0x7Fu >> length);
    bool whole = length != 0 && i + length <= text.size();
    for (std::size_t k = 1; whole && k < length; ++k) {
      const auto byte = static_cast<std::uint8_t>(text[i + k]);
      whole = byte >> 6 == 2;
      c = (c << 6) | (byte & 0x3Fu);
    }
    whole = whole && c >= kSmallest[length] && c <= 0x10FFFF && !IsSurrogate(c);
    AppendWide(out, whole ? c : kReplacement);
    i += whole ? length : 1;
  }
  return out;
}

}  // namespace k7host
