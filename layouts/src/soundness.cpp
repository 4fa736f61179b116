#include "soundness.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <fmt/format.h>

#include "analysis/cascade_peaks.h"
#include "analysis/stability.h"
#include "designer/refusal.h"

namespace layouts {
namespace {

// How far from 0 dB a signal may be. A float has all its digits down to -758 dB, a double to
// -6153 dB; the rest is for signals that are not at full level.
double digits_limit_db(Arithmetic arithmetic) {
  return arithmetic == Arithmetic::floats ? 400.0 : 4000.0;
}

}  // namespace

void check_sections(const analysis::Sections &sections) {
  if (sections.empty())
    throw designer::Refusal("these settings give no sections, so there is no filter");
  for (std::size_t i = 0; i < sections.size(); ++i) {
    const analysis::Section &s = sections[i];
    for (const double value : {s.b0, s.b1, s.b2, s.a1, s.a2})
      if (!std::isfinite(value))
        throw designer::Refusal(fmt::format(
            "section {} of this filter has a coefficient that is not finite; "
            "a lower order or a cutoff further from 0 and from the Nyquist frequency may help",
            i + 1));
    const double largest = std::max({std::abs(s.b0), std::abs(s.b1), std::abs(s.b2)});
    if (largest < std::numeric_limits<double>::min())
      throw designer::Refusal(fmt::format(
          "the gain of this filter is too small for a double with all its digits: the "
          "largest numerator coefficient of section {} is {:.3g}; a lower order or another cutoff "
          "may help",
          i + 1, largest));
  }
}

std::vector<std::string> remarks_on(const analysis::Sections &sections, Arithmetic arithmetic,
                                    Arrangement arrangement) {
  std::vector<std::string> remarks;
  if (!analysis::stability(sections).stable) remarks.emplace_back("this filter is not stable");
  const std::vector<analysis::Peak> peaks = analysis::running_peaks(sections);
  const auto furthest = std::max_element(peaks.begin(), peaks.end(),
                                         [](const analysis::Peak &a, const analysis::Peak &b) {
                                           return std::abs(a.db) < std::abs(b.db);
                                         });
  if (std::abs(furthest->db) > digits_limit_db(arithmetic))
    remarks.push_back(fmt::format(
        "the output of section {} peaks at {:.0f} dB, where {} have few digits left{}",
        furthest - peaks.begin() + 1, furthest->db,
        arithmetic == Arithmetic::floats ? "floats" : "doubles",
        arrangement == Arrangement::quiet ? "" : "; without --as-published the gain is spread"));
  return remarks;
}

}  // namespace layouts
