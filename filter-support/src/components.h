// The parts of a matrix whose states lead to each other.
#ifndef FILTERMATH_SRC_COMPONENTS_H
#define FILTERMATH_SRC_COMPONENTS_H

#include <cstdint>

#include "scratch.h"

namespace filtermath {

/** Sets of states: set k is states[begins[k]] to states[begins[k + 1] - 1], ascending. */
struct Components {
  List<int32_t> states;
  List<int32_t> begins;
};

/**
 * The strongly connected components of the graph in which state i leads to j
 * where element (row i, column j) is not 0, in an order in which each leads to
 * itself and to earlier ones only.
 * @param matrix  n x n, row after row
 * @param memory  of the sets, and of what it takes to find them
 */
Components components(const double *matrix, int32_t n, Scratch *memory = nullptr);

}  // namespace filtermath

#endif
