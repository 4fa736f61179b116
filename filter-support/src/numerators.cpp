#include "filtermath/numerators.h"

#include <algorithm>
#include <cmath>

#include "filtermath/known_symbol.h"
#include "filtermath/poly.h"
#include "filtermath/tzero.h"
#include "owners.h"
#include "platform.h"
#include "zero_places.h"

using filtermath::Matrix;

namespace {

using Complex = std::complex<double>;

constexpr double pi = 3.141592653589793;

// The zeros of an all-pole design, in turns: (z^2 - 1)^k grows no larger than the numerator
// of a bandpass, (z - 1)^k does.
t_complex64list placed_zeros(t_symbol *response, int order, double wo) {
  const auto [first, second] = filtermath::zero_places(response, wo);
  const bool band = response == filtermath::required_symbol<"bandpass">() ||
                    response == filtermath::required_symbol<"bandstop">();
  t_complex64list zeros(static_cast<std::size_t>(std::max(order, 0)) * (band ? 2 : 1), second);
  for (std::size_t k = 0; k < zeros.size(); k += 2) zeros[k] = first;
  return zeros;
}

// The frequency at which the numerator is scaled.
double reference_frequency(t_symbol *response, double wo) {
  if (response == filtermath::required_symbol<"highpass">()) return pi;
  if (response == filtermath::required_symbol<"bandpass">()) return 2.0 * std::atan2(wo, 4.0);
  return 0.0;
}

// sum(coefficients[k] cos(k w)): a polynomial's real part at w. For a
// bandpass the imaginary part counts too, and is left out all the same.
double cosine_sum(const double *coefficients, int32_t count, double w) {
  Matrix cosines;
  Matrix column;
  Matrix sum;
  matrix64_resize(cosines, count, 1);
  matrix64_resize(column, 1, count);
  for (int32_t k = 0; k < count; ++k) cosines->data[k] = std::cos(k * w);
  std::copy_n(coefficients, count, column->data);
  matrix64_multiply_correctly(sum, column, cosines);
  return sum->data[0];
}

void scaled_numerator(t_symbol *response, int order, const double *den, double **num,
                      int64_t *num_count, double wo, double level) {
  const double reference = reference_frequency(response, wo);
  t_complex64list expanded;
  filtermath_poly(placed_zeros(response, order, wo), expanded);
  const auto count = static_cast<int64_t>(expanded.size());
  filtermath::Block block = filtermath::new_block(count);
  std::transform(expanded.begin(), expanded.end(), block.get(),
                 [](const Complex &coefficient) { return coefficient.real(); });
  const auto length = static_cast<int32_t>(count);
  const double scale =
      cosine_sum(den, length, reference) / cosine_sum(block.get(), length, reference) * level;
  std::for_each_n(block.get(), count, [scale](double &coefficient) { coefficient *= scale; });
  *num = block.release();
  *num_count = count;
}

}  // namespace

void filtermath_buttnum(t_symbol *response, int order, const double *den, int64_t /*den_count*/,
                        double **num, int64_t *num_count, double wo) {
  scaled_numerator(response, order, den, num, num_count, wo, 1.0);
}

void filtermath_cheby1num(t_symbol *response, int order, const double *den, int64_t /*den_count*/,
                          double **num, int64_t *num_count, double wo, double passband_ripple) {
  const double level = order % 2 == 0 ? filtermath::power_of_ten(-0.05 * passband_ripple) : 1.0;
  scaled_numerator(response, order, den, num, num_count, wo, level);
}

void filtermath_cheby2num(const _statespace *ss, double **num, int64_t *num_count) {
  t_zpk reduced{};
  filtermath_ss_tzero(ss, &reduced, true);
  const auto count = static_cast<int64_t>(reduced.zeros.size());
  filtermath::Block block = filtermath::new_block(count);
  std::transform(reduced.zeros.begin(), reduced.zeros.end(), block.get(),
                 [&](const Complex &coefficient) { return reduced.gain * coefficient.real(); });
  *num = block.release();
  *num_count = count;
}
