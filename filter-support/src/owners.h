// Owners of what filtermath allocates in the course of a computation.
#ifndef FILTERMATH_SRC_OWNERS_H
#define FILTERMATH_SRC_OWNERS_H

#include <cstdint>
#include <memory>
#include <new>

#include "brontal/memory.h"
#include "filtermath/matrix64.h"

namespace filtermath {

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

/** A block of doubles from the host, its contents undefined. */
using Block = std::unique_ptr<double, BlockDeleter>;

/** @return a block of `count` doubles, perhaps null for a count of 0; raises std::bad_alloc. */
inline Block new_block(int64_t count) {
  void *block = sysmem_newptr(count * static_cast<t_long>(sizeof(double)));
  if (block == nullptr && count != 0) throw std::bad_alloc();
  return Block(static_cast<double *>(block));
}

}  // namespace filtermath

#endif
