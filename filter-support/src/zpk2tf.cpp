#include "filtermath/zpk2tf.h"

#include <algorithm>

#include "filtermath/poly.h"
#include "owners.h"

namespace {

filtermath::Block scaled_expansion(const t_complex64list &roots, double factor) {
  t_complex64list expanded;
  filtermath_poly(roots, expanded);
  filtermath::Block block = filtermath::new_block(static_cast<int64_t>(expanded.size()));
  std::transform(expanded.begin(), expanded.end(), block.get(),
                 [factor](const auto &coefficient) { return factor * coefficient.real(); });
  return block;
}

}  // namespace

void filtermath_zpk2tf(const t_zpk *zpk, void * /*unused*/, double **b, int64_t *b_count,
                       double **a, int64_t *a_count) {
  filtermath::Block numerator = scaled_expansion(zpk->zeros, zpk->gain);
  filtermath::Block denominator = scaled_expansion(zpk->poles, 1.0);
  *b = numerator.release();
  *b_count = static_cast<int64_t>(zpk->zeros.size()) + 1;
  *a = denominator.release();
  *a_count = static_cast<int64_t>(zpk->poles.size()) + 1;
}
