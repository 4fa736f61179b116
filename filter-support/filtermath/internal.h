// What the sources of filtermath share and nobody else needs.
#ifndef FILTERMATH_INTERNAL_H
#define FILTERMATH_INTERNAL_H

#include <memory>
#include <new>

#include "brontal/memory.h"
#include "filtermath/analog.h"
#include "filtermath/coefficients.h"
#include "filtermath/digital.h"
#include "filtermath/poly.h"

namespace filtermath {

// --- platform.cpp: what the standard library does not offer everywhere -------

/** @return 10^x. */
double power_of_ten(double x);

/** @return the point at an angle on the unit circle: (cos, sin). */
std::complex<double> unit_circle(double angle);

// --- dense.cpp: the only user of Eigen ---------------------------------------

/**
 * The inverse of a square matrix of n x n, n of at least 1.
 * @param src, dst  row after row; may be the same
 */
void inverse(const double *src, double *dst, int32_t n);

/**
 * The eigenvalues of a square matrix, as many as it has rows. Where they cannot
 * be computed (an element is not finite, or the iteration does not converge)
 * each is NaN.
 */
t_complex64list eigenvalues(const _matrix64 *matrix);

/** The eigenvalues of bf^-1 af, as above, for two matrices of the same square shape. */
t_complex64list pencil_eigenvalues(const _matrix64 *af, const _matrix64 *bf);

// --- roots.cpp ---------------------------------------------------------------

/** @return whether a root counts as real: an imaginary part of 0.0, or NaN. */
bool is_real(const std::complex<double> &root);

/** Sorts with `complex64_cmp`. Values that have no order, NaNs, go last. */
void sort_roots(t_complex64list &roots);

/** Sorts with `complex64pair_cmp`; equal keys keep their order, NaNs go last. */
void sort_pairs(std::vector<t_complex64pair> &pairs);

// --- owning pointers ---------------------------------------------------------

struct MatrixDeleter {
  void operator()(_matrix64 *matrix) const { matrix64_free(matrix); }
};
struct BlockDeleter {
  void operator()(double *block) const { sysmem_freeptr(block); }
};

using MatrixPointer = std::unique_ptr<_matrix64, MatrixDeleter>;

/** A new empty matrix for the time of a computation; use it as a pointer. */
class Matrix {
 public:
  Matrix() : matrix_(matrix64_new()) {}
  operator _matrix64 *() const { return matrix_.get(); }
  _matrix64 *operator->() const { return matrix_.get(); }

 private:
  MatrixPointer matrix_;
};

/** A block of doubles from the host, its contents undefined. */
using Block = std::unique_ptr<double, BlockDeleter>;

/** @return a block of `count` doubles; raises std::bad_alloc. */
inline Block new_block(int64_t count) {
  void *block = sysmem_newptr(count * static_cast<t_long>(sizeof(double)));
  if (block == nullptr) throw std::bad_alloc();
  return Block(static_cast<double *>(block));
}

}  // namespace filtermath

#endif
