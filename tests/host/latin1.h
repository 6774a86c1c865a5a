// A code page for tests and fuzzing of settings files: none of Windows is there natively.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "settings/ini_text.h"

namespace k7test {

// Every byte is the character of its number.
class Latin1 : public k7host::CodePage {
 public:
  std::string ToUtf8(std::string_view bytes) const override {
    std::string text;
    for (const char c : bytes) {
      const auto byte = static_cast<std::uint8_t>(c);
      if (byte >= 0x80) text += static_cast<char>(0xC0 | byte >> 6);
      text += byte < 0x80 ? c : static_cast<char>(0x80 | (byte & 0x3F));
    }
    return text;
  }
  std::optional<std::string> FromUtf8(std::string_view text) const override {
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
      const auto byte = static_cast<std::uint8_t>(text[i]);
      if (byte < 0x80) {
        bytes += text[i];
      } else if (byte < 0xC4 && i + 1 < text.size()) {
        bytes += static_cast<char>(byte << 6 | (text[++i] & 0x3F));
      } else {
        return std::nullopt;
      }
    }
    return bytes;
  }
};

}  // namespace k7test
