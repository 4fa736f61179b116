// The frequencies at which curves have points.
#ifndef PICTURES_CURVE_FREQUENCIES_H
#define PICTURES_CURVE_FREQUENCIES_H

#include <vector>

#include "analysis/band.h"
#include "pictures/axis.h"
#include "pictures/drawn_filter.h"

namespace pictures {

/** Frequencies of a filter within an axis, as fractions of the Nyquist frequency, ascending; none
 *  where the axis has no part between 0 and the Nyquist frequency. */
class CurveFrequencies {
 public:
  /** @param filter, axis  must outlive this */
  CurveFrequencies(const DrawnFilter &filter, const Axis &axis);

  /** @return all that a full curve needs, but no closer than a part of the axis where nothing special
   *          lies between. */
  std::vector<double> spaced(double least_part) const;

  /** @return those of a live curve. */
  std::vector<double> few() const;

 private:
  std::vector<double> marks() const;
  std::vector<double> ordinary() const;
  void add_even_steps(std::vector<double> &list, int count) const;
  std::vector<double> within(std::vector<double> list) const;

  const DrawnFilter &filter_;
  const Axis &axis_;
  analysis::Interval range_{0.0, 0.0};
};

}  // namespace pictures

#endif
