// The level that a filter ought to have.
#ifndef LAYOUTS_LEVEL_H
#define LAYOUTS_LEVEL_H

#include <string>

#include "analysis/filter.h"
#include "designer/published_filter.h"

namespace layouts {

/** A level, and where a filter has it. */
struct ReferenceLevel {
  double w;          /**< a fraction of the Nyquist frequency */
  double db;         /**< 0, and minus the ripple for a chebyshev-1 of even order, whose ripple
                          has its bottom there and its top at 0 dB */
  std::string place; /**< such as "at DC" */
};

/** Raises designer::Refusal when two cutoffs are equal. */
ReferenceLevel reference_level(const designer::PublishedFilter &filter);

/** @return what the filter is multiplied by so that its level is the reference's.
 *  Raises designer::Refusal if the filter is silent there or the factor is not a normal double. */
double normalising_factor(const analysis::Sections &filter, const ReferenceLevel &reference);

}  // namespace layouts

#endif
