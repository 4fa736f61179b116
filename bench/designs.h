/** The designs to time, and how the filters that come out are looked at. */
#ifndef BENCH_DESIGNS_H
#define BENCH_DESIGNS_H

#include <cstddef>
#include <string>
#include <vector>

namespace bench {

/** One filter. Frequencies are fractions of the Nyquist frequency. */
struct Design {
  std::string name;
  std::string family;
  std::string response;
  int order;                     /**< of the lowpass prototype */
  std::vector<double> cutoffs;   /**< one, or two for a band response */
  std::vector<double> levels_at; /**< inside the passband, and the lower cutoff */

  bool is_band() const { return cutoffs.size() == 2; }
};

struct Designs {
  double passband_ripple;      /**< in dB, of all chebyshev-1 */
  double stopband_attenuation; /**< in dB, of all chebyshev-2 */
  std::size_t changes_in_burst;
  std::vector<Design> list;
};

/** Reads what designs.py wrote. Raises std::exception when it cannot. */
Designs read_designs(const std::string &file);

/** A second-order section: H(z) = (b0 + b1 z^-1 + b2 z^-2) / (a0 + a1 z^-1 + a2 z^-2). */
struct Section {
  double b0, b1, b2, a0, a1, a2;
};

/** @return the magnitude of a cascade in dB, at a fraction of the Nyquist frequency */
double level(const std::vector<Section> &cascade, double frequency);

}  // namespace bench

#endif
