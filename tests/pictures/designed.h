// Filters to be drawn, designed by the module.
#ifndef TESTS_PICTURES_DESIGNED_H
#define TESTS_PICTURES_DESIGNED_H

#include <string>
#include <vector>

#include "designer/designer.h"
#include "designer/title.h"
#include "pictures/drawn_filter.h"

namespace tests {

inline constexpr double half_power_level = -3.0102999566398120;

inline designer::Design design(const designer::Settings &settings) {
  static designer::Designer designer(VELTANE_MODULE);
  return designer.design(settings);
}

inline designer::Settings settings(const std::string &topology, const std::string &response,
                                   t_long order, const std::vector<double> &cutoffs) {
  return {{"topology", {topology}},
          {"response", {response}},
          {"order", {order}},
          {"frequency", designer::Values(cutoffs.begin(), cutoffs.end())}};
}

inline pictures::DrawnFilter drawn(const designer::Settings &settings) {
  const designer::Design designed = design(settings);
  pictures::DrawnFilter filter =
      pictures::drawn_filter(designer::published_filter(designed), "the filter");
  filter.name = designer::title(designed);
  return filter;
}

inline pictures::DrawnFilter drawn(const std::string &topology, const std::string &response,
                                   t_long order, const std::vector<double> &cutoffs) {
  return drawn(settings(topology, response, order, cutoffs));
}

inline double level_at(const pictures::DrawnFilter &filter, double hz) {
  return filter.level_db(hz / filter.nyquist());
}

}  // namespace tests

#endif
