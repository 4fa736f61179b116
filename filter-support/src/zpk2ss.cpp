#include "filtermath/zpk2ss.h"

#include <algorithm>
#include <cmath>

#include "expansion.h"
#include "roots.h"

namespace {

using Complex = std::complex<double>;

// One second-order section in controllable form, its second state scaled by
// wn so that both have the same magnitude.
struct Section {
  double a[2][2];
  double c[2];
  double d;
};

// The denominator (s - p1)(s - p2) = s^2 + a1 s + a2, and the scale of the
// section's second state.
struct Denominator {
  double a1;
  double a2;
  double scale;
};

Denominator denominator(const Complex &p1, const Complex &p2) {
  const auto [a1, a2] = filtermath::quadratic(p1, p2);
  const double wn = std::sqrt(std::hypot(p1.real(), p1.imag()) * std::hypot(p2.real(), p2.imag()));
  return {a1, a2, wn == 0.0 ? 1.0 : 1.0 / wn};
}

Section section_with_zeros(const Denominator &den, const Complex &z1, const Complex &z2) {
  const auto [b1, b2] = filtermath::quadratic(z1, z2);
  return {{{-den.a1, -den.a2 * den.scale}, {1.0 / den.scale, 0.0}},
          {b1 - den.a1, (b2 - den.a2) * den.scale},
          1.0};
}

Section section_without_zeros(const Denominator &den) {
  return {{{-den.a1, -den.a2 * den.scale}, {1.0 / den.scale, 0.0}}, {0.0, den.scale}, 0.0};
}

// Complex poles by the ordering of roots, then the real ones, exactly real.
t_complex64list in_section_order(t_complex64list poles) {
  filtermath::sort_roots(poles);
  filtermath::join_conjugates(poles);
  const auto real = std::stable_partition(
      poles.begin(), poles.end(), [](const Complex &pole) { return !filtermath::is_real(pole); });
  std::for_each(real, poles.end(), [](Complex &pole) { pole = pole.real(); });
  return poles;
}

// Puts the section behind what the model holds in its first s states: it is
// driven by their output, and the model's output becomes its own.
void append(_statespace *model, int32_t s, const Section &section) {
  double &d = model->d->data[0];
  double *c = model->c->data;
  for (int32_t j = 0; j < s; ++j) {
    matrix64_set(model->a, j, s, c[j]);
    c[j] *= section.d;
  }
  for (int32_t row = 0; row < 2; ++row) {
    for (int32_t column = 0; column < 2; ++column)
      matrix64_set(model->a, s + column, s + row, section.a[row][column]);
    c[s + row] = section.c[row];
  }
  model->b->data[s] = s > 0 ? d : 1.0;
  d *= section.d;
}

void reshape(_statespace *model, int32_t n) {
  matrix64_resize(model->a, n, n);
  matrix64_resize(model->b, 1, n);
  matrix64_resize(model->c, n, 1);
  matrix64_resize(model->d, 1, 1);
  for (_matrix64 *matrix : {model->a, model->b, model->c, model->d}) matrix64_clear(matrix);
}

}  // namespace

void filtermath_zpk2ss(const t_zpk *zpk, _statespace *model) {
  const t_complex64list &zeros = zpk->zeros;
  const t_complex64list poles = in_section_order(zpk->poles);
  const auto n = static_cast<int32_t>(poles.size());
  reshape(model, n);
  model->d->data[0] = 1.0;

  int32_t s = 0;
  if (n % 2 == 1) {
    model->a->data[0] = poles.back().real();
    model->b->data[0] = 1.0;
    model->c->data[0] = 1.0;
    model->d->data[0] = 0.0;
    s = 1;
  }

  // Section by section, the poles are taken from the front and the zeros from
  // the back.
  const std::size_t paired = poles.size() - poles.size() % 2;
  for (std::size_t k = 0; k < paired; k += 2, s += 2) {
    const Denominator den = denominator(poles[k], poles[k + 1]);
    const bool has_zeros = k + 1 < zeros.size();
    append(model, s,
           has_zeros
               ? section_with_zeros(den, zeros[zeros.size() - k - 2], zeros[zeros.size() - k - 1])
               : section_without_zeros(den));
  }

  matrix64_scale(model->c, model->c, zpk->gain);
  matrix64_scale(model->d, model->d, zpk->gain);
}
