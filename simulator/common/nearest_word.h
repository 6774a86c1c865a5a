// The word that somebody may have meant, for error messages.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace k7sim {

// The word of `known` that differs from `word` in the fewest letters; empty when none is near.
std::string NearestWord(std::string_view word, const std::vector<std::string>& known);

// "; did you mean NEAREST?", or nothing when no word is near.
std::string DidYouMean(std::string_view word, const std::vector<std::string>& known);

}  // namespace k7sim
