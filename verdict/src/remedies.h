// What to change, where several checks give the same advice.
#ifndef VERDICT_REMEDIES_H
#define VERDICT_REMEDIES_H

#include "verdict/filter_under_test.h"
#include "verdict/verdict.h"

namespace verdict {

/** For a saved filter whose coefficients are not what was designed. */
inline constexpr char design_it_again[] = "design it again: 'veltane design --from FILE.json'";

/** For a filter that is not precise enough: a saved one may have been changed, a new one is at the
 *  limit of double precision. */
inline Change remedy_for_lost_digits(const FilterUnderTest &filter) {
  if (filter.origin == Origin::saved) return design_it_again;
  return Change::to_lower_order(
      "a lower --order, or cutoffs further from 0 and from the Nyquist frequency");
}

}  // namespace verdict

#endif
