// Matrices and models of a shape that is known from the start. Those of a section, of which a design
// makes dozens, need no memory.
#ifndef FILTERMATH_SRC_SHAPED_H
#define FILTERMATH_SRC_SHAPED_H

#include <array>
#include <cstddef>
#include <cstdint>

#include "filtermath/statespace.h"
#include "owners.h"

namespace filtermath {

/**
 * A matrix for the time of a computation, its elements undefined; use it as a pointer. It keeps its
 * shape: its elements may not be the host's, so that nobody may resize them.
 */
class Shaped {
 public:
  /** Raises std::bad_alloc if it is large. */
  Shaped(int32_t cols, int32_t rows) : matrix_{cols, rows, cols * rows, room_.data()} {
    if (static_cast<std::size_t>(matrix_.capacity) <= room_.size()) return;
    large_ = new_block(matrix_.capacity);
    matrix_.data = large_.get();
  }
  Shaped(const Shaped &) = delete;
  Shaped &operator=(const Shaped &) = delete;
  operator _matrix64 *() { return &matrix_; }
  _matrix64 *operator->() { return &matrix_; }

 private:
  std::array<double, 16> room_{};
  Block large_;
  _matrix64 matrix_;
};

/** A model of such matrices, likewise. */
class ShapedModel {
 public:
  explicit ShapedModel(int32_t n) : a_(n, n), b_(1, n), c_(n, 1), d_(1, 1) {}
  operator _statespace *() { return &model_; }

 private:
  Shaped a_;
  Shaped b_;
  Shaped c_;
  Shaped d_;
  _statespace model_{a_, b_, c_, d_};
};

}  // namespace filtermath

#endif
