/** The impulse response of a cascade, fast enough to follow a dial. */
#ifndef ANALYSIS_QUICK_IMPULSE_H
#define ANALYSIS_QUICK_IMPULSE_H

#include <cstddef>

#include "analysis/filter.h"

namespace analysis {

/**
 * `impulse_response` of the sections given, to the bit but for what is smaller than 1e-200: that
 * becomes 0, since processors are a hundred times slower with the smallest of numbers.
 *
 * Cost: proportional to n times the number of samples, a third of that of `impulse_response`.
 */
std::vector<double> quick_impulse_response(const Sections &filter, std::size_t count);

}  // namespace analysis

#endif
