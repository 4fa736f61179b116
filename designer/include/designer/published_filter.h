// A design read into types: what a box published, and what its settings mean for it.
#ifndef DESIGNER_PUBLISHED_FILTER_H
#define DESIGNER_PUBLISHED_FILTER_H

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "designer/designer.h"
#include "designer/names.h"

namespace designer {

/** A filter in all the forms that were published. A form that was not is empty. */
struct PublishedFilter {
  Family family;
  Response response;
  std::size_t order;             /**< of the lowpass prototype */
  double passband_ripple;        /**< asked for, in dB; it is used by chebyshev-1 */
  double stopband_attenuation;   /**< asked for, in dB; it is used by chebyshev-2 */
  Units units;                   /**< of `frequency` */
  std::vector<double> frequency; /**< the cutoffs as the box holds them, in `units` */
  double samplerate;             /**< in Hz */
  bool samplerate_assumed;       /**< whether it is that of the audio, and not a setting */
  std::vector<double> cutoffs;   /**< as they were used, in the order in which they were given:
                                      fractions of the Nyquist frequency, as many as the response has
                                      edges */
  std::optional<analysis::Roots> roots;
  analysis::Sections sections;
  analysis::Transfer transfer; /**< either both lists are empty, or neither is */

  /** @return half the sample rate, in Hz. */
  double nyquist() const { return samplerate / 2; }

  /** @return a fraction of the Nyquist frequency in Hz, to read: "1000 Hz". */
  std::string hz_text(double w) const;

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

/** @return roots of a filter: those published, or those of its sections; none if it has neither. */
std::optional<analysis::Roots> roots_of(const PublishedFilter &filter);

}  // namespace designer

#endif
