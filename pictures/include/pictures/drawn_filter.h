// A filter as pictures draw it: frequencies in Hz, levels in dB, and a silent one made visible.
#ifndef PICTURES_DRAWN_FILTER_H
#define PICTURES_DRAWN_FILTER_H

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "designer/published_filter.h"
#include "pictures/detail.h"

namespace pictures {

/** A filter to be drawn. Frequencies are in Hz. */
struct DrawnFilter {
  std::string name; /**< for the key; empty until it is given one */
  designer::Family family;
  designer::Response response;
  analysis::Sections sections;    /**< what the level is computed from; empty when not published, or
                                       when the filter is silent */
  analysis::Roots roots;          /**< what everything else is computed from; without sections, the
                                       level as well */
  double samplerate;              /**< in Hz */
  std::vector<double> cutoffs;    /**< ascending; empty if they are not known */
  std::vector<double> half_power; /**< where the level is 3.01 dB below the peak, ascending; one for
                                       each cutoff or fewer */
  std::optional<double> ripple;   /**< asked for, in dB; of a chebyshev-1 alone */
  std::optional<double> attenuation; /**< asked for, in dB; of a chebyshev-2 alone */
  double peak_db;                    /**< the highest level, as it is drawn */
  std::optional<double> lift_db;     /**< what is added to the level of a silent filter, whose roots
                                          have the gain 1 instead; none if it is not silent */
  std::size_t poles_outside;         /**< of the unit circle; 0 if the filter is stable */

  /** @return half the sample rate, in Hz. */
  double nyquist() const { return samplerate / 2; }

  /** @return whether its gain is 0, so that its level is that of its zeros and poles alone, with
   *  the peak at 0 dB. */
  bool is_silent() const { return lift_db.has_value(); }

  bool is_unstable() const { return poles_outside > 0; }

  /** @param w  a fraction of the Nyquist frequency, from 0 to 1
   *  @return the level there in dB, as it is drawn; minus infinity at a zero on the unit circle, or
   *  as low as rounding the zero lets it be. Time grows with the order. */
  double level_db(double w) const;

  /** @return the levels of many ascending w, within 1e-7 dB down to 200 dB below the peak, in a
   *  fraction of the time. */
  std::vector<double> levels_db(const std::vector<double> &w) const;
};

/**
 * Finds the peak and the half-power points, and lifts a silent filter: time grows with the square of
 * the order, and is a hundredth of it for a live picture, whose peak is within 0.001 dB.
 * @param subject  what sentences call it, such as "the filter" or its file's name in quotes
 * @return the filter without a name
 * Raises designer::Refusal where nothing can be drawn: it has neither roots nor sections, a number
 * that is not finite, or a pole on the unit circle.
 */
DrawnFilter drawn_filter(const designer::PublishedFilter &filter, const std::string &subject,
                         Detail detail = Detail::full);

/**
 * The same for a filter of which no settings are known. It has no cutoffs; what it passes at 0 and
 * at the Nyquist frequency says which response it is drawn as, and the half-power points are the
 * outermost places where its level crosses 3.01 dB below the peak.
 */
DrawnFilter drawn_without_settings(const designer::FilterForms &filter, const std::string &subject,
                                   Detail detail = Detail::full);

}  // namespace pictures

#endif
