#include "gain.h"

#include <cmath>

#include "analysis/cascade_peaks.h"

namespace layouts {

analysis::Sections with_spread_gain(analysis::Sections sections) {
  const double decibels_of_two = 20.0 * std::log10(2.0);
  const std::vector<analysis::Peak> peaks = analysis::running_peaks(sections);
  int before = 0;
  for (std::size_t i = 0; i < sections.size(); ++i) {
    const bool last = i + 1 == sections.size();
    const int until = last ? 0 : static_cast<int>(std::lround(-peaks[i].db / decibels_of_two));
    analysis::Section &s = sections[i];
    for (double *b : {&s.b0, &s.b1, &s.b2}) *b = std::ldexp(*b, until - before);
    before = until;
  }
  return sections;
}

}  // namespace layouts
