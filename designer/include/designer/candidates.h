// The filters that meet a demand, one of each family.
#ifndef DESIGNER_CANDIDATES_H
#define DESIGNER_CANDIDATES_H

#include <string>
#include <vector>

#include "analysis/estimate.h"
#include "designer/designer.h"
#include "designer/limits.h"
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

/**
 * @param demand      with edges in `units`
 * @param samplerate  in Hz, above 0
 * @throws Refusal where the edges belong to no response, see analysis::demanded_band()
 */
RatedDemand rated(analysis::Demand demand, double samplerate, Units units);

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
  double noise_db = 0.0;       /**< the error at the output in dB of its peak, when its sections run
                                    in doubles in the order in which they are published; infinite
                                    where they overflow */

  /** @return true if more than -80 dB of noise are made of it, unless its sections are arranged. */
  bool is_noisy() const { return !(noise_db <= most_noise_db); }
};

/** Designs the filter of least order of each of these families, and measures it from its sections. */
std::vector<Candidate> candidates(Designer &designer, const RatedDemand &demand,
                                  const std::vector<Family> &families);

/** @return the one to take: of those that are possible the one with the fewest poles, among equals
 *  the one with less noise, and a noisy one only where all are; null where none is possible. */
const Candidate *recommended(const std::vector<Candidate> &candidates);

/** @return why a filter that was designed and measured does not do what was demanded; empty when it
 *  does, apart from the rounding of its cutoffs, 1e-4 dB. */
std::string shortfall(const Candidate &candidate, const analysis::Demand &demand);

}  // namespace designer

#endif
