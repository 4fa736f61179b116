// Roots as they are marked: equal ones as one mark with a count.
#ifndef PICTURES_ROOT_MARKS_H
#define PICTURES_ROOT_MARKS_H

#include <cstddef>
#include <vector>

#include "analysis/filter.h"

namespace pictures {

/** A root in the z plane, and its multiplicity. */
struct RootMark {
  analysis::Complex at;
  std::size_t multiplicity;
};

/** @return the roots in their order, those no further than 1e-11 from an earlier one counted with
 *  it. Time grows with the square of the number of different roots. */
std::vector<RootMark> root_marks(const std::vector<analysis::Complex> &roots);

}  // namespace pictures

#endif
