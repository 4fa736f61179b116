/**
 * Twice the digits of double, from pairs of doubles, for sums of products that cancel where nothing
 * wider is fast. No fused multiply-add is used, which may be slower still.
 * Source: Dekker, "A Floating-Point Technique for Extending the Available Precision" (1971).
 */
#ifndef ANALYSIS_DOUBLE_DOUBLE_H
#define ANALYSIS_DOUBLE_DOUBLE_H

#include <cmath>

#include "wide.h"

namespace analysis {

/** high + low, where `low` is at most half a unit in the last place of `high`. */
struct DoubleDouble {
  double high = 0.0;
  double low = 0.0;

  DoubleDouble() = default;
  DoubleDouble(double value) : high(value) {}
  DoubleDouble(double larger, double smaller)
      : high(larger + smaller), low(smaller - (high - larger)) {}

  explicit operator double() const { return high; }
};

/** @return an extended number, as many of its digits as two doubles hold. */
inline DoubleDouble double_double(Extended value) {
  const auto high = static_cast<double>(value);
  return {high, static_cast<double>(value - high)};
}

inline DoubleDouble operator+(const DoubleDouble &x, const DoubleDouble &y) {
  const double sum = x.high + y.high;
  const double added = sum - x.high;
  const double error = (x.high - (sum - added)) + (y.high - added);
  return {sum, error + (x.low + y.low)};
}

inline DoubleDouble operator-(const DoubleDouble &x) {
  DoubleDouble negative;
  negative.high = -x.high;
  negative.low = -x.low;
  return negative;
}

inline DoubleDouble operator-(const DoubleDouble &x, const DoubleDouble &y) { return x + -y; }

/** The product of two doubles is that of their halves, each of which is exact. Numbers too large
 *  to be halved, beyond some 1e299, keep the digits of double. */
inline DoubleDouble operator*(const DoubleDouble &x, const DoubleDouble &y) {
  constexpr double splitter = 0x1p27 + 1;
  const auto upper_half = [](double value) {
    const double far = splitter * value;
    return far - (far - value);
  };
  const double product = x.high * y.high;
  const double x1 = upper_half(x.high), x2 = x.high - x1;
  const double y1 = upper_half(y.high), y2 = y.high - y1;
  const double error = x2 * y2 - (((product - x1 * y1) - x2 * y1) - x1 * y2);
  if (!std::isfinite(error)) return product;
  return {product, error + (x.high * y.low + x.low * y.high)};
}

}  // namespace analysis

#endif
