/** What one section computes once its coefficients are rounded, and where it rounds. */
#ifndef ANALYSIS_ROUNDED_SECTION_H
#define ANALYSIS_ROUNDED_SECTION_H

#include <vector>

#include "analysis/structure.h"
#include "cosine_polynomial.h"
#include "wide.h"

namespace analysis {

/** Roundings whose errors take the same way to the section's output. */
struct RoundingSource {
  /** The squared gain of that way: over |A|^2 where `fed_back`, else as it stands. */
  CosinePolynomial gain;
  bool fed_back;
  /** The squared levels of the numbers that are rounded, summed, for an input of level 1: what the
   *  poles shape, over |A|^2, and what they do not. */
  CosinePolynomial shaped;
  CosinePolynomial plain;
  int roundings;  /**< how many */
  bool in_output; /**< true if the levels, not the gain, are those of the divided numerator */
};

/** A sum of a number that has the digits of the result and of another that is smaller: squared, the
 *  level of the sum over |A|^2, and that of what is added as it stands. */
struct SlowSum {
  CosinePolynomial sum, added;
};

/**
 * A section H = N / A. Everything holds for z, or for -z where `turned`: then the poles are nearer
 * to z = -1. Numerators, of sources too, are divided by 2^exponent.
 */
struct RoundedSection {
  Trinomial numerator, denominator;               /**< as computed with */
  Trinomial wanted_numerator, wanted_denominator; /**< as given */
  Trinomial numerator_error, denominator_error;   /**< the former less the latter, without
                                                     cancellation */
  /** Powers of errors in both that depend on the amplitude of a sine. */
  double numerator_spread, denominator_spread;
  int exponent;
  bool turned;
  bool stable;
  std::vector<RoundingSource> sources;
  std::vector<SlowSum> slow_sums; /**< whose errors go to the output by 1 / A; of direct forms */
};

/** q0 + q1 / z + q2 / z^2, extended, so that sums keep what doubles cancel. */
struct WideQuadratic {
  Extended q0, q1, q2;
};

Trinomial trinomial(const WideQuadratic &q);
WideQuadratic numerator_of(const Section &section);
WideQuadratic denominator_of(const Section &section);

/** True if multiplying by the value rounds nothing: 0 and powers of two with either sign. */
bool is_exact_factor(double value);

/** The section at -z. */
Section turned_round(const Section &section);

/** The binary exponent of the largest coefficient of both numerators. */
int common_exponent(const Section &x, const Section &y);

/** The section with its numerator divided by 2^exponent. */
Section divided(Section section, int exponent);

/** Collects what is rounded on one way to the output. */
class Way {
 public:
  Way(const CosinePolynomial &gain, bool fed_back, bool in_output)
      : source_{gain, fed_back, {}, {}, 0, in_output} {}

  /** A sum of the section's input and what was before it. */
  void plain(const Trinomial &q);
  /** The input times a factor. */
  void plain_product(double factor);
  /** A number of squared level p / |A|^2. */
  void shaped(const CosinePolynomial &p);
  void shaped(const Trinomial &q) { shaped(squared_magnitude(q)); }
  /** A number of level q / A times a factor. */
  void shaped_product(double factor, const Trinomial &q);

  const RoundingSource &source() const { return source_; }

 private:
  RoundingSource source_;
};

}  // namespace analysis

#endif
