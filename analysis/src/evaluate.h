/** The response at w as a product whose parts can be asked for. */
#ifndef ANALYSIS_EVALUATE_H
#define ANALYSIS_EVALUATE_H

#include "product.h"

namespace analysis {

Product evaluate(const Roots &filter, double w);
Product evaluate(const Sections &filter, double w);
Product evaluate(const Transfer &filter, double w);

}  // namespace analysis

#endif
