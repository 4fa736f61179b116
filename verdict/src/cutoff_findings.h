// What the cutoffs of a filter mean, and what became of those that were asked for.
#ifndef VERDICT_CUTOFF_FINDINGS_H
#define VERDICT_CUTOFF_FINDINGS_H

#include "verdict/filter_under_test.h"
#include "verdict/verdict.h"

namespace verdict {

/** Where the cutoffs are and what the level is there; cutoffs out of their range, in radians, or
 *  with no band between them. */
Findings cutoff_findings(const FilterUnderTest &filter);

}  // namespace verdict

#endif
