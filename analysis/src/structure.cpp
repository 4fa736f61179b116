#include "analysis/structure.h"

#include <cmath>
#include <stdexcept>
#include <utility>

#include "analysis/stability.h"
#include "matched_roots.h"
#include "wide.h"

namespace analysis {
namespace {

/** c0 z^2 + c1 z + c2 by what a state-variable filter needs of it. */
struct Quadratic {
  double at_one;       /**< c0 + c1 + c2 */
  double at_minus_one; /**< c0 - c1 + c2 */
  double slant;        /**< c0 - c2 */
};

Quadratic of_coefficients(double c0, double c1, double c2) {
  // Extended, the sum of three doubles of similar size is exact, or as good as that.
  const Extended ends = static_cast<Extended>(c0) + c2;
  return {static_cast<double>(ends + c1), static_cast<double>(ends - c1),
          static_cast<double>(static_cast<Extended>(c0) - c2)};
}

/** 1 - p q of two real numbers or of a conjugate pair. */
double one_minus_product(const Complex &p, const Complex &q) {
  if (p.imag() == 0) return std::fma(-p.real(), q.real(), 1.0);
  return distance_inside(p) * (1 + std::abs(p));
}

/** (1 - p) (1 - q) of two real numbers or of a conjugate pair. */
double distances_from_one(const Complex &p, const Complex &q) {
  if (p.imag() == 0) return (1 - p.real()) * (1 - q.real());
  const double x = 1 - p.real();
  return std::fma(x, x, p.imag() * p.imag());
}

/** (z - p) (z - q), of the roots given and as many more at 0 as there are missing of two. */
Quadratic of_roots(std::vector<Complex> roots) {
  roots.resize(2);
  const Complex &p = roots[0], &q = roots[1];
  return {distances_from_one(p, q), distances_from_one(-p, -q), one_minus_product(p, q)};
}

/** The same divided by z for each root that is missing, and times z for each that the section's
 *  poles are short of two. */
Quadratic numerator_of(const Roots &section) {
  const std::size_t zeros = section.zeros.size(), poles = section.poles.size();
  std::vector<Complex> all = section.zeros;
  all.resize(zeros + 2 - poles);
  Quadratic q{};
  if (all.size() == 2) {
    q = of_roots(all);
  } else if (all.size() == 1) {
    q = {1 - all[0].real(), -1 - all[0].real(), all[0].real()};
  } else {
    q = {1, 1, -1};
  }
  return {section.gain * q.at_one, section.gain * q.at_minus_one, section.gain * q.slant};
}

/** The quadratic with z replaced by -z. */
Quadratic turned_round(const Quadratic &q) { return {q.at_minus_one, q.at_one, q.slant}; }

bool all_finite(const StateVariable &s) {
  for (const double value : {s.g, s.r, s.h, s.high, s.band, s.low})
    if (!std::isfinite(value)) return false;
  return true;
}

std::optional<StateVariable> solved(Quadratic numerator, Quadratic denominator) {
  const bool mirrored = denominator.at_one > denominator.at_minus_one;
  if (mirrored) {
    numerator = turned_round(numerator);
    denominator = turned_round(denominator);
  }
  if (!(denominator.at_one > 0 && denominator.at_minus_one > 0)) return std::nullopt;
  // The root of a product that may be too small for a double.
  const double root = std::sqrt(denominator.at_one) * std::sqrt(denominator.at_minus_one);
  const StateVariable found{
      .g = std::sqrt(denominator.at_one / denominator.at_minus_one),
      .r = (denominator.at_one + 2 * denominator.slant) / root,
      .h = denominator.at_minus_one / 4,
      .high = numerator.at_minus_one / denominator.at_minus_one,
      .band = 2 * (numerator.slant / root),
      .low = numerator.at_one / denominator.at_one,
      .mirrored = mirrored,
  };
  if (!all_finite(found)) return std::nullopt;
  return found;
}

}  // namespace

std::optional<StateVariable> state_variable(const Section &section) {
  return solved(of_coefficients(section.b0, section.b1, section.b2),
                of_coefficients(1.0, section.a1, section.a2));
}

std::optional<StateVariable> state_variable(const Roots &section) {
  if (section.poles.size() > 2 || section.zeros.size() > section.poles.size())
    throw std::invalid_argument("a section has at most two poles, and no more zeros than poles");
  return solved(numerator_of(section), of_roots(section.poles));
}

std::optional<std::vector<StateVariable>> state_variables(const Sections &filter) {
  std::vector<StateVariable> found;
  for (const Section &section : filter) {
    const auto one = state_variable(section);
    if (!one) return std::nullopt;
    found.push_back(*one);
  }
  return found;
}

std::optional<std::vector<StateVariable>> state_variables(const Sections &filter,
                                                          const Roots &roots) {
  const std::vector<std::optional<Roots>> matched = matched_roots(filter, roots);
  std::vector<StateVariable> found;
  for (std::size_t i = 0; i < filter.size(); ++i) {
    const auto one = matched[i] ? state_variable(*matched[i]) : state_variable(filter[i]);
    if (!one) return std::nullopt;
    found.push_back(*one);
  }
  return found;
}

Section section_of(const StateVariable &form) {
  const double denominator_at_one = 4 * form.g * form.g * form.h;
  const double denominator_slant = 2 * form.g * form.h * (form.r - form.g);
  const double at_one = form.low * denominator_at_one;
  const double ends = 2 * form.h * (form.high + form.g * form.g * form.low);
  const double slant = 2 * form.band * form.h * form.g;
  const double sign = form.mirrored ? -1.0 : 1.0;
  return {.b0 = (ends + slant) / 2,
          .b1 = sign * (at_one - ends),
          .b2 = (ends - slant) / 2,
          .a1 = sign * (denominator_at_one + denominator_slant - 2),
          .a2 = 1 - denominator_slant};
}

}  // namespace analysis
