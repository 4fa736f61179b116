#include "factored_response.h"

#include "double_double.h"
#include "unit_circle.h"

namespace analysis {
namespace {

// Horner's rule.
template <class Real>
WideComplex polynomial_at(const Direction<Real> &z, const std::vector<double> &coefficients) {
  Real re = 0, im = 0;
  for (const double coefficient : coefficients) {
    const Real next = re * z.cos - im * z.sin + coefficient;
    im = re * z.sin + im * z.cos;
    re = next;
  }
  return {static_cast<Wide>(re), static_cast<Wide>(im)};
}

// A polynomial cancels so much that its digits have to come from somewhere.
auto precise_direction(double w) {
  if constexpr (wide_is_double) {
    const auto [cos, sin] = extended_direction(w);
    return Direction<DoubleDouble>{double_double(cos), double_double(sin)};
  } else {
    const CirclePoint z = circle_point(w);
    return Direction<Wide>{z.cos, z.sin};
  }
}

}  // namespace

ScaledProduct factored_response(const Roots &filter, double w) {
  const CirclePoint z = circle_point(w);
  ScaledProduct product;
  product.multiply(filter.gain);
  for (const Complex &zero : filter.zeros) product.multiply(from_root(z, zero));
  for (const Complex &pole : filter.poles) product.divide(from_root(z, pole));
  return product;
}

ScaledProduct factored_response(const Sections &filter, double w) {
  const CirclePoint z = circle_point(w);
  ScaledProduct product;
  for (const Section &section : filter) {
    product.multiply(quadratic_at(z, section.b0, section.b1, section.b2));
    product.divide(quadratic_at(z, 1.0, section.a1, section.a2));
  }
  return product;
}

ScaledProduct factored_response(const Transfer &filter, double w) {
  const auto z = precise_direction(w);
  ScaledProduct product;
  product.multiply(polynomial_at(z, filter.numerator));
  product.divide(polynomial_at(z, filter.denominator));
  return product;
}

}  // namespace analysis
