// A design read into types: what a box published, and what its settings mean for it.
#ifndef DESIGNER_PUBLISHED_FILTER_H
#define DESIGNER_PUBLISHED_FILTER_H

#include <cstddef>
#include <vector>

#include "designer/designer.h"
#include "designer/filter_forms.h"
#include "designer/names.h"

namespace designer {

/** A filter in all the forms that were published, with its settings. */
struct PublishedFilter : FilterForms {
  Family family;
  Response response;
  std::size_t order;             /**< of the lowpass prototype */
  double passband_ripple;        /**< asked for, in dB; it is used by chebyshev-1 */
  double stopband_attenuation;   /**< asked for, in dB; it is used by chebyshev-2 */
  Units units;                   /**< of `frequency` */
  std::vector<double> frequency; /**< the cutoffs as the box holds them, in `units` */
  std::vector<double> cutoffs;   /**< as they were used, in the order in which they were given:
                                      fractions of the Nyquist frequency, as many as the response has
                                      edges */

  /** @return whether the response has two edges: a bandpass or bandstop. */
  bool has_two_cutoffs() const { return analysis::has_two_edges(response); }

  /** @return true if there are two cutoffs and the first is not the lower, so that no band lies
   *          between them. */
  bool has_no_band() const;

  /** @return the cutoffs, the lower first. */
  std::vector<double> ascending_cutoffs() const;
};

/** Raises std::runtime_error if the dictionary or the settings are not of the form that the module
 *  publishes. */
PublishedFilter published_filter(const Design &design);

}  // namespace designer

#endif
