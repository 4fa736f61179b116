/** Errors of rounding a sine that are no noise. */
#ifndef ANALYSIS_SINE_ERRORS_H
#define ANALYSIS_SINE_ERRORS_H

#include <vector>

#include "frequency_steps.h"
#include "rounded_section.h"

namespace analysis {

/**
 * A sine of few units, rounded, is rounded the same way in each period: of the error's power,
 * 1 / J for an amplitude of J units is at the frequency of the sine itself, where its gain is that
 * of the section for the sine and not a mean over all frequencies. The same happens where such a
 * sine is added to a number that has no digits beyond the unit. Results are powers relative to the
 * output of the section for that sine, at each step.
 *
 * Source: the sinusoidal describing function of a quantizer, Gelb & Vander Velde, Multiple-Input
 * Describing Functions and Nonlinear System Design (1968), chapter 2; the first harmonic of its
 * error falls with J^(-3/2) relative to the sine.
 */

/** In floating point, in sums of what comes in with what goes round in the section.
 *  @param relative  power of a rounding error relative to that of the number */
std::vector<double> sine_error_in_floats(const RoundedSection &section, const FrequencySteps &steps,
                                         double relative);

/**
 * In fixed point, where a1 and a2 are close to 2 and 1 with any sign: products of such numbers with
 * samples hardly leave the unit.
 * @param input  power of the sine that the section gets, at each step, in units
 * @param noise  power of the noise that comes with it, likewise as a density: it makes the rounding
 *               differ from period to period, as a dither does
 */
std::vector<double> sine_error_in_fixed_point(const RoundedSection &section,
                                              const FrequencySteps &steps,
                                              const std::vector<double> &input,
                                              const std::vector<double> &noise);

}  // namespace analysis

#endif
