// How exactly a designed filter keeps what the textbook promises.
#ifndef TESTS_ANALYSIS_DESIGN_TOLERANCE_H
#define TESTS_ANALYSIS_DESIGN_TOLERANCE_H

#include "data.h"

// Roots of order 200 are rounded at a distance of some 1e-7 from the circle.
inline double design_tolerance(const data::Case &one) { return one.order > 8 ? 2e-7 : 2e-9; }

#endif
