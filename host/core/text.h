// Text on its way between the driver (UTF-16) and the console (UTF-8).
#pragma once

#include <string>
#include <string_view>

namespace k7host {

// UTF-8 of wide text; works for 16-bit and 32-bit wide characters. A lone half of a pair or a value
// that is no character becomes U+FFFD. [any]
std::string NarrowText(std::wstring_view text);

// The reverse; bytes that are not UTF-8 become U+FFFD each. [any]
std::wstring WideText(std::string_view text);

}  // namespace k7host
