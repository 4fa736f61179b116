#include "sparse_product.h"

#include <algorithm>
#include <cmath>

namespace filtermath {

std::vector<Run> runs_of(const double *matrix, int32_t rows, int32_t cols) {
  const auto zero = [](double element) { return element == 0.0; };
  std::vector<Run> runs;
  runs.reserve(3 * static_cast<std::size_t>(rows));
  const double *row = matrix;
  for (int32_t index = 0; index < rows; ++index, row += cols) {
    const double *const end = row + cols;
    const double *at = std::find_if_not(row, end, zero);
    while (at != end) {
      const double *const stop = std::find_if(at, end, zero);
      runs.push_back({static_cast<int32_t>(at - row), static_cast<int32_t>(stop - row)});
      at = std::find_if_not(stop, end, zero);
    }
    runs.push_back({cols, cols});
  }
  return runs;
}

// Row by row, so that the innermost loop walks along rows. What is left out adds zero.
void add_product(const double *a, const double *b, const std::vector<Run> &runs, double *sum,
                 int32_t rows, int32_t inner, int32_t cols) {
  for (int32_t row = 0; row < rows; ++row, sum += cols) {
    const Run *run = runs.data();
    const double *factors = b;
    for (int32_t k = 0; k < inner; ++k, ++a, ++run, factors += cols)
      for (; run->begin != cols; ++run)
        if (*a != 0.0)
          for (int32_t column = run->begin; column < run->end; ++column)
            sum[column] += factors[column] * *a;
  }
}

bool all_finite(const double *elements, int64_t count) {
  return std::all_of(elements, elements + count, [](double x) { return std::isfinite(x); });
}

}  // namespace filtermath
