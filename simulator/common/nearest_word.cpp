#include "common/nearest_word.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace k7sim {
namespace {

// Letters to put in, leave out or change until one word is the other.
std::size_t Difference(std::string_view a, std::string_view b) {
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < a.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i + 1;
    for (std::size_t j = 0; j < b.size(); ++j) {
      const std::size_t change = diagonal + (a[i] == b[j] ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({row[j] + 1, row[j + 1] + 1, change});
    }
  }
  return row.back();
}

}  // namespace

std::string NearestWord(std::string_view word, const std::vector<std::string>& known) {
  const std::string* nearest = nullptr;
  std::size_t least = 0;
  for (const std::string& candidate : known) {
    const std::size_t difference = Difference(word, candidate);
    if (nearest && difference >= least) continue;
    nearest = &candidate;
    least = difference;
  }
  if (!nearest || least > std::max<std::size_t>(1, nearest->size() / 2)) return {};
  return *nearest;
}

std::string DidYouMean(std::string_view word, const std::vector<std::string>& known) {
  const std::string nearest = NearestWord(word, known);
  return nearest.empty() ? "" : "; did you mean " + nearest + "?";
}

}  // namespace k7sim
