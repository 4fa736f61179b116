/** How far the poles are inside the unit circle, and how long they ring. */
#ifndef ANALYSIS_STABILITY_H
#define ANALYSIS_STABILITY_H

#include "analysis/filter.h"

namespace analysis {

/** The outermost pole. */
struct Stability {
  double radius; /**< its modulus; 0 without poles */
  double margin; /**< 1 - radius with all its digits, however near the circle; negative outside */
  bool stable;   /**< whether the margin is positive */
};

/**
 * 1 - |root|, negative outside, from (1 - x^2 - y^2) / (1 + |root|).
 * Accuracy: 1e-14 relative however near the circle, as the squares are not rounded.
 */
double distance_inside(const Complex &root);

/**
 * From the poles as they are.
 * Cost: proportional to n. Accuracy: the margin 1e-14 relative, on both sides of the circle.
 * Not stable, with a margin of NaN, when a pole is NaN.
 */
Stability stability(const Roots &filter);

/**
 * From a1 and a2 as they are: a conjugate pair has the modulus sqrt(a2); of two real poles the
 * larger is 1 - (1 - |a1| + a2) / (1 - the other) away from the circle.
 * Cost, accuracy and the treatment of NaN are those of the poles.
 * Source: the triangle |a2| < 1, |a1| < 1 + a2 of stable sections, Proakis & Manolakis,
 * Digital Signal Processing, 3rd ed., section 3.6.8.
 */
Stability stability(const Sections &filter);

/**
 * Samples until the slowest pole has fallen by 60 dB: ln 1000 / -ln(radius), which is 0 for a
 * radius of 0 and infinite for one of 1 or more. Equal and neighbouring poles together ring
 * longer.
 * Accuracy: that of the margin, also where the radius rounds to 1.
 */
double ringing_samples(const Stability &stability);

/** The same in milliseconds at a sample rate in Hz. */
double ringing_milliseconds(const Stability &stability, double samplerate);

}  // namespace analysis

#endif
