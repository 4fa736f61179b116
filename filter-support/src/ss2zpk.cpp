#include "filtermath/ss2zpk.h"

#include "filtermath/known_symbol.h"
#include "filtermath/tzero.h"
#include "irreducible.h"
#include "owners.h"
#include "zero_places.h"

namespace {

using Complex = std::complex<double>;

filtermath::Block flatten(const t_complex64list &roots) {
  filtermath::Block block = filtermath::new_block(2 * static_cast<int64_t>(roots.size()));
  double *next = block.get();
  for (const Complex &root : roots) {
    *next++ = root.real();
    *next++ = root.imag();
  }
  return block;
}

// Hands both lists over; when memory runs out, neither.
void store(const t_complex64list &zero_list, const t_complex64list &pole_list, double **zeros,
           int64_t *zero_count, double **poles, int64_t *pole_count) {
  filtermath::Block flat_zeros = flatten(zero_list);
  filtermath::Block flat_poles = flatten(pole_list);
  *zeros = flat_zeros.release();
  *zero_count = 2 * static_cast<int64_t>(zero_list.size());
  *poles = flat_poles.release();
  *pole_count = 2 * static_cast<int64_t>(pole_list.size());
}

// In turns, except for a bandpass: one half, then the other.
t_complex64list placed_zeros(std::size_t n, t_symbol *response, double w0) {
  const auto [first, second] = filtermath::zero_places(response, w0);
  const bool halves = response == filtermath::required_symbol<"bandpass">();
  t_complex64list zeros(n, second);
  for (std::size_t k = 0; k < n; ++k)
    if (halves ? k < n / 2 : k % 2 == 0) zeros[k] = first;
  return zeros;
}

}  // namespace

void filtermath_ss2zpk(const _statespace *ss, double **zeros, int64_t *zero_count, double **poles,
                       int64_t *pole_count, double *gain) {
  t_zpk reduced{};
  filtermath_ss_tzero(ss, &reduced, false);
  store(reduced.zeros, filtermath::eigenvalues(ss->a), zeros, zero_count, poles, pole_count);
  *gain = reduced.gain;
}

void filtermath_ss2zpk_butterworth(const _statespace *ss, t_symbol *response, double **zeros,
                                   int64_t *zero_count, double **poles, int64_t *pole_count,
                                   double *gain, double w0) {
  const t_complex64list pole_list = filtermath::eigenvalues(ss->a);
  store(placed_zeros(pole_list.size(), response, w0), pole_list, zeros, zero_count, poles,
        pole_count);
  *gain = ss->d->data[0];
}
