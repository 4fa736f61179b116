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

// --- components.cpp ----------------------------------------------------------

/** Sets of states: set k is states[begins[k]] to states[begins[k + 1] - 1], ascending. */
struct Components {
  std::vector<int32_t> states;
  std::vector<int32_t> begins;
};

/**
 * The strongly connected components of the graph in which state i leads to j
 * where element (row i, column j) is not 0, in an order in which each leads to
 * itself and to earlier ones only.
 * @param matrix  n x n, row after row
 */
Components components(const double *matrix, int32_t n);

// --- irreducible.cpp: the only user of Eigen ---------------------------------

/**
 * What `matrix64_inverse` does for a square matrix of at least one row. dst is
 * untouched until nothing can fail any more but its own reshaping.
 */
void inverse(_matrix64 *dst, const _matrix64 *src);

/**
 * The eigenvalues of a square matrix, as many as it has rows, in an order that
 * expands well. Where they cannot be computed (an element is not finite, or the
 * iteration does not converge) each is NaN.
 */
t_complex64list eigenvalues(const _matrix64 *matrix);

// --- product.cpp -------------------------------------------------------------

/**
 * Elements `begin` to `end` - 1 of a row, none of them zero. One that begins at the
 * row's end is none, and closes the row.
 */
struct Run {
  int32_t begin;
  int32_t end;
};

/** @return the runs of a matrix of rows x cols, row after row. */
std::vector<Run> runs_of(const double *matrix, int32_t rows, int32_t cols);

/**
 * Adds a product to what `sum` holds, each element's terms in their order. Factors
 * that are 0 are left out, so all others must be finite. Nothing is allocated.
 * @param a     rows x inner, row after row
 * @param b     inner x cols
 * @param runs  those of b
 * @param sum   rows x cols; none of the factors
 */
void add_product(const double *a, const double *b, const std::vector<Run> &runs, double *sum,
                 int32_t rows, int32_t inner, int32_t cols);

/** @return whether `count` elements are numbers and none is infinite. */
bool all_finite(const double *elements, int64_t count);

// --- roots.cpp ---------------------------------------------------------------

/** @return whether a root counts as real: an imaginary part of 0.0, or NaN. */
bool is_real(const std::complex<double> &root);

/** Sorts with `complex64_cmp`. Values that have no order, NaNs, go last. */
void sort_roots(t_complex64list &roots);

/**
 * Makes the members of each conjugate pair neighbours in a sorted list, the upper
 * first. They are so already, but where several pairs share a real part.
 */
void join_conjugates(t_complex64list &sorted);

/**
 * Reorders roots so that `filtermath_poly` keeps its partial products small:
 * conjugate pairs, from both ends of the list in turn.
 * @param roots  conjugates are neighbours
 */
t_complex64list in_expanding_order(t_complex64list roots);

/** Sorts with `complex64pair_cmp`; equal keys keep their order, NaNs go last. */
void sort_pairs(std::vector<t_complex64pair> &pairs);

// --- symbols and owning pointers ---------------------------------------------------------

/**
 * @return the symbol with this text; raises std::bad_alloc. A null symbol would
 * make one comparison of a design fail and the next one not.
 */
inline t_symbol *symbol(const char *text) {
  t_symbol *interned = gensym(text);
  if (interned == nullptr) throw std::bad_alloc();
  return interned;
}

struct StatespaceDeleter {
  void operator()(_statespace *model) const { statespace_free(model); }
};
struct BlockDeleter {
  void operator()(double *block) const { sysmem_freeptr(block); }
};

/** An empty matrix for the time of a computation; use it as a pointer. */
class Matrix {
 public:
  Matrix() = default;
  Matrix(const Matrix &) = delete;
  Matrix &operator=(const Matrix &) = delete;
  ~Matrix() { sysmem_freeptr(matrix_.data); }
  operator _matrix64 *() { return &matrix_; }
  _matrix64 *operator->() { return &matrix_; }

 private:
  _matrix64 matrix_{};
};

/** A model of empty matrices, likewise. */
class Statespace {
 public:
  Statespace() : model_(statespace_new()) {}
  operator _statespace *() const { return model_.get(); }
  _statespace *operator->() const { return model_.get(); }

 private:
  std::unique_ptr<_statespace, StatespaceDeleter> model_;
};

// --- series.cpp --------------------------------------------------------------

/** One section of a series: which states of the whole model are its, and a model of its own. */
struct Section {
  std::vector<int32_t> states;
  Statespace model;
};

/** Sections, the first driven by the input and each other one by the one before it. */
using Series = std::vector<Section>;

/**
 * Takes a model apart that is a series of two or more sections, each a component of A.
 * Every number of the model is held against the product that a series has there, to
 * within a few roundings for each of its factors. Time grows with the square of the
 * number of states.
 * @param ss  a one-input, one-output model
 * @return nothing if A is a single component or the model no such series
 */
Series sections_of(const _statespace *ss);

/** Makes `ss` the model of a series, reshaping it: the inverse of `sections_of`. */
void connect(const Series &series, _statespace *ss);

/**
 * Transforms a model in place: each section by itself if it is a series, which keeps
 * digits that the whole loses.
 * @param transform  of a `_statespace *`; the same to a series as to its sections
 */
template <typename Transform>
void transform_sections(_statespace *ss, const Transform &transform) {
  Series series = sections_of(ss);
  if (series.empty()) return transform(ss);
  for (Section &section : series) transform(section.model);
  connect(series, ss);
}

/** A block of doubles from the host, its contents undefined. */
using Block = std::unique_ptr<double, BlockDeleter>;

/** @return a block of `count` doubles, which may be null for none; raises std::bad_alloc. */
inline Block new_block(int64_t count) {
  void *block = sysmem_newptr(count * static_cast<t_long>(sizeof(double)));
  if (block == nullptr && count != 0) throw std::bad_alloc();
  return Block(static_cast<double *>(block));
}

}  // namespace filtermath

#endif
