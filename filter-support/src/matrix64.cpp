// The assertion in `matrix64_multiply` guards memory: it holds in every build.
#undef NDEBUG
#include "filtermath/matrix64.h"

#include <algorithm>
#include <cassert>
#include <new>

#include "brontal/memory.h"
#include "irreducible.h"
#include "owners.h"
#include "sparse_product.h"

namespace {

int32_t element_count(int32_t cols, int32_t rows) {
  return static_cast<int32_t>(static_cast<uint32_t>(cols) * static_cast<uint32_t>(rows));
}

int32_t element_count(const _matrix64 *matrix) { return element_count(matrix->cols, matrix->rows); }

bool same_shape(const _matrix64 *a, const _matrix64 *b) {
  return a->cols == b->cols && a->rows == b->rows;
}

int64_t full_count(const _matrix64 *matrix) { return int64_t{matrix->cols} * matrix->rows; }

// Whether leaving out the zeros of b is worth it, and changes no element of the product: 0
// times what is not finite is not 0. The product must not be one of the factors.
bool is_plain(const _matrix64 *product, const _matrix64 *a, const _matrix64 *b) {
  constexpr int64_t few = 64;  // elements, multiplied sooner than looked at
  return full_count(b) > few && product != a && product != b &&
         filtermath::all_finite(a->data, full_count(a)) &&
         filtermath::all_finite(b->data, full_count(b));
}

}  // namespace

_matrix64 *matrix64_new() {
  void *record = sysmem_newptrclear(sizeof(_matrix64));
  if (record == nullptr) throw std::bad_alloc();
  return static_cast<_matrix64 *>(record);
}

void matrix64_free(_matrix64 *matrix) {
  sysmem_freeptr(matrix->data);
  sysmem_freeptr(matrix);
}

void matrix64_resize(_matrix64 *matrix, int32_t cols, int32_t rows) {
  if (matrix->cols == cols && matrix->rows == rows && matrix->data != nullptr) return;
  const int32_t count = element_count(cols, rows);
  const t_long size = t_long{count} * static_cast<t_long>(sizeof(double));
  // Hosts differ in what becomes of a block that is resized to nothing.
  const bool afresh = matrix->data == nullptr || count == 0;
  void *data = afresh ? sysmem_newptrclear(size) : sysmem_resizeptrclear(matrix->data, size);
  if (data == nullptr && count != 0) throw std::bad_alloc();
  if (afresh && matrix->data != nullptr) sysmem_freeptr(matrix->data);
  matrix->data = static_cast<double *>(data);
  matrix->cols = cols;
  matrix->rows = rows;
  matrix->capacity = count;
}

void matrix64_copy(_matrix64 *dst, const _matrix64 *src) {
  matrix64_resize(dst, src->cols, src->rows);
  std::copy_n(src->data, element_count(src), dst->data);
}

void matrix64_clear(_matrix64 *matrix) { std::fill_n(matrix->data, element_count(matrix), 0.0); }

double matrix64_get(const _matrix64 *matrix, int32_t i, int32_t j) {
  return matrix->data[j * matrix->cols + i];
}

void matrix64_set(_matrix64 *matrix, int32_t i, int32_t j, double value) {
  matrix->data[j * matrix->cols + i] = value;
}

void matrix64_identity(_matrix64 *matrix, int32_t n) {
  matrix64_resize(matrix, n, n);
  matrix64_clear(matrix);
  for (int32_t i = 0; i < n; ++i) matrix64_set(matrix, i, i, 1.0);
}

int matrix64_multiply(_matrix64 *product, const _matrix64 *a, const _matrix64 *b, bool checked) {
  if (a->cols != b->rows) return -1;
  const bool plain = (checked || a->rows == 1 || a->rows == b->cols) && is_plain(product, a, b);
  // Memory is asked for before the product changes.
  const auto runs =
      plain ? filtermath::runs_of(b->data, b->rows, b->cols) : std::vector<filtermath::Run>();
  matrix64_resize(product, b->cols, a->rows);
  matrix64_clear(product);
  if (plain && product->capacity == full_count(product)) {
    filtermath::add_product(a->data, b->data, runs, product->data, a->rows, a->cols, b->cols);
    return 0;
  }
  const int32_t row_length = checked ? b->cols : a->rows;
  for (int32_t i = 0; i < a->rows; ++i) {
    for (int32_t j = 0; j < b->cols; ++j) {
      const int32_t index = i * row_length + j;
      if (checked) {
        assert(index < product->capacity);
      } else if (index >= product->capacity) {
        continue;
      }
      double sum = product->data[index];
      for (int32_t k = 0; k < a->cols; ++k)
        sum += b->data[k * b->cols + j] * a->data[i * a->cols + k];
      product->data[index] = sum;
    }
  }
  return 0;
}

int matrix64_multiply_correctly(_matrix64 *product, const _matrix64 *a, const _matrix64 *b) {
  if (a->rows != b->cols) return -1;
  matrix64_resize(product, a->cols, b->rows);
  matrix64_clear(product);
  for (int32_t j = 0; j < b->rows; ++j)
    for (int32_t k = 0; k < a->rows; ++k)
      for (int32_t i = 0; i < a->cols; ++i)
        product->data[i * b->rows + j] += b->data[j * a->rows + k] * a->data[k * a->cols + i];
  return 0;
}

void matrix64_transpose(const _matrix64 *src, _matrix64 *dst) {
  matrix64_resize(dst, src->rows, src->cols);
  const int32_t count = element_count(src);
  for (int32_t r = 0; r < src->cols; ++r) {
    for (int32_t c = 0; c < src->rows; ++c) {
      const int32_t index = r * src->cols + c;
      dst->data[c * dst->rows + r] = index < count ? src->data[index] : 0.0;
    }
  }
}

int matrix64_inverse(_matrix64 *dst, const _matrix64 *src) {
  if (src->cols != src->rows) return -1;
  if (src->cols > 0)
    filtermath::inverse(dst, src);
  else
    matrix64_resize(dst, src->cols, src->rows);
  return 0;
}

int matrix64_divide_left(_matrix64 *result, const _matrix64 *a, const _matrix64 *b, bool checked) {
  filtermath::Matrix inverse;
  const int status = matrix64_inverse(inverse, a);
  return status == 0 ? matrix64_multiply(result, inverse, b, checked) : status;
}

int matrix64_divide_right(_matrix64 *result, const _matrix64 *a, const _matrix64 *b) {
  filtermath::Matrix inverse;
  const int status = matrix64_inverse(inverse, b);
  return status == 0 ? matrix64_multiply(result, a, inverse, false) : status;
}

int matrix64_scale(_matrix64 *dst, const _matrix64 *src, double s) {
  matrix64_resize(dst, src->cols, src->rows);
  const int32_t count = element_count(src);
  std::transform(src->data, src->data + std::max(count, 0), dst->data,
                 [s](double element) { return element * s; });
  return count;
}

int matrix64_add(_matrix64 *dst, const _matrix64 *a, const _matrix64 *b) {
  if (!same_shape(a, b)) return -1;
  matrix64_resize(dst, a->cols, a->rows);
  std::transform(a->data, a->data + element_count(a), b->data, dst->data,
                 [](double x, double y) { return y + x; });
  return 0;
}

int matrix64_subtract(_matrix64 *dst, const _matrix64 *a, const _matrix64 *b) {
  if (!same_shape(a, b)) return -1;
  matrix64_resize(dst, a->cols, a->rows);
  std::transform(a->data, a->data + element_count(a), b->data, dst->data,
                 [](double x, double y) { return x - y; });
  return 0;
}
