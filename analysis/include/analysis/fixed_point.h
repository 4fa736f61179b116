/** Sections in fixed point, as processors without floating point run them. */
#ifndef ANALYSIS_FIXED_POINT_H
#define ANALYSIS_FIXED_POINT_H

#include <cstddef>
#include <cstdint>

#include "analysis/filter.h"
#include "analysis/structure.h"

namespace analysis {

/** A section's coefficients as integers, those of the feedback to be added. Each stands for itself
 *  times 2^(postshift - 31), or 2^(postshift - 15) in 16 bits. */
struct FixedSection {
  std::int32_t b0, b1, b2, minus_a1, minus_a2;
};

/** A cascade in direct form I, whose sections share one postshift. */
struct FixedCascade {
  int bits;      /**< 32 or 16: of a sample and of a coefficient */
  int postshift; /**< 0 to bits - 1 */
  std::vector<FixedSection> sections;
};

/**
 * The coefficients rounded to the nearest integers, with the smallest postshift that leaves all of
 * them room. A positive one on the edge of the range becomes the largest integer.
 *
 * Cost: proportional to n.
 * Accuracy: half a unit, 2^(postshift - 32) or 2^(postshift - 16), for every coefficient, however
 * small, and a whole one on the edge of the range: numerators that are far smaller than the feedback keep few digits or none.
 * Raises std::invalid_argument unless `arithmetic` is fixed_32 or fixed_16, and if a coefficient is
 * not finite or too large for every postshift: beyond 2^31, or 2^15 in 16 bits.
 */
FixedCascade fixed_cascade(const Sections &filter, Arithmetic arithmetic);

/** The sections that the integers stand for, without error. */
Sections sections_of(const FixedCascade &cascade);

struct FixedRun {
  std::vector<double> output;
  std::size_t overflows; /**< outputs of sections that left [-1, 1) */
};

/**
 * Runs a signal through the cascade, from rest. Samples are fractions of full scale in [-1, 1): the
 * input is rounded to the nearest one and limited. In each section five products are summed in 64
 * bits, and the sum is shifted to the right by bits - 1 - postshift, which rounds towards minus
 * infinity: the only rounding. An output out of range keeps its low 32 bits in 32 bits, which turns
 * it over, and is limited in 16. This is what CMSIS-DSP documents of its direct-form I cascades in
 * Q31 and Q15.
 *
 * Cost: proportional to the number of sections times that of samples.
 * Source: Oppenheim & Schafer, Discrete-Time Signal Processing, 2nd ed., section 6.9 (round-off
 * noise, with one quantizer after the accumulation).
 */
FixedRun run_fixed(const FixedCascade &cascade, const std::vector<double> &signal);

}  // namespace analysis

#endif
