/** The response at w as a product whose parts can be asked for. */
#ifndef ANALYSIS_FACTORED_RESPONSE_H
#define ANALYSIS_FACTORED_RESPONSE_H

#include "scaled_product.h"

namespace analysis {

ScaledProduct factored_response(const Roots &filter, double w);
ScaledProduct factored_response(const Sections &filter, double w);
ScaledProduct factored_response(const Transfer &filter, double w);

}  // namespace analysis

#endif
