#include "scaled_product.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "constants.h"

namespace analysis {
namespace {

// The product of two numbers within these bounds, and its square, are far from both
// ends of the range even of a double.
constexpr Wide large = 0x1p120;
constexpr Wide small = 0x1p-120;

Wide largest_part(const WideComplex &value) {
  return std::max(std::fabs(value.real()), std::fabs(value.imag()));
}

// The exponent of the power of two to take out of a value that leaves the bounds.
int surplus_exponent(const WideComplex &value) {
  const Wide size = largest_part(value);
  if (!(size > large || size < small) || size == 0 || std::isinf(size)) return 0;
  int exponent = 0;
  std::frexp(size, &exponent);
  return exponent;
}

WideComplex without_exponent(const WideComplex &value, int exponent) {
  if (exponent == 0) return value;
  return {std::ldexp(value.real(), -exponent), std::ldexp(value.imag(), -exponent)};
}

WideComplex plain_product(const WideComplex &x, const WideComplex &y) {
  return {x.real() * y.real() - x.imag() * y.imag(), x.real() * y.imag() + x.imag() * y.real()};
}

Wide squared(const WideComplex &value) {
  return value.real() * value.real() + value.imag() * value.imag();
}

}  // namespace

void ScaledProduct::Scaled::multiply(const WideComplex &factor) {
  const int of_factor = surplus_exponent(factor);
  const WideComplex product = plain_product(mantissa, without_exponent(factor, of_factor));
  const int of_product = surplus_exponent(product);
  mantissa = without_exponent(product, of_product);
  exponent += of_factor + of_product;
}

void ScaledProduct::multiply(const WideComplex &factor) { numerator_.multiply(factor); }

void ScaledProduct::divide(const WideComplex &factor) { denominator_.multiply(factor); }

WideComplex ScaledProduct::quotient() const {
  const WideComplex product = plain_product(numerator_.mantissa, std::conj(denominator_.mantissa));
  const Wide size = squared(denominator_.mantissa);
  return {product.real() / size, product.imag() / size};
}

Complex ScaledProduct::value() const {
  const WideComplex mantissa = quotient();
  const int exponent =
      static_cast<int>(std::clamp(numerator_.exponent - denominator_.exponent, -100000L, 100000L));
  return {static_cast<double>(std::ldexp(mantissa.real(), exponent)),
          static_cast<double>(std::ldexp(mantissa.imag(), exponent))};
}

double ScaledProduct::db() const {
  const Wide mantissa =
      10 * std::log10(squared(numerator_.mantissa) / squared(denominator_.mantissa));
  const auto exponent = static_cast<Wide>(numerator_.exponent - denominator_.exponent);
  return static_cast<double>(mantissa + exponent * 20 * ln2<Wide> / ln10<Wide>);
}

double ScaledProduct::angle() const {
  const WideComplex mantissa = quotient();
  const auto angle = static_cast<double>(std::atan2(mantissa.imag(), mantissa.real()));
  return angle <= -std::numbers::pi ? std::numbers::pi : angle;
}

}  // namespace analysis
