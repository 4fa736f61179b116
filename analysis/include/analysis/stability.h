/** How far the poles are inside the unit circle, and how long they ring. */
#ifndef ANALYSIS_STABILITY_H
#define ANALYSIS_STABILITY_H

#include "analysis/filter.h"

namespace analysis {

/** The pole that is furthest out. */
struct Stability {
  double radius; /**< its modulus; 0 without poles */
  double margin; /**< 1 - radius with all its digits, however near the circle; negative outside */
  bool stable;   /**< whether the margin is positive */
};

/** 1 - |root| from (1 - x^2 - y^2) / (1 + |root|), the squares without rounding. */
double distance_inside(const Complex &root);

/** From the poles as they are. */
Stability stability(const Roots &filter);

/**
 * From a1 and a2 as they are: a conjugate pair has the modulus sqrt(a2); of two real poles the
 * larger is 1 - (1 - |a1| + a2) / (1 - the other) away from the circle.
 * Source: the triangle |a2| < 1, |a1| < 1 + a2 of stable sections, e.g. Proakis & Manolakis,
 * Digital Signal Processing, chapter 3.
 */
Stability stability(const Sections &filter);

/**
 * Samples until the slowest pole has fallen by 60 dB: ln 1000 / -ln(radius), which is 0 for a
 * radius of 0 and infinite for one of 1 or more. Equal and neighbouring poles together ring
 * longer.
 */
double ringing_samples(const Stability &stability);

/** The same in milliseconds at a sample rate in Hz. */
double ringing_milliseconds(const Stability &stability, double samplerate);

}  // namespace analysis

#endif
