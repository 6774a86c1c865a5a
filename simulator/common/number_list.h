// Lists of numbers in the options and the control commands: "1,2.5,-3".
#pragma once

#include <array>
#include <optional>
#include <string_view>
#include <vector>

namespace k7sim {

// The numbers of a list; nothing when the text is empty or holds anything else.
std::optional<std::vector<double>> ParseNumbers(std::string_view text);

// A list of exactly three numbers. False when the text is none; `out` then stays as it was.
bool ParseTriple(std::string_view text, std::array<double, 3>& out);

}  // namespace k7sim
