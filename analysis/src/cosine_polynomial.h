/** Squared magnitudes on the unit circle, as polynomials that keep their digits near one end. */
#ifndef ANALYSIS_COSINE_POLYNOMIAL_H
#define ANALYSIS_COSINE_POLYNOMIAL_H

#include <array>
#include <cstddef>

namespace analysis {

/** p[0] + p[1] c + ... + p[4] c^4, where c = 1 - cos(angle). */
using CosinePolynomial = std::array<double, 5>;

/**
 * q0 + q1 / z + q2 / z^2 by what keeps its digits near z = 1. On the unit circle, times z, it is
 * at_one - ends c + j slant sin(angle).
 */
struct Trinomial {
  double at_one; /**< q0 + q1 + q2 */
  double ends;   /**< q0 + q2 */
  double slant;  /**< q0 - q2 */
};

/** The trinomial with z replaced by -z. */
inline Trinomial turned_round(const Trinomial &q) {
  return {2 * q.ends - q.at_one, q.ends, q.slant};
}

inline Trinomial times(const Trinomial &q, double factor) {
  return {q.at_one * factor, q.ends * factor, q.slant * factor};
}

inline Trinomial sum(const Trinomial &x, const Trinomial &y) {
  return {x.at_one + y.at_one, x.ends + y.ends, x.slant + y.slant};
}

inline Trinomial difference(const Trinomial &x, const Trinomial &y) { return sum(x, times(y, -1)); }

inline CosinePolynomial constant(double value) { return {value, 0, 0, 0, 0}; }

/** |q|^2, as (at_one - ends c)^2 + slant^2 (2 - c) c. */
inline CosinePolynomial squared_magnitude(const Trinomial &q) {
  const double slant = q.slant * q.slant;
  return {q.at_one * q.at_one, 2 * (slant - q.at_one * q.ends), q.ends * q.ends - slant, 0, 0};
}

inline CosinePolynomial sum(const CosinePolynomial &x, const CosinePolynomial &y) {
  CosinePolynomial out{};
  for (std::size_t i = 0; i < out.size(); ++i) out[i] = x[i] + y[i];
  return out;
}

inline CosinePolynomial times(const CosinePolynomial &x, double factor) {
  CosinePolynomial out{};
  for (std::size_t i = 0; i < out.size(); ++i) out[i] = x[i] * factor;
  return out;
}

/** The product of two of second degree. */
inline CosinePolynomial product(const CosinePolynomial &x, const CosinePolynomial &y) {
  CosinePolynomial out{};
  for (std::size_t i = 0; i < 3; ++i)
    for (std::size_t k = 0; k < 3; ++k) out[i + k] += x[i] * y[k];
  return out;
}

/** The polynomial with its powers replaced by their means. */
inline double mean(const CosinePolynomial &p, const std::array<double, 5> &moments) {
  double value = 0;
  for (std::size_t i = 0; i < p.size(); ++i) value += p[i] * moments[i];
  return value > 0 ? value : 0;
}

inline double at(const CosinePolynomial &p, double c) {
  const double value = p[0] + c * (p[1] + c * (p[2] + c * (p[3] + c * p[4])));
  return value > 0 ? value : 0;
}

}  // namespace analysis

#endif
