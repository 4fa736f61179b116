// Parts of the z plane that show roots well, and the numbers on their axes.
#ifndef PICTURES_Z_PLANE_H
#define PICTURES_Z_PLANE_H

#include <string>
#include <vector>

#include "pictures/curves.h"
#include "pictures/drawn_filter.h"

namespace pictures {

/** A square of the z plane. */
struct Square {
  analysis::Complex centre;
  double half; /**< of its side */

  /** @return whether a point lies in it or on its edge. */
  bool contains(const analysis::Complex &z) const;
};

/** @return the square around the unit circle and all zeros and poles. */
Square around_circle(const std::vector<DrawnFilter> &filters);

/**
 * The square that shows poles apart: around all on and above the real axis, or mirrored to there, and
 * the point of the unit circle that is next to one. Where that is so large that it shows little
 * more than the whole circle, or that poles of one filter cover one another, it is the part in which
 * they are nearest to one another, up to the next wide gap.
 * Time grows with the square of the number of poles.
 */
Square around_poles(const std::vector<DrawnFilter> &filters);

/** A square, in units in which its numbers are short: a small one counts powers of ten from a round
 *  number next to its centre. */
class ZPlaneView {
 public:
  explicit ZPlaneView(const Square &square);

  const Square &square() const { return square_; }

  /** @return a point in the units of the axes. */
  analysis::Complex seen(const analysis::Complex &z) const { return (z - origin_) * unit(); }

  /** @return the point of the plane that is 0 on both axes. */
  const analysis::Complex &origin() const { return origin_; }

  /** @return how long 1 is on the axes. */
  double unit() const;

  Axis real_axis() const { return axis(seen(square_.centre).real()); }
  Axis imaginary_axis() const { return axis(seen(square_.centre).imag()); }

  /** @return what the axes count, such as "Re z" or "(Re z − 0.998) · 10³". */
  std::string real_label() const { return label("Re z", origin_.real()); }
  std::string imaginary_label() const { return label("Im z", origin_.imag()); }

  /** @return the part of the unit circle around the square, in the units of the axes: 361 points,
   *  enough for a smooth arc. */
  Curve unit_circle() const;

 private:
  Axis axis(double middle) const;
  std::string label(const std::string &part, double origin) const;

  Square square_;
  analysis::Complex origin_;  // what is 0 on the axes
  int power_ = 0;             // the axes count 10^-power
};

}  // namespace pictures

#endif
