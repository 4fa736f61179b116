// A published dictionary as plain lists.
#ifndef VELTANE_CLI_PUBLISHED_H
#define VELTANE_CLI_PUBLISHED_H

#include <array>
#include <complex>
#include <optional>
#include <string>
#include <vector>

#include "design.h"

namespace cli {

/** What a box published, and what its settings mean for it. A form that was not
 *  published is empty. */
struct Published {
  std::string topology;
  std::string response;
  std::vector<std::complex<double>> zeros;
  std::vector<std::complex<double>> poles;
  std::optional<double> gain;
  std::vector<std::array<double, 5>> sections; /**< b0 b1 b2 a1 a2 of
      H(z) = product of (b0 + b1 z^-1 + b2 z^-2) / (1 + a1 z^-1 + a2 z^-2) */
  std::vector<double> numerator;               /**< of z^-k; H(z) = sum of numerator[k] z^-k */
  std::vector<double> denominator;             /**< / sum of denominator[k] z^-k */
  double samplerate = 0.0;                     /**< in Hz */
  std::vector<double> cutoffs; /**< those the module used, as it clamped them: fractions of
                                        the Nyquist frequency, two for a band response */
};

/** Reads a design. Raises std::runtime_error when its dictionary or its settings are
 *  not as the module publishes them. */
Published published(const Design &design);

}  // namespace cli

#endif
