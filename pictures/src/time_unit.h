// Units of time in which numbers have few digits.
#ifndef PICTURES_TIME_UNIT_H
#define PICTURES_TIME_UNIT_H

namespace pictures {

struct TimeUnit {
  const char *name;
  double seconds;
};

/** @param most  the longest time to be written, in seconds
 *  @return the largest of s, ms, µs and ns that is not longer; ns for anything shorter */
inline TimeUnit time_unit(double most) {
  if (most >= 1.0) return {"s", 1.0};
  if (most >= 1e-3) return {"ms", 1e-3};
  if (most >= 1e-6) return {"\u00b5s", 1e-6};
  return {"ns", 1e-9};
}

}  // namespace pictures

#endif
