#include "matched_roots.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace analysis {
namespace {

// What is left of coefficients of up to 2 that were rounded, scaled and rounded again.
constexpr double tolerance = 2e-15;

using Found = std::optional<std::vector<Complex>>;

/** Roots that no section has taken yet. */
class Pool {
 public:
  explicit Pool(const std::vector<Complex> &roots) {
    for (const Complex &root : roots) {
      if (root.imag() == 0) real_.push_back(root.real());
      if (root.imag() > 0) upper_.push_back(root);
    }
  }

  /** Takes the root of z + q. */
  Found take(double q) {
    const std::size_t at = nearest_real(-q, real_.size());
    if (at == real_.size() || std::fabs(real_[at] + q) > tolerance) return std::nullopt;
    const double root = real_[at];
    remove(real_, at);
    return std::vector<Complex>{root};
  }

  /** Takes the roots of z^2 + p z + q. */
  Found take(double p, double q) {
    const Pair complex = nearest_conjugates(p, q), real = nearest_reals(p, q);
    if (!(std::min(complex.distance, real.distance) <= tolerance)) return std::nullopt;
    if (complex.distance <= real.distance) {
      const Complex root = upper_[complex.first];
      remove(upper_, complex.first);
      return std::vector<Complex>{root, std::conj(root)};
    }
    const double first = real_[real.first], second = real_[real.second];
    remove(real_, std::max(real.first, real.second));
    remove(real_, std::min(real.first, real.second));
    return std::vector<Complex>{first, second};
  }

 private:
  /** Places in one of the lists, and how far the coefficients of these two are from those asked. */
  struct Pair {
    std::size_t first = 0, second = 0;
    double distance = INFINITY;
  };

  template <class T>
  static void remove(std::vector<T> &list, std::size_t at) {
    list.erase(list.begin() + static_cast<std::ptrdiff_t>(at));
  }

  static double distance(double p, double q, double sum, double product) {
    return std::max(std::fabs(p + sum), std::fabs(q - product));
  }

  /** @return a place in `real_` other than `taken`; its size if there is none. */
  std::size_t nearest_real(double value, std::size_t taken) const {
    std::size_t best = real_.size();
    for (std::size_t i = 0; i < real_.size(); ++i)
      if (i != taken &&
          (best == real_.size() || std::fabs(real_[i] - value) < std::fabs(real_[best] - value)))
        best = i;
    return best;
  }

  Pair nearest_conjugates(double p, double q) const {
    Pair best;
    for (std::size_t i = 0; i < upper_.size(); ++i) {
      const double here = distance(p, q, 2 * upper_[i].real(), std::norm(upper_[i]));
      if (here < best.distance) best = {i, i, here};
    }
    return best;
  }

  // Real roots that are nearly equal may have become a pair when their coefficients were rounded.
  Pair nearest_reals(double p, double q) const {
    if (real_.size() < 2) return {};
    const std::vector<Complex> wanted = quadratic_roots(p, q);
    const std::size_t first = nearest_real(wanted[0].real(), real_.size());
    const std::size_t second = nearest_real(wanted[1].real(), first);
    return {first, second,
            distance(p, q, real_[first] + real_[second], real_[first] * real_[second])};
  }

  std::vector<Complex> upper_; /**< of conjugate pairs */
  std::vector<double> real_;
};

bool is_first_order(const Section &s) { return s.b2 == 0 && s.a2 == 0; }

}  // namespace

std::vector<std::optional<Roots>> matched_roots(const Sections &filter, const Roots &roots) {
  Pool zeros(roots.zeros), poles(roots.poles);
  std::vector<std::optional<Roots>> matched;
  for (const Section &s : filter) {
    Found own_zeros, own_poles;
    if (is_first_order(s)) {
      own_zeros = zeros.take(s.b1 / s.b0);
      own_poles = poles.take(s.a1);
    } else {
      own_zeros = zeros.take(s.b1 / s.b0, s.b2 / s.b0);
      own_poles = poles.take(s.a1, s.a2);
    }
    if (own_zeros && own_poles)
      matched.emplace_back(Roots{*std::move(own_zeros), *std::move(own_poles), s.b0});
    else
      matched.emplace_back();
  }
  return matched;
}

}  // namespace analysis
