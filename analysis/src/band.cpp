#include "analysis/band.h"

#include <cmath>
#include <limits>
#include <numbers>
#include <stdexcept>

#include "analysis/response.h"

namespace analysis {
namespace {

constexpr double quarter_turn = std::numbers::pi / 2;

void check_edges(Band band, const std::vector<double> &edges) {
  const std::size_t wanted = has_two_edges(band) ? 2 : 1;
  bool ascending = edges.size() == wanted;
  double before = 0.0;
  for (const double edge : edges) {
    ascending = ascending && edge > before && edge < 1.0;
    before = edge;
  }
  if (!ascending)
    throw std::invalid_argument(wanted == 2 ? "a band has two edges, ascending between 0 and 1"
                                            : "a lowpass or highpass has one edge between 0 and 1");
}

template <class Filter>
Levels all_levels(const Filter &filter, Band band, const std::vector<double> &cutoffs) {
  check_edges(band, cutoffs);
  Levels found{};
  found.dc = level_db(filter, 0.0);
  found.nyquist = level_db(filter, 1.0);
  found.reference = level_db(filter, reference_frequency(band, cutoffs));
  found.centre = has_two_edges(band) ? level_db(filter, band_centre(cutoffs[0], cutoffs[1]))
                                     : std::numeric_limits<double>::quiet_NaN();
  for (const double cutoff : cutoffs) found.cutoffs.push_back(level_db(filter, cutoff));
  return found;
}

}  // namespace

double prewarped(double w) {
  return w <= 0.5 ? std::tan(quarter_turn * w) : 1 / std::tan(quarter_turn * (1 - w));
}

double unwarped(double analog) {
  return analog <= 1.0 ? std::atan(analog) / quarter_turn
                       : 1 - std::atan(1 / analog) / quarter_turn;
}

double band_centre(double low, double high) {
  return unwarped(std::sqrt(prewarped(low)) * std::sqrt(prewarped(high)));
}

std::vector<Interval> passband(Band band, const std::vector<double> &edges) {
  check_edges(band, edges);
  switch (band) {
    case Band::lowpass: return {{0.0, edges[0]}};
    case Band::highpass: return {{edges[0], 1.0}};
    case Band::bandpass: return {{edges[0], edges[1]}};
    case Band::bandstop: return {{0.0, edges[0]}, {edges[1], 1.0}};
  }
  return {};
}

std::vector<Interval> stopband(Band band, const std::vector<double> &edges) {
  switch (band) {
    case Band::lowpass: return passband(Band::highpass, edges);
    case Band::highpass: return passband(Band::lowpass, edges);
    case Band::bandpass: return passband(Band::bandstop, edges);
    case Band::bandstop: return passband(Band::bandpass, edges);
  }
  return {};
}

double reference_frequency(Band band, const std::vector<double> &cutoffs) {
  check_edges(band, cutoffs);
  if (band == Band::highpass) return 1.0;
  return band == Band::bandpass ? band_centre(cutoffs[0], cutoffs[1]) : 0.0;
}

double reference_level(Family family, std::size_t order, double ripple_db) {
  return family == Family::chebyshev_1 && order % 2 == 0 ? -ripple_db : 0.0;
}

Levels levels(const Roots &filter, Band band, const std::vector<double> &cutoffs) {
  return all_levels(filter, band, cutoffs);
}

Levels levels(const Sections &filter, Band band, const std::vector<double> &cutoffs) {
  return all_levels(filter, band, cutoffs);
}

}  // namespace analysis
