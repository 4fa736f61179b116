/**
 * The forms of a digital filter that the analysis reads, and its two conventions.
 *
 * Frequencies are fractions of the Nyquist frequency: 0 is DC, 1 is half the
 * sample rate, and w stands for the point z = exp(j pi w). Every function takes
 * 0 <= w <= 1. Levels are 20 log10 |H| in dB; a level of zero magnitude is
 * minus infinity, or as low as rounding the zero lets it be.
 *
 * All functions are pure. Arguments that are not finite give results that are not finite;
 * std::invalid_argument is raised only where a header says so; its text is one sentence. Results
 * belong to the caller; arguments are only read.
 *
 * In statements of cost, n is the number of poles. Accuracies are those that tests/analysis
 * verifies: against mpmath in 60 digits, or the reference named, for designs of 4 to 400 poles with
 * cutoffs from 0.0008 to 0.8. The given doubles are taken as exact. Where the processor has no long
 * double of 64 bits, doubles do its work, and what is not as accurate then says so: "narrow".
 */
#ifndef ANALYSIS_FILTER_H
#define ANALYSIS_FILTER_H

#include <complex>
#include <vector>

namespace analysis {

using Complex = std::complex<double>;

/** H(z) = gain * prod(z - zeros) / prod(z - poles). Complex roots come with their conjugates. */
struct Roots {
  std::vector<Complex> zeros;
  std::vector<Complex> poles;
  double gain = 1.0;
};

/** H(z) = (b0 + b1 z^-1 + b2 z^-2) / (1 + a1 z^-1 + a2 z^-2); first-order with b2 = a2 = 0. */
struct Section {
  double b0, b1, b2, a1, a2;
};

/** Sections one after the other: H(z) is their product. */
using Sections = std::vector<Section>;

/** H(z) = numerator / denominator, both with the highest power of z first. */
struct Transfer {
  std::vector<double> numerator;
  std::vector<double> denominator;
};

enum class Family { butterworth, chebyshev_1, chebyshev_2 };

enum class Band { lowpass, highpass, bandpass, bandstop };

/** True for bandpass and bandstop, which have two edges; the others have one. */
bool has_two_edges(Band band);

/**
 * Roots from a flat list: real part, imaginary part, real part, ...
 * Raises std::invalid_argument when the count of numbers is odd.
 * @return half as many roots, in the same order
 */
std::vector<Complex> roots_from_list(const std::vector<double> &values);

/**
 * Sections from a flat list of b0 b1 b2 a1 a2, b0 ...
 * Raises std::invalid_argument when the count of numbers is not a multiple of 5.
 * @return a fifth as many sections, in the same order
 */
Sections sections_from_list(const std::vector<double> &values);

/**
 * The two roots of z^2 + p z + q. The larger in modulus comes first, of a conjugate pair the one
 * above the real axis.
 * Accuracy: to the last digits even when they are nearly equal, as the square in the discriminant
 * p^2 - 4 q is not rounded before the difference.
 * Source: Kahan, "On the Cost of Floating-Point Computation Without Extra-Precise
 * Arithmetic" (2004).
 */
std::vector<Complex> quadratic_roots(double p, double q);

/**
 * The roots of all sections, in the order of the sections, without the common zeros and
 * poles at z = 0 that a first-order section has. A numerator that begins with zeros, or with
 * what is 1e150 times less than the rest, has fewer roots; one that is all zeros makes the gain 0. The gain is the product of the
 * leading coefficients; where that is too small or too large for a double, it is 0 or infinite.
 * Cost: proportional to n. Accuracy: that of `quadratic_roots`.
 */
Roots roots_of(const Sections &sections);

}  // namespace analysis

#endif
