#include "analysis/response.h"

#include <numbers>

#include "evaluate.h"

namespace analysis {
namespace {

constexpr Wide db_per_w =
    20 / std::numbers::ln10_v<Wide> * std::numbers::pi_v<Wide>;  // of d ln|H| / d angle

Wide root_slope(const Point &z, const Complex &root) {
  return logarithmic_slope(from_root(z, root), {-z.sin, z.cos});
}

Wide quadratic_slope(const Point &z, double c0, double c1, double c2) {
  const Wide first = c0;
  return logarithmic_slope(quadratic_at(z, c0, c1, c2),
                           {-(first + c2) * z.sin, (first - c2) * z.cos});
}

// Horner's rule.
WideComplex polynomial_at(const Point &z, const std::vector<double> &coefficients) {
  Wide re = 0, im = 0;
  for (const double coefficient : coefficients) {
    const Wide next = re * z.cos - im * z.sin + coefficient;
    im = re * z.sin + im * z.cos;
    re = next;
  }
  return {re, im};
}

}  // namespace

Product evaluate(const Roots &filter, double w) {
  const Point z = point_at(w);
  Product product;
  product.multiply(filter.gain);
  for (const Complex &zero : filter.zeros) product.multiply(from_root(z, zero));
  for (const Complex &pole : filter.poles) product.divide(from_root(z, pole));
  return product;
}

Product evaluate(const Sections &filter, double w) {
  const Point z = point_at(w);
  Product product;
  for (const Section &section : filter) {
    product.multiply(quadratic_at(z, section.b0, section.b1, section.b2));
    product.divide(quadratic_at(z, 1.0, section.a1, section.a2));
  }
  return product;
}

Product evaluate(const Transfer &filter, double w) {
  const Point z = point_at(w);
  Product product;
  product.multiply(polynomial_at(z, filter.numerator));
  product.divide(polynomial_at(z, filter.denominator));
  return product;
}

Complex response(const Roots &filter, double w) { return evaluate(filter, w).value(); }
Complex response(const Sections &filter, double w) { return evaluate(filter, w).value(); }
Complex response(const Transfer &filter, double w) { return evaluate(filter, w).value(); }

double level_db(const Roots &filter, double w) { return evaluate(filter, w).db(); }
double level_db(const Sections &filter, double w) { return evaluate(filter, w).db(); }
double level_db(const Transfer &filter, double w) { return evaluate(filter, w).db(); }

double level_slope(const Roots &filter, double w) {
  const Point z = point_at(w);
  Wide slope = 0;
  for (const Complex &zero : filter.zeros) slope += root_slope(z, zero);
  for (const Complex &pole : filter.poles) slope -= root_slope(z, pole);
  return static_cast<double>(db_per_w * slope);
}

double level_slope(const Sections &filter, double w) {
  const Point z = point_at(w);
  Wide slope = 0;
  for (const Section &section : filter) {
    slope += quadratic_slope(z, section.b0, section.b1, section.b2);
    slope -= quadratic_slope(z, 1.0, section.a1, section.a2);
  }
  return static_cast<double>(db_per_w * slope);
}

}  // namespace analysis
