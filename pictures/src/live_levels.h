// The peak and the crossings of a level, found fast enough to follow a dial.
#ifndef PICTURES_LIVE_LEVELS_H
#define PICTURES_LIVE_LEVELS_H

#include <optional>
#include <vector>

#include "analysis/band.h"
#include "pictures/drawn_filter.h"

namespace pictures {

/**
 * The level of a filter at the angles of its roots, places between each two of them, and even steps over
 * frequency and its logarithm; what is looked for is refined from there. Ripples between two
 * neighbouring roots are met; two crossings that lie closer than these places are not.
 * Time grows with the square of the order.
 */
class LiveLevels {
 public:
  /** Between neighbouring roots: three places for a peak, none for crossings. */
  enum class Purpose { peak, crossings };

  /** @param filter    must outlive this
   *  @param cutoffs   fractions of the Nyquist frequency, further places to look at */
  LiveLevels(const DrawnFilter &filter, const std::vector<double> &cutoffs, Purpose purpose);

  /** @return the highest level in dB, within 0.001 dB. */
  double peak() const;

  enum class Which { first, last };

  /** @return the first or last place within a range where the level crosses `db`; none if it does not. */
  std::optional<double> crossing(double db, const analysis::Interval &range, Which which) const;

 private:
  double refined_peak(double low, double high) const;
  double refined_crossing(double low, double high, double db) const;

  const DrawnFilter &filter_;
  std::vector<double> w_, db_;
};

/** @return where the level last leaves `db` on the way from the passband to the stopband, as
 *          analysis::half_power_points: ascending fractions of the Nyquist frequency, one for each
 *          cutoff or fewer.
 *  @param cutoffs  ascending */
std::vector<double> live_edges(const LiveLevels &levels, analysis::Band band,
                               const std::vector<double> &cutoffs, double db);

}  // namespace pictures

#endif
