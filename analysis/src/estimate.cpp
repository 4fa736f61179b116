#include "analysis/estimate.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "analysis/band.h"

namespace analysis {
namespace {

const double ln10 = std::log(10.0);

/** Lost power relative to what is left, 10^(db/10) - 1, and back. */
double loss_ratio(double db) { return std::expm1(db / 10 * ln10); }
double loss_db(double ratio) { return 10 / ln10 * std::log1p(ratio); }

bool ascends_within_one(const std::vector<double> &edges) {
  double before = 0.0;
  for (const double edge : edges) {
    if (!(edge > before && edge < 1.0)) return false;
    before = edge;
  }
  return true;
}

/**
 * The analog lowpass prototype's place in the demand: its frequency at an analog frequency is
 * width(f) / W for lowpass and bandpass and W / width(f) for the others, where width(f) is f
 * itself, or |f^2 - c| / f around the centre c of a band.
 */
struct Place {
  bool inverted;      /**< highpass and bandstop: large widths are passed */
  double centre;      /**< c, the square of an analog frequency; 0 without two edges */
  double passed;      /**< the width where the passband ends */
  double stopped;     /**< the width where the stopband begins */
  double selectivity; /**< prototype's stopband edge for a passband up to 1, above 1 */
};

double width(double analog, double centre) { return std::fabs(analog - centre / analog); }

Place place(const Demand &demand) {
  const Band band = demanded_band(demand);
  std::vector<double> pass, stop;
  for (const double w : demand.passband) pass.push_back(prewarped(w));
  for (const double w : demand.stopband) stop.push_back(prewarped(w));

  Place found{};
  found.inverted = band == Band::highpass || band == Band::bandstop;
  const std::vector<double> &inner = found.inverted ? stop : pass;
  if (has_two_edges(band)) found.centre = inner[0] * inner[1];
  const auto width_less = [&](double x, double y) {
    return width(x, found.centre) < width(y, found.centre);
  };
  // Of the two edges the one that is harder to meet counts.
  const auto narrowest = [&](const std::vector<double> &edges) {
    return width(*std::min_element(edges.begin(), edges.end(), width_less), found.centre);
  };
  const auto widest = [&](const std::vector<double> &edges) {
    return width(*std::max_element(edges.begin(), edges.end(), width_less), found.centre);
  };
  found.passed = found.inverted ? narrowest(pass) : widest(pass);
  found.stopped = found.inverted ? widest(stop) : narrowest(stop);
  found.selectivity = found.inverted ? found.passed / found.stopped : found.stopped / found.passed;
  return found;
}

// The edges at a width, as fractions of the Nyquist frequency: f - c / f = width has one
// positive solution, c / f is the other edge.
std::vector<double> edges_at(double at_width, double centre) {
  if (centre == 0) return {unwarped(at_width)};
  const double half = at_width / 2;
  const double high = half + std::sqrt(half * half + centre);
  return {unwarped(centre / high), unwarped(high)};
}

double exact_order(Family family, double selectivity, double discrimination) {
  if (family == Family::butterworth) return std::log(discrimination) / std::log(selectivity) / 2;
  return std::acosh(std::sqrt(discrimination)) / std::acosh(selectivity);
}

// T_n(k)^2 and the same of a Butterworth filter, k^(2n).
double growth(Family family, double selectivity, double order) {
  if (family == Family::butterworth) return std::pow(selectivity, 2 * order);
  const double polynomial = std::cosh(order * std::acosh(selectivity));
  return polynomial * polynomial;
}

Estimate estimated(Family family, const Demand &demand, const Place &at, std::size_t order,
                   double exact) {
  const auto n = static_cast<double>(order);
  const double passed = loss_ratio(demand.ripple), stopped = loss_ratio(demand.attenuation);
  const double grown = growth(family, at.selectivity, n);
  if (held_edge(family) == Edge::stopband)
    return {order, exact, edges_at(at.stopped, at.centre), loss_db(stopped / grown),
            demand.attenuation};
  double cutoff = at.passed;
  if (family == Family::butterworth) {
    const double half_power = std::pow(passed, -0.5 / n);
    cutoff = at.inverted ? cutoff / half_power : cutoff * half_power;
  }
  return {order, exact, edges_at(cutoff, at.centre), demand.ripple, loss_db(passed * grown)};
}

}  // namespace

Band demanded_band(const Demand &demand) {
  const std::vector<double> &pass = demand.passband, &stop = demand.stopband;
  if (pass.size() != stop.size() || pass.empty() || pass.size() > 2)
    throw std::invalid_argument("passband and stopband have one edge each, or two each");
  if (!ascends_within_one(pass) || !ascends_within_one(stop))
    throw std::invalid_argument("edges ascend between 0 and the Nyquist frequency, both excluded");
  if (!(demand.ripple > 0 && demand.attenuation > demand.ripple &&
        std::isfinite(demand.attenuation)))
    throw std::invalid_argument("the ripple is above 0 dB, and the attenuation above the ripple");
  if (pass.size() == 1) {
    if (pass[0] == stop[0])
      throw std::invalid_argument("passband and stopband need room between them");
    return pass[0] < stop[0] ? Band::lowpass : Band::highpass;
  }
  if (stop[0] < pass[0] && pass[1] < stop[1]) return Band::bandpass;
  if (pass[0] < stop[0] && stop[1] < pass[1]) return Band::bandstop;
  throw std::invalid_argument("one band lies within the other, with room between them");
}

Edge held_edge(Family family) {
  return family == Family::chebyshev_2 ? Edge::stopband : Edge::passband;
}

Estimate least_order(Family family, const Demand &demand) {
  const Place at = place(demand);
  const double discrimination = loss_ratio(demand.attenuation) / loss_ratio(demand.ripple);
  const double exact = exact_order(family, at.selectivity, discrimination);
  const double whole = std::max(1.0, std::ceil(exact * (1 - 1e-10)));
  if (!(whole <= 1e6))
    throw std::invalid_argument("the edges are so close that no order up to a million is enough");
  return estimated(family, demand, at, static_cast<std::size_t>(whole), exact);
}

Estimate with_order(Family family, const Demand &demand, std::size_t order) {
  if (order == 0) throw std::invalid_argument("an order is at least 1");
  const Place at = place(demand);
  const double discrimination = loss_ratio(demand.attenuation) / loss_ratio(demand.ripple);
  return estimated(family, demand, at, order, exact_order(family, at.selectivity, discrimination));
}

}  // namespace analysis
