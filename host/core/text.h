// Conversion between the driver's texts (UTF-16) and the console's (UTF-8).
#pragma once

#include <string>
#include <string_view>

namespace k7host {

// UTF-8 of wide text; works for 16-bit and 32-bit wide characters. A lone surrogate or a value that
// is no character becomes U+FFFD. [any]
std::string NarrowText(std::wstring_view text);

// Wide text of UTF-8; each byte that is not part of a character becomes U+FFFD. [any]
std::wstring WideText(std::string_view text);

}  // namespace k7host
