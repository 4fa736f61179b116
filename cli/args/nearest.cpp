#include "args/nearest.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace cli {
namespace {

constexpr std::size_t most_slips = 2;

// Optimal string alignment distance.
std::size_t distance(std::string_view a, std::string_view b) {
  std::vector<std::vector<std::size_t>> steps(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
  for (std::size_t i = 0; i <= a.size(); ++i) steps[i][0] = i;
  for (std::size_t k = 0; k <= b.size(); ++k) steps[0][k] = k;
  for (std::size_t i = 1; i <= a.size(); ++i)
    for (std::size_t k = 1; k <= b.size(); ++k) {
      const std::size_t changed = a[i - 1] == b[k - 1] ? 0 : 1;
      steps[i][k] =
          std::min({steps[i - 1][k] + 1, steps[i][k - 1] + 1, steps[i - 1][k - 1] + changed});
      if (i > 1 && k > 1 && a[i - 1] == b[k - 2] && a[i - 2] == b[k - 1])
        steps[i][k] = std::min(steps[i][k], steps[i - 2][k - 2] + 1);
    }
  return steps[a.size()][b.size()];
}

}  // namespace

std::optional<std::string_view> nearest(std::string_view typed,
                                        std::span<const std::string_view> words) {
  std::optional<std::string_view> found;
  std::size_t least = most_slips + 1;
  for (const std::string_view word : words) {
    // Words of other lengths are further away, and a long one costs time.
    if (std::max(word.size(), typed.size()) - std::min(word.size(), typed.size()) >= least)
      continue;
    const std::size_t slips = distance(typed, word);
    if (slips >= least || 2 * slips > word.size()) continue;
    least = slips;
    found = word;
  }
  return found;
}

}  // namespace cli
