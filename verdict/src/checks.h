// The checks. Each takes a filter and says what it finds; none depends on what another found.
#ifndef VERDICT_CHECKS_H
#define VERDICT_CHECKS_H

#include "verdict/filter_under_test.h"
#include "verdict/verdict.h"

namespace verdict {

/** Which filters a check is for: all, those with settings, or those without. */
enum class Of { all, designs, foreign };

/** When it is made: always, or if `has_levels` (health.h) is true of the filter. */
enum class When { always, it_has_levels };

#define VERDICT_CHECK(name, of, when) Findings check_##name(const FilterUnderTest &filter);
#include "checks.inc"
#undef VERDICT_CHECK

}  // namespace verdict

#endif
