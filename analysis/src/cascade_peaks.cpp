#include "analysis/cascade_peaks.h"

#include "analysis/grid.h"
#include "analysis/response.h"
#include "search.h"

namespace analysis {
namespace {

constexpr Interval everything{0.0, 1.0};

}  // namespace

std::vector<Peak> section_peaks(const Sections &filter) {
  std::vector<Peak> peaks;
  for (const Section &section : filter)
    peaks.push_back(extremes(Sections{section}, {everything}).highest);
  return peaks;
}

std::vector<Peak> running_peaks(const Sections &filter) {
  Samples at{grid(filter, everything), {}, {}};
  at.level.assign(at.w.size(), 0.0);
  at.slope.assign(at.w.size(), 0.0);

  std::vector<Peak> peaks;
  Sections product;
  for (const Section &section : filter) {
    const Sections alone{section};
    for (std::size_t i = 0; i < at.w.size(); ++i) {
      at.level[i] += level_db(alone, at.w[i]);
      at.slope[i] += level_slope(alone, at.w[i]);
    }
    product.push_back(section);
    peaks.push_back(extremum(
        at, 1.0, [&](double w) { return level_db(product, w); },
        [&](double w) { return level_slope(product, w); }));
  }
  return peaks;
}

}  // namespace analysis
