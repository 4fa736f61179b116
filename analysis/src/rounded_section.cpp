#include "rounded_section.h"

#include <algorithm>
#include <cmath>

namespace analysis {

Trinomial trinomial(const WideQuadratic &q) {
  return {static_cast<double>(q.q0 + q.q2 + q.q1), static_cast<double>(q.q0 + q.q2),
          static_cast<double>(q.q0 - q.q2)};
}

WideQuadratic numerator_of(const Section &section) { return {section.b0, section.b1, section.b2}; }

WideQuadratic denominator_of(const Section &section) { return {1, section.a1, section.a2}; }

bool is_exact_factor(double value) {
  int exponent = 0;
  return value == 0 || std::fabs(std::frexp(value, &exponent)) == 0.5;
}

Section turned_round(const Section &section) {
  return {section.b0, -section.b1, section.b2, -section.a1, section.a2};
}

int common_exponent(const Section &x, const Section &y) {
  int exponent = 0;
  std::frexp(std::max({std::fabs(x.b0), std::fabs(x.b1), std::fabs(x.b2), std::fabs(y.b0),
                       std::fabs(y.b1), std::fabs(y.b2)}),
             &exponent);
  return exponent;
}

Section divided(Section section, int exponent) {
  for (double *value : {&section.b0, &section.b1, &section.b2})
    *value = std::ldexp(*value, -exponent);
  return section;
}

void Way::plain(const Trinomial &q) {
  source_.plain = sum(source_.plain, squared_magnitude(q));
  ++source_.roundings;
}

void Way::plain_product(double factor) {
  if (is_exact_factor(factor)) return;
  source_.plain = sum(source_.plain, constant(factor * factor));
  ++source_.roundings;
}

void Way::shaped(const CosinePolynomial &p) {
  source_.shaped = sum(source_.shaped, p);
  ++source_.roundings;
}

void Way::shaped_product(double factor, const Trinomial &q) {
  if (!is_exact_factor(factor)) shaped(times(q, factor));
}

}  // namespace analysis
