// What a design computes, and the ways in which it can fail. For the sources of
// the module alone.
#ifndef VELTANE_FILTER_H
#define VELTANE_FILTER_H

#include <memory>
#include <new>
#include <optional>

#include "filtermath.h"
#include "filtermath/known_symbol.h"
#include "veltane.h"

namespace veltane {

struct Releases {
  void operator()(t_zpk *zpk) const { zpk_free(zpk); }
  void operator()(_statespace *ss) const { statespace_free(ss); }
  void operator()(t_atomarray *array) const { object_free(array); }
  void operator()(double *block) const { sysmem_freeptr(block); }
  void operator()(t_atom *block) const { sysmem_freeptr(block); }
};

template <typename T>
using Owned = std::unique_ptr<T, Releases>;

/** Results of filtermath: a block and how many doubles it holds. */
struct Values {
  Owned<double> block;
  int64_t count = 0;
};

struct TransferFunction {
  Values denominator;
  Values numerator;
};

struct Roots {
  Values zeros;
  Values poles;
  double gain = 0.0;
};

/** All that one design makes; what the switches turn off is absent. */
struct Filter {
  Owned<_statespace> model;
  Owned<t_zpk> prototype;
  std::optional<TransferFunction> transfer_function;
  std::optional<Roots> roots;
  std::optional<Values> cascade;
};

/** An operation of the host that failed, and not for want of memory. */
struct HostFailure {
  const char *what;
};

/**
 * The host reports exhausted memory by results, the mathematics by an
 * exception. A design has one way to end early.
 */
inline void require_memory(bool given) {
  if (!given) throw std::bad_alloc();
}

inline void require(t_result result, const char *otherwise) {
  if (result != RESULT_OK) throw HostFailure{otherwise};
}

using filtermath::required_symbol;

inline bool is_chebyshev1(const t_veltane *x) {
  return x->topology == required_symbol<"chebyshev-1">();
}

inline bool is_chebyshev2(const t_veltane *x) {
  return x->topology == required_symbol<"chebyshev-2">();
}

/**
 * Designs a filter from the settings of a box, and touches nothing of the box.
 * Raises std::bad_alloc.
 */
Filter designed(const t_veltane *x);

/**
 * Writes a filter into the dictionary of a box, which is empty, and sends its
 * name. Raises std::bad_alloc and HostFailure, and then nothing has been sent.
 * Afterwards the box may be gone: what is connected may free it.
 */
void publish(const t_veltane *x, Filter &filter);

}  // namespace veltane

#endif
