// The order that a filter has to come down to.
#ifndef VERDICT_LOWER_ORDER_H
#define VERDICT_LOWER_ORDER_H

#include <cstddef>
#include <optional>

#include "verdict/verdict.h"

namespace verdict {

/** @return whether a lower order is a remedy for any of the findings. */
bool wants_lower_order(const Verdict &verdict);

/**
 * Looks for the highest order at which no finding wants a lower one, by halving: designs and judges
 * one filter for each bit of the order. Between two orders a filter may be good, bad and good again,
 * so that it is the highest only as far as the halving sees; at the order itself it is good, as it
 * was tried.
 *
 * Takes as long as up to 8 verdicts on filters of lower orders, without that on floats.
 * @param requested  settings of a filter with such a finding
 * @return below the present order, and none if not even the lowest that the module takes will do
 * Raises as Designer::design does.
 */
std::optional<std::size_t> lower_order(designer::Designer &designer,
                                       const designer::Settings &requested);

}  // namespace verdict

#endif
