#include "analysis/poles_outside.h"

#include <cmath>
#include <numbers>

#include "analysis/response.h"

namespace analysis {
namespace {

constexpr double largest_turn = 0.5;
constexpr int most_halvings = 60;

// The inverse of z^-n times the denominator, whose values keep their size.
class Inverse {
 public:
  explicit Inverse(const std::vector<double> &denominator)
      : transfer_{std::vector<double>(denominator.size(), 0.0), denominator} {
    transfer_.numerator.front() = 1.0;
    double sum = 0.0;
    for (const double coefficient : denominator) sum += std::fabs(coefficient);
    // As in `response`.
    noise_ = std::ldexp(2.0 * static_cast<double>(denominator.size()) * sum, -64);
  }

  Complex at(double w) const { return response(transfer_, w); }

  bool is_known(const Complex &value) const { return std::abs(value) * noise_ < 1.0; }

 private:
  Transfer transfer_;
  double noise_;
};

// How far the inverse turns from one place to another; NaN if that is uncertain.
double turn(const Inverse &inverse, double from, const Complex &first, double to,
            const Complex &last, int halvings) {
  const double angle = std::arg(last / first);
  if (std::fabs(angle) <= largest_turn) return angle;
  const double middle = (from + to) / 2;
  const Complex value = inverse.at(middle);
  if (halvings == most_halvings || !inverse.is_known(value)) return std::nan("");
  return turn(inverse, from, first, middle, value, halvings + 1) +
         turn(inverse, middle, value, to, last, halvings + 1);
}

}  // namespace

std::optional<std::size_t> poles_outside(const std::vector<double> &denominator,
                                         const std::vector<double> &at) {
  const Inverse inverse(denominator);
  double turned = 0.0;
  Complex before = inverse.at(at.front());
  if (!inverse.is_known(before)) return std::nullopt;
  for (std::size_t i = 1; i < at.size(); ++i) {
    const Complex value = inverse.at(at[i]);
    if (!inverse.is_known(value)) return std::nullopt;
    turned += turn(inverse, at[i - 1], before, at[i], value, 0);
    before = value;
  }
  if (!std::isfinite(turned)) return std::nullopt;
  // z^-n D turns back by pi for each root outside, its inverse forward.
  return static_cast<std::size_t>(std::lround(std::max(0.0, turned / std::numbers::pi)));
}

}  // namespace analysis
