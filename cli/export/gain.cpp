#include "export/gain.h"

#include <algorithm>

#include <fmt/format.h>

#include "analysis/band.h"
#include "analysis/cascade_gain.h"
#include "analysis/response.h"

namespace cli {
namespace {

using analysis::Band;
using analysis::Family;

Band band_of(const std::string &response) {
  if (response == "lowpass") return Band::lowpass;
  if (response == "highpass") return Band::highpass;
  return response == "bandpass" ? Band::bandpass : Band::bandstop;
}

Family family_of(const std::string &topology) {
  if (topology == "butterworth") return Family::butterworth;
  return topology == "chebyshev-1" ? Family::chebyshev_1 : Family::chebyshev_2;
}

std::string place_of(Band band, double hertz) {
  if (band == Band::highpass) return "at the Nyquist frequency";
  if (band == Band::bandpass) return fmt::format("at {:.6g} Hz, the centre of the band", hertz);
  return "at DC";
}

}  // namespace

Reference reference_of(const Published &filter, double ripple_db) {
  const Band band = band_of(filter.response);
  std::vector<double> cutoffs = filter.cutoffs;
  std::sort(cutoffs.begin(), cutoffs.end());
  if (analysis::has_two_edges(band) && cutoffs.at(0) == cutoffs.at(1))
    throw Refusal("--normalise needs a band: the two cutoffs are equal");
  const double w = analysis::reference_frequency(band, cutoffs);
  const std::size_t order = filter.poles.size() / (analysis::has_two_edges(band) ? 2 : 1);
  const double level = analysis::reference_level(family_of(filter.topology), order, ripple_db);
  return {w, level, place_of(band, w * filter.samplerate / 2)};
}

double normalise(analysis::Sections &sections, const Reference &reference) {
  const auto factor = analysis::gain_factor(sections, reference.w, reference.db);
  if (!factor)
    throw Refusal(fmt::format("--normalise cannot set the level {}: it is {:.6g} dB there",
                              reference.place, analysis::level_db(sections, reference.w)));
  sections = analysis::scaled(sections, *factor);
  return *factor;
}

}  // namespace cli
