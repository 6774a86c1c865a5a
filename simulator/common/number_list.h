// Lists of numbers as people write them: "1,2.5,-3".
#pragma once

#include <array>
#include <optional>
#include <string_view>
#include <vector>

namespace k7sim {

// The numbers of a list; nothing when the text is empty or holds anything else.
std::optional<std::vector<double>> ParseNumbers(std::string_view text);

// Exactly three numbers. False, and `out` as it was, when the text holds anything else.
bool ParseTriple(std::string_view text, std::array<double, 3>& out);

}  // namespace k7sim
