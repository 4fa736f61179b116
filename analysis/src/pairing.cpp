#include "analysis/pairing.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

namespace analysis {
namespace {

double mismatch(const Section &section, const Complex &p, const Complex &q) {
  return std::max(std::fabs(section.a1 + (p + q).real()), std::fabs(section.a2 - (p * q).real()));
}

/** Gives as many sections as possible a conjugate pair of their own, by augmenting paths. */
class Matching {
 public:
  Matching(const std::vector<Complex> &upper, const Sections &filter, double tolerance)
      : owner_(upper.size()), choices_(filter.size()) {
    for (std::size_t s = 0; s < filter.size(); ++s)
      for (std::size_t p = 0; p < upper.size(); ++p)
        if (mismatch(filter[s], upper[p], std::conj(upper[p])) <= tolerance)
          choices_[s].push_back(p);
  }

  bool place(std::size_t section) {
    std::vector<bool> seen(owner_.size(), false);
    return place(section, seen);
  }

  bool has_owner(std::size_t pair) const { return owner_[pair].has_value(); }

 private:
  bool place(std::size_t section, std::vector<bool> &seen) {
    for (const std::size_t pair : choices_[section]) {
      if (seen[pair]) continue;
      seen[pair] = true;
      if (owner_[pair] && !place(*owner_[pair], seen)) continue;
      owner_[pair] = section;
      return true;
    }
    return false;
  }

  std::vector<std::optional<std::size_t>> owner_;
  std::vector<std::vector<std::size_t>> choices_;
};

// Places in the list, ascending, of the two real poles that fit the section best.
std::optional<std::pair<std::size_t, std::size_t>> best_two(const std::vector<Complex> &real,
                                                            const Section &section,
                                                            double tolerance) {
  std::size_t best_i = 0, best_j = 0;
  double best = std::numeric_limits<double>::infinity();
  for (std::size_t i = 0; i < real.size(); ++i)
    for (std::size_t j = i + 1; j < real.size(); ++j) {
      const double found = mismatch(section, real[i], real[j]);
      if (found < best) best = found, best_i = i, best_j = j;
    }
  if (!(best <= tolerance)) return std::nullopt;
  return std::pair{best_i, best_j};
}

}  // namespace

Pairing pairing(const std::vector<Complex> &poles, const Sections &filter, double tolerance) {
  std::vector<Complex> upper, real;
  for (const Complex &pole : poles) {
    if (pole.imag() > 0) upper.push_back(pole);
    if (pole.imag() == 0) real.push_back(pole);
  }
  // A first-order section has its second pole at the origin.
  if (real.size() % 2 != 0) real.emplace_back();

  Pairing found{true, {}, {}};
  Matching matching(upper, filter, tolerance);
  for (std::size_t s = 0; s < filter.size(); ++s) {
    if (matching.place(s)) continue;
    if (const auto two = best_two(real, filter[s], tolerance)) {
      real.erase(real.begin() + static_cast<std::ptrdiff_t>(two->second));
      real.erase(real.begin() + static_cast<std::ptrdiff_t>(two->first));
    } else {
      found.strangers.push_back(s);
    }
  }
  for (std::size_t p = 0; p < upper.size(); ++p)
    if (!matching.has_owner(p)) found.missing.push_back(upper[p]);
  found.missing.insert(found.missing.end(), real.begin(), real.end());
  found.intact = found.strangers.empty() && found.missing.empty();
  return found;
}

}  // namespace analysis
