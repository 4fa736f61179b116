#include "analysis/cascade_gain.h"

#include <cmath>

#include "analysis/cascade_peaks.h"
#include "analysis/response.h"

namespace analysis {
namespace {

double decibels_of_two() { return 20.0 * std::log10(2.0); }

// The power of two that brings a peak nearest to 0 dB.
int levelling_exponent(const Peak &peak) {
  if (!std::isfinite(peak.db)) return 0;
  return static_cast<int>(std::lround(-peak.db / decibels_of_two()));
}

}  // namespace

std::optional<double> gain_factor(const Sections &filter, double w, double db) {
  const double factor = std::pow(10.0, (db - level_db(filter, w)) / 20.0);
  if (!std::isnormal(factor)) return std::nullopt;
  return factor;
}

Sections scaled(Sections filter, double factor) {
  Section &first = filter.front();
  first.b0 *= factor;
  first.b1 *= factor;
  first.b2 *= factor;
  return filter;
}

Sections with_gain_spread(Sections filter) {
  const std::vector<Peak> peaks = running_peaks(filter);
  int before = 0;
  for (std::size_t i = 0; i < filter.size(); ++i) {
    const bool last = i + 1 == filter.size();
    const int until = last ? 0 : levelling_exponent(peaks[i]);
    Section &s = filter[i];
    for (double *value : {&s.b0, &s.b1, &s.b2}) *value = std::ldexp(*value, until - before);
    before = until;
  }
  return filter;
}

}  // namespace analysis
