// Where the zeros of filters from an all-pole prototype lie.
#ifndef FILTERMATH_SRC_ZERO_PLACES_H
#define FILTERMATH_SRC_ZERO_PLACES_H

#include <complex>

#include "brontal/symbol.h"

namespace filtermath {

/** Half of the zeros lie at each place; the places may be the same. */
struct ZeroPlaces {
  std::complex<double> first;
  std::complex<double> second;
};

/**
 * Where the bilinear transform puts the zeros of an all-pole design ([OS] 7.2.2): at
 * z = -1 (lowpass), at 1 (highpass), at 1 and -1 (bandpass), at exp(+-2j atan(wo / 4))
 * (bandstop).
 * @param wo  the centre of a bandstop
 */
ZeroPlaces zero_places(t_symbol *response, double wo);

}  // namespace filtermath

#endif
