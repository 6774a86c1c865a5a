// What a word that is not known was probably meant to be.
#pragma once

#include <string>
#include <vector>

namespace k7host {

// The candidate that takes the fewest letters put in, left out, changed or swapped with their
// neighbour; empty when none is near. [any]
std::string NearestWord(const std::string& word, const std::vector<std::string>& candidates);

}  // namespace k7host
