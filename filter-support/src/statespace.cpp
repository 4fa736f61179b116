#include "filtermath/statespace.h"

#include <memory>
#include <new>

#include "brontal/memory.h"

namespace {

struct MatrixDeleter {
  void operator()(_matrix64 *matrix) const { matrix64_free(matrix); }
};
using MatrixPointer = std::unique_ptr<_matrix64, MatrixDeleter>;

}  // namespace

_statespace *statespace_new() {
  MatrixPointer a(matrix64_new());
  MatrixPointer b(matrix64_new());
  MatrixPointer c(matrix64_new());
  MatrixPointer d(matrix64_new());
  void *record = sysmem_newptrclear(sizeof(_statespace));
  if (record == nullptr) throw std::bad_alloc();
  return new (record) _statespace{a.release(), b.release(), c.release(), d.release()};
}

void statespace_free(_statespace *ss) {
  matrix64_free(ss->a);
  matrix64_free(ss->b);
  matrix64_free(ss->c);
  matrix64_free(ss->d);
  sysmem_freeptr(ss);
}
