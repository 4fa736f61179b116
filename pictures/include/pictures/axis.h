// An axis of a panel: its range, and how values lie along it.
#ifndef PICTURES_AXIS_H
#define PICTURES_AXIS_H

namespace pictures {

enum class Scale { linear, logarithmic };

/** From `low` to `high`, low < high; 0 < low where it is logarithmic. */
struct Axis {
  double low = 0.0;
  double high = 1.0;
  Scale scale = Scale::linear;

  bool is_logarithmic() const { return scale == Scale::logarithmic; }

  /** @return the same axis in another unit, all its values multiplied by a factor > 0. */
  Axis scaled(double factor) const { return {low * factor, high * factor, scale}; }
};

/** @return how far along the axis a value lies: 0 at its low end, 1 at its high end; beyond these
 *  for a value outside. Not finite where a logarithmic axis is given a value of 0 or less. */
double fraction_along(const Axis &axis, double value);

/** The inverse of `fraction_along`, kept within the axis; its ends are met exactly. */
double value_at(const Axis &axis, double fraction);

/** @return the smallest of 1, 2 and 5 times a power of ten that is not below `value` > 0, to within
 *          a relative 1e-9. */
double rounded_up(double value);

/** @return the largest of these that is not above it, likewise. */
double rounded_down(double value);

}  // namespace pictures

#endif
