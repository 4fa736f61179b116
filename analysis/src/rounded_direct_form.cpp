#include "rounded_direct_form.h"

#include <cmath>
#include <numbers>

#include "analysis/rounding.h"
#include "analysis/stability.h"

namespace analysis {
namespace {

// Digits of a number's mantissa.
int digits(Arithmetic arithmetic) { return arithmetic == Arithmetic::floats ? 24 : 53; }

/** How many units in the last place below 1, twice that above, a coefficient is away from the
 *  nearest power of two. */
double units_from_power_of_two(double coefficient, double u) {
  int exponent = 0;
  const double mantissa = std::fabs(std::frexp(coefficient, &exponent));
  return (mantissa > 0.75 ? mantissa - 1 : 2 * mantissa - 1) / u;
}

/**
 * What a coefficient is on the average once its products are rounded. For nearly all it is the
 * coefficient. But x (1 - u) with u = 2^-digits lies between x and its lower neighbour and always
 * becomes the latter, which is x - x u / m with the mantissa m of x between 1/2 and 1: over evenly
 * spread logarithms the mean of 1/m is 1 / ln 2. Zeros on the unit circle leave such coefficients.
 */
Extended effective(double coefficient, Arithmetic arithmetic) {
  const double u = std::ldexp(1.0, -digits(arithmetic));
  if (units_from_power_of_two(coefficient, u) != -1) return coefficient;
  return coefficient * (1 - static_cast<Extended>(u) * (1 / std::numbers::ln2 - 1));
}

/**
 * The same for a single sine: the error of x (1 + j u) goes up and down j times while x doubles, so
 * what it has in common with x depends on the amplitude. Over amplitudes its power is some
 * 0.12 u^2 / |j|, and an eighth of that for j = -1, whose mean is taken account of above.
 */
double spread(double coefficient, Arithmetic arithmetic) {
  const double u = std::ldexp(1.0, -digits(arithmetic));
  const double j = std::fabs(units_from_power_of_two(coefficient, u));
  if (j == 0 || j > 1e6) return 0;  // exact, or below all that rounds
  return coefficient * coefficient * u * u * (j == 1 ? 0.016 : 0.12 / j);
}

bool is_turned(const Section &section) { return section.a1 > 0; }

// Of direct forms: the coefficients are the polynomials. `product` is what each becomes in use.
template <class Product>
RoundedSection with_coefficients(Section given, Section rounded, Product product) {
  const bool turned = is_turned(given);
  if (turned) {
    given = turned_round(given);
    rounded = turned_round(rounded);
  }
  const int exponent = common_exponent(given, rounded);
  given = divided(given, exponent);
  rounded = divided(rounded, exponent);
  const WideQuadratic wanted = numerator_of(given);
  return {.numerator = trinomial(numerator_of(rounded)),
          .denominator = trinomial(denominator_of(rounded)),
          .wanted_numerator = trinomial(wanted),
          .wanted_denominator = trinomial(denominator_of(given)),
          .numerator_error =
              trinomial({product(rounded.b0) - wanted.q0, product(rounded.b1) - wanted.q1,
                         product(rounded.b2) - wanted.q2}),
          .denominator_error =
              trinomial({0, product(rounded.a1) - given.a1, product(rounded.a2) - given.a2}),
          .numerator_spread = 0,
          .denominator_spread = 0,
          .exponent = exponent,
          .turned = turned,
          .stable = stability(Sections{rounded}).stable,
          .sources = {},
          .slow_sums = {}};
}

Section rounded_coefficients(const Section &section, Arithmetic arithmetic) {
  return arithmetic == Arithmetic::floats ? rounded_to_float({section})[0] : section;
}

// The section that the levels are taken of: scaled and turned as the polynomials are.
Section as_modelled(Section section, const RoundedSection &model) {
  if (model.turned) section = turned_round(section);
  return divided(section, model.exponent);
}

}  // namespace

RoundedSection rounded_direct_1(const Section &section, Arithmetic arithmetic) {
  const Section rounded = rounded_coefficients(section, arithmetic);
  RoundedSection model = with_coefficients(
      section, rounded, [=](double value) { return effective(value, arithmetic); });
  const auto [b0, b1, b2, a1, a2] = as_modelled(rounded, model);
  for (const double b : {b0, b1, b2}) model.numerator_spread += spread(b, arithmetic);
  for (const double a : {a1, a2}) model.denominator_spread += spread(a, arithmetic);
  const CosinePolynomial numerator = squared_magnitude(model.numerator);

  Way way(constant(1), true, true);
  for (const double b : {b0, b1, b2}) way.plain_product(b);
  if (b0 != 0 && b1 != 0) way.plain(Trinomial{b0 + b1, b0, b0});
  if ((b0 != 0 || b1 != 0) && b2 != 0) way.plain(model.numerator);
  for (const double a : {a1, a2})
    if (!is_exact_factor(a)) way.shaped(times(numerator, a * a));
  // Before the last product is subtracted, the sum is y + a2 y''.
  const CosinePolynomial partial =
      product(numerator, squared_magnitude(trinomial({1, 0, static_cast<Extended>(a2)})));
  if (a1 != 0) {
    way.shaped(partial);
    model.slow_sums.push_back({partial, numerator});
  }
  if (a2 != 0) way.shaped(numerator);
  model.sources.push_back(way.source());
  return model;
}

RoundedSection rounded_direct_2_transposed(const Section &section, Arithmetic arithmetic) {
  const Section rounded = rounded_coefficients(section, arithmetic);
  RoundedSection model = with_coefficients(
      section, rounded, [=](double value) { return effective(value, arithmetic); });
  const auto [b0, b1, b2, a1, a2] = as_modelled(rounded, model);
  for (const double b : {b0, b1, b2}) model.numerator_spread += spread(b, arithmetic);
  for (const double a : {a1, a2}) model.denominator_spread += spread(a, arithmetic);
  const CosinePolynomial numerator = squared_magnitude(model.numerator);

  const WideQuadratic b = numerator_of({b0, b1, b2, a1, a2});
  const Extended w1 = a1, w2 = a2;
  Way way(constant(1), true, true);
  for (const double factor : {b0, b1, b2}) way.plain_product(factor);
  for (const double a : {a1, a2})
    if (!is_exact_factor(a)) way.shaped(times(numerator, a * a));
  const auto add_sum = [&](const CosinePolynomial &sum, double factor) {
    way.shaped(sum);
    model.slow_sums.push_back({sum, constant(factor * factor)});
  };
  if (b0 != 0) add_sum(numerator, b0);
  if (b1 != 0 && a1 != 0)
    add_sum(squared_magnitude(trinomial({b.q1 - w1 * b.q0, 0, b.q1 * w2 - w1 * b.q2})), b1);
  way.shaped(trinomial({0, b.q1 - w1 * b.q0, b.q2 - w2 * b.q0}));
  if (b2 != 0 && a2 != 0)
    add_sum(squared_magnitude(trinomial({b.q2 - w2 * b.q0, b.q2 * w1 - w2 * b.q1, 0})), b2);
  model.sources.push_back(way.source());
  return model;
}

RoundedSection rounded_fixed(const Section &section, const Section &rounded) {
  RoundedSection model = with_coefficients(
      section, rounded, [](double value) { return static_cast<Extended>(value); });
  Way way(constant(1), true, true);
  way.shaped(squared_magnitude(model.numerator));
  model.sources.push_back(way.source());
  return model;
}

}  // namespace analysis
