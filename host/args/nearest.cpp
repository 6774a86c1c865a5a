#include "args/nearest.h"

#include <algorithm>

namespace k7host {
namespace {

std::size_t Distance(const std::string& a, const std::string& b) {
  std::vector<std::vector<std::size_t>> cost(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
  for (std::size_t i = 0; i <= a.size(); ++i) {
    for (std::size_t k = 0; k <= b.size(); ++k) {
      if (i == 0 || k == 0) {
        cost[i][k] = i + k;
        continue;
      }
      const std::size_t change = a[i - 1] == b[k - 1] ? 0 : 1;
      cost[i][k] = std::min({cost[i - 1][k] + 1, cost[i][k - 1] + 1, cost[i - 1][k - 1] + change});
      if (i > 1 && k > 1 && a[i - 1] == b[k - 2] && a[i - 2] == b[k - 1]) {
        cost[i][k] = std::min(cost[i][k], cost[i - 2][k - 2] + 1);
      }
    }
  }
  return cost[a.size()][b.size()];
}

}  // namespace

std::string NearestWord(const std::string& word, const std::vector<std::string>& candidates) {
  std::string nearest;
  // A third of the letters may be wrong, of a short word one.
  std::size_t least = std::max<std::size_t>(2, word.size() / 3 + 1);
  for (const std::string& candidate : candidates) {
    const std::size_t distance = Distance(word, candidate);
    if (distance >= least) continue;
    least = distance;
    nearest = candidate;
  }
  return nearest;
}

}  // namespace k7host
