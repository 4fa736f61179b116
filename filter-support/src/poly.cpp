#include "filtermath/poly.h"

#include <algorithm>

#include "expansion.h"
#include "irreducible.h"

void filtermath_poly(const t_complex64list &roots, t_complex64list &coefficients) {
  coefficients.assign(roots.size() + 1, 0.0);
  coefficients[0] = 1.0;
  for (std::size_t i = 0; i < roots.size(); ++i)
    filtermath::multiply_by_root(coefficients.data(), i, roots[i]);
}

int filtermath_poly(const _matrix64 *matrix, _matrix64 *coefficients) {
  if (matrix->cols != matrix->rows) return -1;
  t_complex64list expanded;
  filtermath_poly(filtermath::eigenvalues(matrix), expanded);
  matrix64_resize(coefficients, 1, static_cast<int32_t>(expanded.size()));
  std::transform(expanded.begin(), expanded.end(), coefficients->data,
                 [](const std::complex<double> &coefficient) { return coefficient.real(); });
  return 0;
}
