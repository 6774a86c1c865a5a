#include "common/number_list.h"

#include <algorithm>
#include <cmath>
#include <sstream>
#include <string>

namespace k7sim {

std::optional<std::vector<double>> ParseNumbers(std::string_view text) {
  std::vector<double> numbers;
  std::istringstream list{std::string(text)};
  std::string item;
  while (std::getline(list, item, ',')) {
    std::istringstream number(item);
    double value = 0;
    if (!(number >> value) || !(number >> std::ws).eof() || !std::isfinite(value)) {
      return std::nullopt;
    }
    numbers.push_back(value);
  }
  if (numbers.empty() || text.back() == ',') return std::nullopt;
  return numbers;
}

bool ParseTriple(std::string_view text, std::array<double, 3>& out) {
  const auto numbers = ParseNumbers(text);
  if (!numbers || numbers->size() != out.size()) return false;
  std::copy(numbers->begin(), numbers->end(), out.begin());
  return true;
}

}  // namespace k7sim
