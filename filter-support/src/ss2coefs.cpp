#include "filtermath/ss2coefs.h"

#include <algorithm>

#include "filtermath/poly.h"
#include "owners.h"

void filtermath_ss2coefs(const _statespace *ss, double ** /*num*/, int64_t * /*num_count*/,
                         double **den, int64_t *den_count) {
  filtermath::Matrix coefficients;
  filtermath_poly(ss->a, coefficients);
  const int64_t count = coefficients->rows;
  filtermath::Block block = filtermath::new_block(count);
  std::copy_n(coefficients->data, count, block.get());
  *den_count = count;
  *den = block.release();
}
