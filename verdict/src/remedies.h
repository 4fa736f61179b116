// What to change, where several checks give the same advice.
#ifndef VERDICT_REMEDIES_H
#define VERDICT_REMEDIES_H

#include "verdict/filter_under_test.h"

namespace verdict {

/** For a saved filter whose coefficients are not what was designed. */
inline constexpr char design_it_again[] = "design it again: 'veltane design --from FILE.json'";

/** For a filter that is not precise enough: a saved one may have been changed, a new one is at the
 *  limit of double precision. */
inline const char *remedy_for_lost_digits(const FilterUnderTest &filter) {
  return filter.origin == Origin::saved
             ? design_it_again
             : "a lower --order, or cutoffs further from 0 and from the Nyquist frequency";
}

}  // namespace verdict

#endif
