// The level that a design ought to have, and setting it.
#ifndef VELTANE_CLI_EXPORT_GAIN_H
#define VELTANE_CLI_EXPORT_GAIN_H

#include <string>

#include "analysis/filter.h"
#include "published.h"

namespace cli {

/** The level a filter ought to have, and where. */
struct Reference {
  double w;          /**< a fraction of the Nyquist frequency */
  double db;         /**< 0, and minus the ripple for a chebyshev-1 of even order, whose ripple
                          has its bottom there and its top at 0 dB */
  std::string place; /**< such as "at DC" */
};

/** @param ripple_db  of a chebyshev-1
 *  Raises Refusal when two cutoffs are equal. */
Reference reference_of(const Published &filter, double ripple_db);

/**
 * Multiplies the first section so that the level is the reference's.
 * @return the factor
 * Raises Refusal when the filter is silent there or the factor is no double.
 */
double normalise(analysis::Sections &sections, const Reference &reference);

}  // namespace cli

#endif
