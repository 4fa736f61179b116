// The filters that meet a demand, one of each family.
#ifndef VELTANE_CLI_CANDIDATES_H
#define VELTANE_CLI_CANDIDATES_H

#include "design.h"
#include "requirements.h"

namespace cli {

struct Candidate {
  std::string family;
  std::string impossible;   /**< why the family cannot do it; empty when it can */
  double exact_order = 0.0; /**< what the formula gives before it is rounded up; not a number
                                  where none was computed */
  std::size_t order = 0;    /**< 0 when it was not found */
  std::size_t poles = 0;
  std::vector<double> cutoffs; /**< in Hz, or fractions of the Nyquist frequency, as typed */
  Words command;               /**< "veltane", "design", ...: makes the filter */
  double ripple = 0.0;         /**< what the designed filter loses in the passband, in dB */
  double attenuation = 0.0;    /**< the least that it loses in the stopband, in dB */
};

/** Designs the filter of least order of each family, and measures it from its sections. */
std::vector<Candidate> candidates(patchbay::Host &host, const Requirements &requirements);

/** @return why a filter that was designed and measured does not do what was demanded; empty when it
 *  does, but for the rounding of its cutoffs, 1e-4 dB. */
std::string shortfall(const Candidate &candidate, const analysis::Demand &demand);

/** @return the response's name: lowpass, highpass, bandpass or bandstop. */
std::string name_of(analysis::Band band);

}  // namespace cli

#endif
