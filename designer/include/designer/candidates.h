// The filters that meet a demand, one of each family.
#ifndef DESIGNER_CANDIDATES_H
#define DESIGNER_CANDIDATES_H

#include <string>
#include <vector>

#include "analysis/estimate.h"
#include "designer/designer.h"
#include "designer/names.h"

namespace designer {

/** What a filter has to do, and at which sample rate. */
struct RatedDemand {
  analysis::Demand demand; /**< edges as fractions of the Nyquist frequency */
  Response response;       /**< the one that the edges belong to */
  double samplerate;       /**< in Hz */
  Units units;             /**< hertz or normalized: of the cutoffs found */

  /** @return how many of these units the Nyquist frequency is. */
  double nyquist() const { return units == Units::hertz ? samplerate / 2 : 1.0; }
};

struct Candidate {
  Family family;
  std::string impossible;   /**< why the family cannot do it; empty when it can */
  double exact_order = 0.0; /**< what the formula gives before it is rounded up; NaN where none was
                                  computed */
  std::size_t order = 0;    /**< 0 when it was not found */
  std::size_t poles = 0;
  std::vector<double> cutoffs; /**< in the units of the demand */
  Settings settings;           /**< those of the filter; empty if the family has none */
  double ripple = 0.0;         /**< what the designed filter loses in the passband, in dB */
  double attenuation = 0.0;    /**< the least that it loses in the stopband, in dB */
};

/** Designs the filter of least order of each family, and measures it from its sections. */
std::vector<Candidate> candidates(Designer &designer, const RatedDemand &demand);

/** @return why a filter that was designed and measured does not do what was demanded; empty when it
 *  does, apart from the rounding of its cutoffs, 1e-4 dB. */
std::string shortfall(const Candidate &candidate, const analysis::Demand &demand);

}  // namespace designer

#endif
