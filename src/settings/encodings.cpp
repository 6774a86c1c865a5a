#include "settings/encodings.h"

#include <charconv>

#include "base/parse_number.h"

namespace k7 {

IntText TextOfInt(std::int32_t value) noexcept {
  char digits[12]{};
  const std::to_chars_result end = std::to_chars(digits, digits + sizeof digits, value);
  IntText result{};
  int length = 0;
  for (const char* c = digits; c != end.ptr; ++c) result.text[length++] = static_cast<wchar_t>(*c);
  return result;
}

float ParseCircumference(const wchar_t* text) noexcept {
  if (text == nullptr) return 0.0f;
  float inches = static_cast<float>(ParsePlainDecimal(text));
  for (; *text != L'\0'; ++text) {
    if (*text == L'D' || *text == L'd') {
      inches *= 3.14159f;  // KEEP: the diameter's factor has always had five decimals
      break;
    }
  }
  return inches;
}

}  // namespace k7
