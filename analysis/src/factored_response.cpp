#include "factored_response.h"

#include "unit_circle.h"

namespace analysis {
namespace {

// Horner's rule.
WideComplex polynomial_at(const CirclePoint &z, const std::vector<double> &coefficients) {
  Wide re = 0, im = 0;
  for (const double coefficient : coefficients) {
    const Wide next = re * z.cos - im * z.sin + coefficient;
    im = re * z.sin + im * z.cos;
    re = next;
  }
  return {re, im};
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
  const CirclePoint z = circle_point(w);
  ScaledProduct product;
  product.multiply(polynomial_at(z, filter.numerator));
  product.divide(polynomial_at(z, filter.denominator));
  return product;
}

}  // namespace analysis
